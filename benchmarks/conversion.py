#!/usr/bin/env python3
"""Times the conversion of many commands next to sed, side by side in one run.

    benchmarks/conversion.py PROGRAM [COMMANDS [ROUNDS]]

COMMANDS (200000) TABLES commands and as many IGRAPH commands, as make-commands.py makes them. Every
figure is the median of ROUNDS (5) runs in turn, in seconds of processor time; the ratio is what
counts, since the same machine has done both.
"""

import os
import pathlib
import subprocess
import sys
import tempfile

from throughput import compare

TOP = pathlib.Path(__file__).resolve().parent


def main():
    program = os.path.abspath(sys.argv[1])
    count = int(sys.argv[2] if len(sys.argv) > 2 else 200000)
    rounds = int(sys.argv[3] if len(sys.argv) > 3 else 5)
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        for kind in ("tables", "igraph"):
            source, output, other = folder / f"{kind}.syn", folder / "output", folder / "other"
            subprocess.run([sys.executable, TOP / "make-commands.py", kind, source, str(count)],
                           check=True)
            compare(f"{count} {kind.upper()} commands, {source.stat().st_size} bytes", {
                "quillet": ([program, source, output], "C"),
                "sed": (["sed", "s/TABLES/X/", source], "C"),
            }, rounds, (other, output))
            source.unlink()


if __name__ == "__main__":
    main()
