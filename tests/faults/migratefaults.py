"""The program for archives under faults: an archive, and what has to hold during and after."""

import dataclasses
import json
import os
import re
import shutil
import time

import injection
from quilletfaults import CONVERTED, COPIED, FAILING, LABEL

# Names that a run makes for itself.
OWN_NAME = re.compile(r"^quillet-report.*\.(json|html|csv|journal)$")
TEMPORARY = "quillet-tmp"

# What differs from run to run in the report's other forms.
VOLATILE = re.compile(
    rb'"(?:started|target)":"[^"]*"|"(?:seconds|filesKept)":[^,}]*|,?"kept":true|'
    rb',?"result":"(?:new|kept)"|"sinceLastRun":(?:null|\{[^}]*\})|,"changes":\{[^}]*\}|'
    rb' (?:time|timestamp)="[^"]*"')

STATUS_OF_TROUBLE = 2


def join(*texts):
    return "".join(texts).encode()


ARCHIVE = {
    "good.syn": join(*COPIED, *CONVERTED),
    "failing.syn": join(*COPIED[:2], *FAILING),
    "label.syn": LABEL.encode("windows-1252"),
    "stopped.syn": join(COPIED[3], "LIST 'no end.\n", COPIED[3]),
    "empty.syn": b"",
    "picture.png": b"\x89PNG\0\0" + bytes(range(256)) * 20,
    "notes.txt": b"Only to be copied.\n",
    "a/one.syn": join(CONVERTED[0]),
    "a/two.syn": join(COPIED[4], CONVERTED[4]),
    "a/deep/three.syn": join(CONVERTED[2], CONVERTED[3]),
    "a/deep/data.syn": b"BEGIN DATA.\n" + b"1 2 3 'label'\n" * 12000 + b"END DATA.\n",
    "b/four.syn": join(FAILING[0], CONVERTED[1]),
}
CHANGED = {"a/one.syn": join(CONVERTED[0], CONVERTED[1])}
OPTIONS = ("--include", "*.syn", "--copy-others")
OLD = 1_600_000_000  # seconds; when the archive was written
MANY = 20  # calls of a kind
LATER = 3600  # how much later than its results a source is changed


@dataclasses.dataclass(frozen=True)
class Scenario:
    name: str
    options: tuple = ()
    # The target holds the results of an earlier run; a source has changed, a result is missing.
    again: bool = False
    junit: bool = False
    stride: int = 1  # of the kinds of which there are many calls
    allocation_stride: int = 31


SCENARIOS = (
    Scenario("one-thread", ("--jobs", "1")),
    Scenario("two-threads", ("--jobs", "2"), junit=True, stride=3, allocation_stride=101),
    Scenario("again", ("--jobs", "1"), again=True, allocation_stride=37),
)

EXPECTED_KINDS = {"write", "error-write", "read", "open", "close", "rename", "stat", "fstat",
                  "sync",
                  "mkdir", "unlink", "folder", "lock", "attributes", "resolve", "thread",
                  "allocation"}


def write_tree(root, files, seconds):
    for name, text in files.items():
        path = root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(text)
        os.utime(path, (seconds, seconds))


def contents_of(root):
    """Everything below `root` that is no report: names to contents, None for folders."""
    tree = {}
    for place, folders, files in os.walk(root):
        relative = os.path.relpath(place, root)
        for name in folders:
            tree[os.path.normpath(os.path.join(relative, name))] = None
        for name in files:
            path = os.path.join(place, name)
            if relative == "." and OWN_NAME.match(name):
                continue
            with open(path, "rb") as file:
                tree[os.path.normpath(os.path.join(relative, name))] = file.read()
    return tree


def state_of(root):
    """What must not change in the source: contents, links, times, rights."""
    tree = {}
    for place, folders, files in os.walk(root):
        for name in folders + files:
            path = os.path.join(place, name)
            status = os.lstat(path)
            content = None
            if os.path.islink(path):
                content = os.readlink(path)
            elif name in files:
                with open(path, "rb") as file:
                    content = file.read()
            tree[path] = (status.st_ino, status.st_mode, status.st_mtime_ns, content)
    return tree


