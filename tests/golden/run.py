#!/usr/bin/env python3
"""Runs the program over whole syntax files and compares what comes out, byte for byte.

usage: tests/golden/run.py PROGRAM [--regenerate | --fail-fast] [FILTER]
       tests/golden/run.py PROGRAM --case FILE | --files

A case is a file name.syn below this folder, or name.batch.syn, which is converted in batch mode.
Beside it stand

    name.expected   the output file
    name.console    standard output, standard error and exit status; without this file the run
                    must be silent and its status 0

The files of examples/ are cases too; what they become stands in the folder examples here.
Inputs whose run fails have names that begin with "bad-".

Each name.expected is also converted again, in the same mode, and must come back as it is. The
layout of every output is checked as well: no blank lines, and generated commands that end in a
period and keep to the line width.

--regenerate writes name.expected and name.console anew; read every changed line before it is
committed. --fail-fast runs no case after one that has failed. FILTER limits the run to cases whose
path contains it.

--case runs one, named by its path from the top folder, and --files only looks at all files
together: so CTest runs them, a process each.
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile

GOLDEN = pathlib.Path(__file__).resolve().parent
ROOT = GOLDEN.parent.parent
EXAMPLES = ROOT / "examples"

TIME_LIMIT = 120  # seconds for one run

# Cases whose output is not its own conversion, each with its reason. A case that needs its entry
# no longer is reported, so that the list stays true.
NOT_REPEATABLE: dict[str, str] = {
    "examples/monthly.batch.syn":
        "in batch mode the lines of a GPL program read as one command, which gets a period",
    "tests/golden/plans/health-plan-batch.batch.syn":
        "in batch mode the lines of a GPL program read as one command, which gets a period",
    "tests/golden/igraph/axes.syn":
        "a quote inside a GPL text stands behind a backslash, which no command may hold",
    "tests/golden/igraph/final-periods-batch.batch.syn":
        "in batch mode the lines of a GPL program read as one command, which gets a period",
    "tests/golden/igraph/period-before-comment.batch.syn":
        "in batch mode the lines of a GPL program read as one command, which gets a period",
    "tests/golden/igraph/horizontal-bars.syn":
        "a quote inside a GPL text stands behind a backslash, which no command may hold",
    "tests/golden/igraph/view-names.syn":
        "a view name goes into LABEL as it is, its apostrophe included",
}

# The width to which generated commands are laid out, and that of a statement of a graph program.
WIDTH = 80
GPL_WIDTH = 250


class Case:
    def __init__(self, source, folder):
        stem = source.name.removesuffix(".syn")
        self.is_batch = stem.endswith(".batch")
        self.stem = stem.removesuffix(".batch")
        self.source = source
        self.expected = folder / (self.stem + ".expected")
        self.console = folder / (self.stem + ".console")
        self.name = source.relative_to(ROOT).as_posix()
        self.is_example = source.is_relative_to(EXAMPLES)


class Result:
    def __init__(self, output, console, status, standard_output):
        self.output = output
        self.console = console  # None when the run was silent and its status 0
        self.status = status
        self.standard_output = standard_output


def case_of(source):
    is_example = source.is_relative_to(EXAMPLES)
    return Case(source, GOLDEN / "examples" if is_example else source.parent)


def find_cases():
    cases = [case_of(source) for source in [*GOLDEN.rglob("*.syn"), *EXAMPLES.glob("*.syn")]]
    return sorted(cases, key=lambda case: case.name)


def console_text(status, standard_output, standard_error):
    """What a run shows, as it stands in a .console file; None when that is nothing."""
    if status == 0 and not standard_output and not standard_error:
        return None
    # A failed assertion names its line in the program, which moves with every change there.
    standard_error = re.sub(
        rb"^(Assertion failed: .*, \w+:)\d+$", rb"\1LINE", standard_error, flags=re.MULTILINE
    )
    parts = [b"exit status: %d\n" % status]
    for heading, text in ((b"output", standard_output), (b"error", standard_error)):
        parts.append(b"standard %s:\n" % heading)
        parts += [b"| " + line for line in text.splitlines(keepends=True)]
        if text and not text.endswith(b"\n"):
            parts.append(b"\n(no line end)\n")
    return b"".join(parts)


def convert(program, source, is_batch, folder):
    output = folder / "output.syn"
    output.unlink(missing_ok=True)
    # Texts that are not UTF-8 are read in the code page of the locale, so that is fixed here.
    run = subprocess.run(
        [program, *(["-b"] if is_batch else []), source, output],
        stdin=subprocess.DEVNULL,
        stdout=subprocess.PIPE,
        stderr=subprocess.PIPE,
        env={**os.environ, "LC_ALL": "C"},
        timeout=TIME_LIMIT,
        check=False,
    )
    text = output.read_bytes() if output.exists() else None
    return Result(
        text, console_text(run.returncode, run.stdout, run.stderr), run.returncode, run.stdout
    )


def difference(name, expected, actual):
    """Why `actual` is not `expected`, as a list of complaints, empty when they are the same."""
    if expected == actual:
        return []
    if expected is None:
        return [f"there should be no {name}, but there is:\n" + readable(actual)]
    if actual is None:
        return [f"the {name} is missing"]
    # Takes longer than most runs, which need it not.
    import difflib  # pylint: disable=import-outside-toplevel

    lines = difflib.unified_diff(
        readable(expected).splitlines(),
        readable(actual).splitlines(),
        "expected",
        "actual",
        lineterm="",
        n=1,
    )
    return [f"the {name} differs:\n" + "\n".join(list(lines)[:60])]


def readable(text):
    """`text` with every byte that is not plain ASCII spelled out, and its line ends visible."""
    lines = text.split(b"\n")
    shown = [line.decode("latin-1").encode("unicode_escape").decode("ascii") for line in lines]
    return "\n".join(shown) if not lines[-1] else "\n".join(shown) + "\n(no line end)"


def split_lines(output):
    lines = output.split(b"\n")
    return [line.removesuffix(b"\r") for line in lines[:-1]], lines[-1]


def check_lines(output):
    lines, rest = split_lines(output)
    complaints = []
    if rest:
        complaints.append("the last line of the output has no line end")
    # An output without any line is a single line end.
    if lines == [b""] and not rest:
        return complaints
    for number, line in enumerate(lines, 1):
        if not line.strip(b" \t\r"):
            complaints.append(f"line {number} of the output is blank")
    return complaints


FRAMES = {
    b"COMMENT -- Begin CTABLES command.": b"COMMENT -- End CTABLES command.",
    b"COMMENT -- Begin GGRAPH command.": b"COMMENT -- End GGRAPH command.",
}


def generated_commands(output):
    """The generated commands of an output: for each frame its first line's number and its lines."""
    lines, _ = split_lines(output)
    end = None
    for number, line in enumerate(lines, 1):
        if end is None:
            if line in FRAMES:
                end, first, frame = FRAMES[line], number + 1, []
        elif line == end:
            yield first, frame
            end = None
        else:
            frame.append(line)


