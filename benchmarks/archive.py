#!/usr/bin/env python3
"""Times quillet-migrate on an archive next to another build of it, side by side in one run.

    benchmarks/archive.py PROGRAM BEFORE [FILES [ROUNDS]]

The archive is that of make-archive.py, with FILES (4000) files. The programs run ROUNDS (5) times
in turn, each with two jobs. Shown are seconds of processor time, the program's own and the
system's, and the ratio of PROGRAM to BEFORE; the ratios are what counts.
"""

import pathlib
import resource
import shutil
import statistics
import subprocess
import sys
import tempfile

COMMANDS_IN_FILE = 50


def seconds(program, archive, target):
    """Of the processor for a run: the program's own and the system's."""
    shutil.rmtree(target, ignore_errors=True)
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    subprocess.run([program, "--jobs", "2", archive, target], stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL, check=False)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return after.ru_utime - before.ru_utime, after.ru_stime - before.ru_stime


def main():
    if len(sys.argv) not in (3, 4, 5):
        sys.exit(__doc__)
    program, before = sys.argv[1:3]
    files = int(sys.argv[3]) if len(sys.argv) > 3 else 4000
    rounds = int(sys.argv[4]) if len(sys.argv) > 4 else 5
    make = pathlib.Path(__file__).with_name("make-archive.py")
    ratios = []
    own_ratios = []
    with tempfile.TemporaryDirectory() as folder:
        archive = pathlib.Path(folder, "archive")
        subprocess.run([sys.executable, make, archive, str(files), str(files * COMMANDS_IN_FILE)],
                       stdout=subprocess.DEVNULL, check=True)
        # The first run of all costs the system less: nobody has removed files there before.
        seconds(before, archive, pathlib.Path(folder, "target"))
        for _ in range(rounds):
            old_own, old_system = seconds(before, archive, pathlib.Path(folder, "target"))
            own, system = seconds(program, archive, pathlib.Path(folder, "target"))
            ratios.append((own + system) / (old_own + old_system))
            own_ratios.append(own / old_own)
            print(f"before {old_own:.2f} + {old_system:.2f}, now {own:.2f} + {system:.2f}: "
                  f"{ratios[-1]:.2f}, own time {own_ratios[-1]:.2f}")
    print(f"median {statistics.median(ratios):.2f}, own time {statistics.median(own_ratios):.2f}")


if __name__ == "__main__":
    main()