def comparable(report):
    """A report without what differs from run to run."""
    report = dict(report)
    for name in ("started", "seconds", "target", "sinceLastRun"):
        report.pop(name, None)
    report["totals"] = {**report["totals"], "filesKept": 0}
    report["files"] = [comparable_file(file) for file in report["files"]]
    return report


def comparable_file(file):
    """A result that is whole may be of this run or of the one before."""
    file = {name: value for name, value in file.items() if name not in ("kept", "changes")}
    if file.get("result") == "kept":
        file["result"] = "new"
    return file


@dataclasses.dataclass(frozen=True)
class Outcome:
    """What a run left."""

    status: int | None
    tree: dict
    report: dict | None
    pages: dict  # the report's other forms
    own_names: frozenset


class MigrateTest:
    """One scenario: its archive, and the judgment about a run and the next one."""

    program_name = "quillet-migrate"

    def __init__(self, program, library, scenario, folder):
        self.program = program
        self.library = library
        self.scenario = scenario
        self.name = scenario.name
        self.source = folder / "source"
        self.prepared = folder / "prepared"
        folder.mkdir()
        write_tree(self.source, ARCHIVE, OLD)
        os.symlink("good.syn", self.source / "link.syn")
        if scenario.again:
            self.prepare(folder)
        self.source_state = state_of(self.source)
        self.reference = self.outcome(self.run(folder, None, library=None), folder)
        self.baseline = self.run(folder, None)
        if self.outcome(self.baseline, folder) != self.reference:
            raise injection.NotInjected("the library itself changes what the program does")
        if self.reference.status != 1 or self.reference.report is None:
            raise ValueError(f"{self.name}: exit status {self.reference.status} without a fault")
        for name in self.leftovers(self.reference):
            raise ValueError(f"{self.name}: {name} is left over without a fault")

    def prepare(self, folder):
        injection.run(self.command(self.prepared, None), folder)
        write_tree(self.source, CHANGED, time.time() + LATER)
        (self.prepared / "b" / "four.syn").unlink()
        (self.prepared / f".{TEMPORARY}-all-1-0").write_bytes(b"left from an earlier run")

    def stride(self, kind):
        if kind == "allocation":
            return self.scenario.allocation_stride
        return self.scenario.stride if self.baseline.record.calls[kind] > MANY else 1

    def command(self, target, junit):
        return [self.program, *OPTIONS, *self.scenario.options,
                *(["--junit", junit] if junit else []), self.source, target]

    def run(self, folder, fault, library="own"):
        """A run from the beginning: what another left is removed."""
        target = folder / "target"
        shutil.rmtree(target, ignore_errors=True)
        (folder / "junit.xml").unlink(missing_ok=True)
        if self.scenario.again:
            shutil.copytree(self.prepared, target, symlinks=True)
        return self.run_on(folder, fault, self.library if library == "own" else library)

    def run_on(self, folder, fault, library):
        junit = folder / "junit.xml" if self.scenario.junit else None
        return injection.run(self.command(folder / "target", junit), folder, library, fault)

    def outcome(self, run, folder):
        target = folder / "target"
        report = None
        path = target / "quillet-report.json"
        if path.exists():
            report = comparable(json.loads(path.read_text(encoding="utf-8")))
        names = frozenset(os.listdir(target)) if target.exists() else frozenset()
        pages = {path.name: VOLATILE.sub(b"", path.read_bytes())
                 for path in (target / "quillet-report.html", target / "quillet-report.csv",
                              folder / "junit.xml")
                 if path.exists()}
        return Outcome(run.status, contents_of(target), report, pages,
                       frozenset(name for name in names if OWN_NAME.match(name)))

    @staticmethod
    def tells_of_failed_write(run):
        return run.status == STATUS_OF_TROUBLE and b"No space left on device" in run.error

    # The judgment.

    def check(self, run, fault, folder):
        """What is wrong with `run`, and with one after it that nothing disturbs."""
        problems = []
        crash = run.crash()
        if crash is not None:
            problems.append(crash)
        problems += self.check_results(run, fault, folder)
        # When memory ends so does the program, and the JSON library leaves what it was building.
        may_leak = fault is not None and fault.kind == "allocation"
        if (crash is None and not may_leak
                and run.record.allocations > self.baseline.record.allocations):
            leaked = run.record.allocations - self.baseline.record.allocations
            problems.append(f"{leaked} blocks of memory were not freed")
        problems += self.check_source()
        next_run = self.run_on(folder, None, None)
        crash = next_run.crash()
        if crash is not None:
            return problems + [f"the next run {crash}"]
        outcome = self.outcome(next_run, folder)
        what = self.check_source() + self.compare(outcome) + self.leftovers(outcome)
        if outcome.own_names != self.reference.own_names:
            difference = sorted(outcome.own_names ^ self.reference.own_names)
            what.append("these reports are there or missing: " + ", ".join(difference))
        return problems + [f"after the next run {problem}" for problem in what]

    def check_source(self):
        return [] if state_of(self.source) == self.source_state else ["the source was changed"]

    def check_results(self, run, fault, folder):
        try:
            outcome = self.outcome(run, folder)
        except (ValueError, KeyError) as error:
            return [f"the report cannot be read: {error}"]
        problems = self.check_whole(outcome)
        if run.status in (0, 1):
            what = self.compare(outcome)
            problems += [f"exit status {run.status}, but {problem}" for problem in what]
        elif run.status == STATUS_OF_TROUBLE:
            if not run.error.strip() and fault.kind != "error-write":
                problems.append("no message on standard error")
        elif run.status is not None and run.status > 0:
            problems.append(f"exit status {run.status}")
        if fault is None or fault.error == "short":
            if run.status != self.reference.status:
                problems.append(f"nothing failed, but the exit status is {run.status}: "
                                f"{run.error.decode('utf-8', 'replace').strip()!r}")
        return problems

    def check_whole(self, outcome):
        """Whatever stands under the name of a result is one, of this run or the earlier one."""
        problems = []
        for name, content in outcome.tree.items():
            if TEMPORARY in name or content is None:
                continue
            allowed = [self.reference.tree.get(name)]
            earlier = self.prepared / name
            if self.scenario.again and earlier.is_file():
                allowed.append(earlier.read_bytes())
            if content not in allowed:
                problems.append(f"the result {name} is not whole")
        return problems

    def compare(self, outcome):
        """How `outcome` differs from that of the undisturbed run."""
        problems = []
        expected = self.reference
        if outcome.status != expected.status:
            problems.append(f"the exit status is {outcome.status}, not {expected.status}")
        names = {name for name in set(outcome.tree) | set(expected.tree)
                 if outcome.tree.get(name, "-") != expected.tree.get(name, "-")
                 and TEMPORARY not in name}
        if names:
            problems.append("these results differ: " + ", ".join(sorted(names)))
        if outcome.report != expected.report:
            problems.append("the report differs: " + self.report_difference(outcome.report))
        elif outcome.pages != expected.pages:
            problems.append("the HTML or the JUnit report differs")
        return problems

    def report_difference(self, report):
        if report is None:
            return "there is none"
        expected = self.reference.report
        files = {file["path"]: file for file in report["files"]}
        for file in expected["files"]:
            other = files.get(file["path"])
            if other is None:
                return f"{file['path']} is missing"
            if other != file:
                names = [name for name in file | other if file.get(name) != other.get(name)]
                return f"{file['path']}: " + ", ".join(
                    f"{name} {str(other.get(name))[:100]!r}" for name in names)
        names = [name for name in expected | report if expected.get(name) != report.get(name)]
        return ", ".join(names)

    @staticmethod
    def leftovers(outcome):
        return [f"{name} is left over" for name in sorted(outcome.tree) if TEMPORARY in name]


def tests(program, library, folder, name=None):
    """A test for each scenario, or for the one of this name."""
    return [MigrateTest(program, library, scenario, folder / scenario.name)
            for scenario in SCENARIOS if name in (None, scenario.name)]