def is_single_piece(line):
    """True when a line holds nothing at which it could have been broken.

    Layout breaks lines between pieces alone. A quoted text is one piece, and so is a range of
    values; a comma never begins a line, so it stays behind a piece that is too long.
    """
    text = re.sub(rb"'(?:[^']|'')*(?:'|$)|\"(?:[^\"]|\"\")*(?:\"|$)", b"q", line)
    return not re.search(rb"[ \t]", text.strip().replace(b" TO ", b"TO"))


def could_break_gpl(line):
    """True when a line of a graph program has a place where it may be broken within its width."""
    depth = 0
    quoted = False
    index = 0
    while index < min(len(line), GPL_WIDTH - 1):
        byte = line[index : index + 1]
        if quoted:
            if byte == b"\\":
                index += 1
            elif byte == b'"':
                quoted = False
        elif byte == b'"':
            quoted = True
        elif byte == b"(":
            depth += 1
        elif byte == b")":
            depth -= 1
        elif depth == 1 and line[index : index + 2] == b", ":
            return True
        index += 1
    return False


def check_generated(output):
    complaints = []
    for first, frame in generated_commands(output):
        commands = [
            (first + offset, line)
            for offset, line in enumerate(frame)
            if not line.startswith(b"*")  # messages
        ]
        if not commands:
            continue
        if not commands[-1][1].endswith(b"."):
            complaints.append(f"line {commands[-1][0]}: a generated command without a period")
        if commands[0][1].startswith(b"GGRAPH"):
            complaints += check_gpl(commands)
        else:
            complaints += check_width(commands)
    return complaints


def check_width(commands):
    complaints = []
    for index, (number, line) in enumerate(commands):
        # The period that ends a command is put behind it when it has been laid out.
        is_last = index + 1 == len(commands) or commands[index + 1][1] == b"CTABLES"
        length = len(line) - (1 if is_last and line.endswith(b".") else 0)
        if length > WIDTH and not is_single_piece(line):
            complaints.append(f"line {number}: {length} bytes and more than one piece")
    return complaints


def check_gpl(commands):
    # The lines before the program are not laid out: they are as long as the names in them.
    in_program = False
    complaints = []
    for number, line in commands:
        if line == b"END GPL.":
            in_program = False
        if in_program and len(line) > GPL_WIDTH and could_break_gpl(line):
            complaints.append(f"line {number}: {len(line)} bytes of a graph program")
        if line == b"BEGIN GPL":
            in_program = True
    return complaints


