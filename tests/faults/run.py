#!/usr/bin/env python3
"""Has every call to the system fail in turn, and looks whether the programs keep their promises.

usage: tests/faults/run.py QUILLET QUILLET_MIGRATE [OPTION...]

For each scenario, each kind of call (write, read, open, ..., allocation) and each n from 1 on, the
program runs with the n-th call of the kind failing, or with it and all later ones, until a run gets
by without reaching the fault. What has to hold is stated in quilletfaults.py and migratefaults.py.

Calls to the system are taken one by one, but for the scenario with threads; so are allocations
over the small file. Elsewhere there are too many allocations, and every so many of them fails:
which ones is drawn at random with a fixed seed (--seed).

    --library FILE     the preloaded library (default: libquillet_faults.so beside QUILLET)
    --program NAME     "quillet" or "quillet-migrate" alone
    --scenario NAME    only this one
    --kind KIND        only calls of this kind
    --coarser N        N times as large a distance between the calls that fail
    --budget SECONDS   begin no new kind after this time; what is left out is told and counts as
                       failed
    --seed N           for other draws
    --jobs N           so many runs at once (default: 2)
    --only CASE        one run, as failures name it, shown in full

The last line counts the runs.
"""

import argparse
import concurrent.futures
import itertools
import pathlib
import queue
import random
import resource
import sys
import tempfile
import time

sys.dont_write_bytecode = True

import injection  # pylint: disable=wrong-import-position
import migratefaults  # pylint: disable=wrong-import-position
import quilletfaults  # pylint: disable=wrong-import-position

# Allocations and later ones: when there is no more memory at all, it matters little at which of
# thousands of places that is noticed first.
LASTING_ALLOCATIONS = 3
# Runs that hang take all of their time.
MOST_HUNG = 2


class Counter:
    def __init__(self):
        self.passed = 0
        self.failed = 0

    def note(self, name, problems):
        if not problems:
            self.passed += 1
            return
        self.failed += 1
        print(f"FAIL {name}: " + "; ".join(problems), flush=True)


def run_case(test, fault, folder):
    """The run, and what was wrong."""
    run = test.run(folder, fault)
    return run, test.check(run, fault, folder)


class Faults:
    """All runs of the selected tests."""

    def __init__(self, arguments, tests, folder):
        self.arguments = arguments
        self.tests = tests
        self.counter = Counter()
        self.folders = queue.Queue()
        for number in range(arguments.jobs):
            (folder / str(number)).mkdir()
            self.folders.put(folder / str(number))
        self.delivered = {}  # by program and kind
        self.end = time.monotonic() + arguments.budget if arguments.budget else None

    def numbers(self, test, fault_kind, mode):
        """Which calls fail."""
        stride = test.stride(fault_kind) * self.arguments.coarser
        if fault_kind == "allocation" and mode == "from":
            stride *= LASTING_ALLOCATIONS
        draw = random.Random(f"{self.arguments.seed} {test.name} {fault_kind} {mode}")
        for block in itertools.count():
            yield 1 + block * stride + draw.randrange(stride)

    def run_in_turn(self, executor, test, kind, error, mode):
        """Until a run does not reach the fault."""
        def task(number):
            folder = self.folders.get()
            try:
                fault = injection.Fault(kind, error, mode, number)
                return fault, *run_case(test, fault, folder)
            finally:
                self.folders.put(folder)

        delivered = hung = 0
        numbers = self.numbers(test, kind, mode)
        waiting = []
        goes_on = True
        while goes_on or waiting:
            while goes_on and len(waiting) < 2 * self.arguments.jobs:
                waiting.append(executor.submit(task, next(numbers)))
            fault, run, problems = waiting.pop(0).result()
            delivered += run.record.delivered > 0
            hung += run.status is None
            goes_on = goes_on and run.record.delivered > 0 and hung < MOST_HUNG
            self.counter.note(f"{test.program_name}:{test.name}:{fault}", problems)
        if hung >= MOST_HUNG:
            self.counter.note(f"{test.program_name}:{test.name}:{kind}:{error}:{mode}",
                              ["the rest is left out, as too many runs hang"])
        key = (test.program_name, kind)
        self.delivered[key] = self.delivered.get(key, 0) + delivered
        return delivered

    def run_all(self):
        with concurrent.futures.ThreadPoolExecutor(self.arguments.jobs) as executor:
            for test in self.tests:
                self.counter.note(f"{test.program_name}:{test.name}: without a fault",
                                  check_self(test, self.folders))
                for kind, errors in injection.ERRORS.items():
                    if self.arguments.kind not in (None, kind):
                        continue
                    if self.end is not None and time.monotonic() > self.end:
                        self.counter.note(f"{test.program_name}:{test.name}:{kind}",
                                          ["left out for lack of time"])
                        continue
                    self.run_kind(executor, test, kind, errors)

    def run_kind(self, executor, test, kind, errors):
        start = time.monotonic()
        failed = self.counter.failed
        count = sum(self.run_in_turn(executor, test, kind, error, mode) for error, mode in errors)
        print(f"{test.program_name}, {test.name}, {kind}: {count} faults, "
              f"{self.counter.failed - failed} runs failed, "
              f"{time.monotonic() - start:.1f} s", flush=True)

    def check_kinds(self, expected):
        """Each program meets all the faults that it can meet."""
        for name, kinds in expected.items():
            for kind in sorted(kinds):
                if self.arguments.kind not in (None, kind):
                    continue
                reached = self.delivered.get((name, kind), 0)
                self.counter.note(f"{name}:{kind}",
                                  [] if reached else ["there was no such call to fail"])