def check_name(case, result):
    if case.is_example:
        return []
    is_bad = case.stem.startswith("bad-")
    has_failed = result.status != 0 or b"conversion failed!" in result.standard_output
    if result.status != 0 and not is_bad:
        return ['the run failed, so the name should begin with "bad-"']
    if is_bad and not has_failed:
        return ['nothing failed, so the name should not begin with "bad-"']
    return []


def check_repeated(program, case, expected, folder):
    copy = folder / "input.syn"
    copy.write_bytes(expected)
    result = convert(program, copy, case.is_batch, folder)
    if result.status != 0:
        complaints = ["converted again:\n" + readable(result.console)]
    else:
        complaints = difference("output, converted again,", expected, result.output)
    if case.name not in NOT_REPEATABLE:
        return complaints
    if not complaints:
        return ["the output, converted again, is the same: its exception is not needed"]
    return []


def run_case(program, case, regenerate, folder):
    before = case.source.read_bytes()
    result = convert(program, case.source, case.is_batch, folder)
    complaints = []
    if case.source.read_bytes() != before:
        complaints.append("the input was changed")
    if result.output is None:
        return complaints + ["no output:\n" + readable(result.console or b"")]
    if regenerate:
        write(case.expected, result.output)
        write(case.console, result.console)
    expected = read(case.expected)
    if expected is None:
        return complaints + [f"{case.expected.relative_to(ROOT)} is missing"]
    complaints += difference("output", expected, result.output)
    complaints += difference("console text", read(case.console), result.console)
    complaints += check_name(case, result)
    complaints += check_lines(result.output)
    complaints += check_generated(result.output)
    complaints += check_repeated(program, case, expected, folder)
    return complaints


def read(path):
    return path.read_bytes() if path.exists() else None


def write(path, text):
    if text is None:
        path.unlink(missing_ok=True)
    else:
        path.parent.mkdir(exist_ok=True)
        path.write_bytes(text)


def check_files(cases):
    """Complaints about files and entries that belong to no case, and about shared names."""
    complaints = []
    owners = {}
    for case in cases:
        if case.expected in owners:
            complaints.append(f"{case.name} and {owners[case.expected]} share their output")
        owners[case.expected] = case.name
        owners[case.console] = case.name
    for pattern in ("*.expected", "*.console"):
        for path in sorted(GOLDEN.rglob(pattern)):
            if path not in owners:
                complaints.append(f"{path.relative_to(ROOT)} belongs to no input")
    names = {case.name for case in cases}
    for name in NOT_REPEATABLE:
        if name not in names:
            complaints.append(f"{name}: an exception for no input")
    return complaints


def run_cases(program, cases, regenerate=False, fail_fast=False):
    """How many passed and how many failed; tells about the latter."""
    passed = failed = 0
    with tempfile.TemporaryDirectory(prefix="quillet-golden-") as folder:
        for case in cases:
            try:
                complaints = run_case(program, case, regenerate, pathlib.Path(folder))
            except subprocess.TimeoutExpired:
                complaints = [f"still running after {TIME_LIMIT} s"]
            if not complaints:
                passed += 1
                continue
            failed += 1
            print(f"FAIL {case.name}")
            for complaint in complaints:
                print("    " + complaint.replace("\n", "\n    "))
            if fail_fast:
                break
    return passed, failed


def report_files(cases):
    """How many complaints there are about all files together; tells them."""
    complaints = check_files(cases)
    for complaint in complaints:
        print(f"FAIL {complaint}")
    return len(complaints)


def main(arguments):
    program, options, names = None, [], []
    for argument in arguments:
        if argument.startswith("-"):
            options.append(argument)
        elif program is None:
            program = os.path.abspath(argument)
        else:
            names.append(argument)
    wrong_number = {"--case": len(names) != 1, "--files": bool(names)}
    if (program is None or len(names) > 1
            or options not in (
                [], ["--regenerate"], ["--fail-fast"], ["--case"], ["--files"])
            or any(wrong_number.get(option) for option in options)):
        print(__doc__, file=sys.stderr)
        return 2
    if options == ["--files"]:
        return 1 if report_files(find_cases()) else 0
    if options == ["--case"]:
        return run_cases(program, [case_of(ROOT / names[0])])[1]

    cases = find_cases()
    failed_files = report_files(cases) if not names else 0
    wanted = names[0] if names else ""
    passed, failed = run_cases(program, [case for case in cases if wanted in case.name],
                               "--regenerate" in options, "--fail-fast" in options)
    failed += failed_files
    if passed + failed == 0:
        print("no such case")
    print(f"golden: {passed} passed, {failed} failed")
    return 0 if passed and not failed else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