def check_self(test, folders):
    """That what is looked for can be seen at all."""
    folder = folders.get()
    try:
        run, problems = run_case(test, None, folder)
        if run.record.delivered > 0:
            problems.append("there was a fault without one being asked for")
        run = test.run(folder, injection.Fault("write", "ENOSPC", "from", 1))
        if run.record.delivered == 0 or not test.tells_of_failed_write(run):
            problems.append("the disk was to be full, but is not")
        library, test.library = test.library, "/dev/null"
        try:
            test.run(folder, None)
            problems.append("nobody notices that the library is not there")
        except injection.NotInjected:
            pass
        finally:
            test.library = library
        return problems
    finally:
        folders.put(folder)


def show_case(tests, case, folder):
    """One run, in full."""
    program, name, kind, error, mode, number = case.split(":")
    [test] = [test for test in tests if (test.program_name, test.name) == (program, name)]
    fault = injection.Fault(kind, error, mode, int(number))
    run = test.run(folder, fault)
    print("environment:", " ".join(f"{name}={value}" for name, value
                                   in fault.environment().items()))
    print("exit status:", run.status)
    for name, text in (("output", run.output), ("error", run.error)):
        print(f"standard {name}:")
        print("\n".join("| " + line for line in text.decode("utf-8", "replace").splitlines()))
    print(f"calls that failed: {run.record.delivered}, the first with descriptor "
          f"{run.record.descriptor}; {run.record.calls[kind]} calls of the kind")
    problems = test.check(run, fault, folder)
    for problem in problems:
        print("FAIL", problem)
    print(f"faults: {0 if problems else 1} passed, {1 if problems else 0} failed")
    return 1 if problems else 0


def parse(arguments):
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("quillet", type=pathlib.Path)
    parser.add_argument("migrate", type=pathlib.Path)
    parser.add_argument("--library", type=pathlib.Path)
    parser.add_argument("--program", choices=("quillet", "quillet-migrate"))
    parser.add_argument("--scenario")
    parser.add_argument("--kind", choices=injection.ERRORS)
    parser.add_argument("--coarser", type=int, default=1)
    parser.add_argument("--budget", type=float)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--only")
    return parser.parse_args(arguments)


def main(arguments):
    arguments = parse(arguments)
    # What a signal ends would leave its memory on the disk.
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    if arguments.only:
        arguments.program, arguments.scenario = arguments.only.split(":")[:2]
    library = arguments.library or arguments.quillet.parent / "libquillet_faults.so"
    library = library.resolve(strict=True)
    expected = {}
    tests = []
    with tempfile.TemporaryDirectory(prefix="quillet-faults-") as name:
        folder = pathlib.Path(name)
        for program, path, module in (
            ("quillet", arguments.quillet, quilletfaults),
            ("quillet-migrate", arguments.migrate, migratefaults),
        ):
            if arguments.program not in (None, program):
                continue
            (folder / program).mkdir()
            tests += module.tests(path.resolve(strict=True), library, folder / program,
                                  arguments.scenario)
            if arguments.scenario is None:
                expected[program] = module.EXPECTED_KINDS
        if arguments.only:
            # Of the same length as elsewhere: memory is asked for according to it.
            (folder / "0").mkdir()
            return show_case(tests, arguments.only, folder / "0")
        faults = Faults(arguments, tests, folder)
        faults.run_all()
        faults.check_kinds(expected)
        counter = faults.counter
    if counter.failed:
        print("repeat one of them with: tests/faults/run.py "
              f"{arguments.quillet} {arguments.migrate} --only CASE")
    print(f"faults: {counter.passed} passed, {counter.failed} failed")
    return 0 if counter.passed and not counter.failed else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
