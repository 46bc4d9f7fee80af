#!/usr/bin/env python3
"""Runs quillet-migrate on each file below this folder and compares what its report tells of it.

usage: tests/findings/run.py PROGRAM [--regenerate] [FILTER]
       tests/findings/run.py PROGRAM --case PATH
       tests/findings/run.py PROGRAM --files

CODE/name.sps is an archive of one file that holds what the finding CODE is about, and
CODE/name.findings.json what is to be told: the options of the run, its exit status, the outcome of
the file, how many legacy commands are found and what they come to, and the findings, word for word.
Where the name begins with "near-", the text only looks like it and has no such finding. Those in
none/ have no finding at all.

--regenerate writes name.findings.json anew, with the options that it names; read every changed line
before it is committed. FILTER limits the run to cases whose path contains it.

--case runs one, named by its path from the top folder, and --files only looks at all files
together: that every finding and every sentence of quillet-findings.def has a case. So CTest runs
them, a process each.
"""

import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile

FINDINGS = pathlib.Path(__file__).resolve().parent
ROOT = FINDINGS.parent.parent

TIME_LIMIT = 120  # seconds for one run

# What a run of a whole archive never says, since it knows which files there are.
NOT_OF_ARCHIVES = {"Line {line} runs the file {name}."}
# Nor does one of a single file.
NOT_OF_ONE_FILE = {
    "{command} in line {line} is in the macro {name} of line {cause}, which other files call; all "
    "calls were expanded.",
    "{command} in line {line} is in the macro {name} of line {cause}, which other files call; "
    "{other} of {count} calls could not be expanded.",
}

NUMBERS = ("found", "converted", "failed", "unreadable", "overlooked")
MEMBERS = ("outcome", "layout", "encoding", *NUMBERS, "findings")


class Case:
    def __init__(self, source):
        self.source = source
        self.expected = source.with_suffix(".findings.json")
        self.name = source.relative_to(ROOT).as_posix()
        self.code = source.parent.name
        self.is_near = source.stem.startswith("near-")


def find_cases():
    return sorted((Case(source) for source in FINDINGS.glob("*/*.sps")), key=lambda case: case.name)


def read_expected(case):
    if not case.expected.exists():
        return {"options": []}
    return json.loads(case.expected.read_text(encoding="utf-8"))


def written(facts):
    return json.dumps(facts, indent=2, ensure_ascii=False) + "\n"


def migrate(program, case, options, folder):
    """What the report tells of the case. Texts that are not UTF-8 are read in the code page of the
    locale, so that is fixed here."""
    source = pathlib.Path(folder) / "source"
    source.mkdir()
    (source / case.source.name).write_bytes(case.source.read_bytes())
    target = pathlib.Path(folder) / "target"
    run = subprocess.run(
        [program, "--quiet", *options, source, target],
        stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
        env={**os.environ, "LC_ALL": "C"}, timeout=TIME_LIMIT, check=False)
    if run.stdout:
        raise ValueError("the run says: " + run.stdout.decode(errors="replace"))
    report = json.loads((target / "quillet-report.json").read_text(encoding="utf-8"))
    [file] = report["files"]
    return {"options": options, "status": run.returncode, **{name: file[name] for name in MEMBERS}}


def lines_of(text):
    """The lines of a source, from 1, as a report shows them."""
    for mark, encoding in ((b"\xff\xfe", "utf-16"), (b"\xfe\xff", "utf-16"), (b"", "utf-8")):
        if text.startswith(mark):
            text = text.decode(encoding, errors="replace")
            break
    return ["", *text.removeprefix("\ufeff").replace("\r\n", "\n").replace("\r", "\n").split("\n")]


def check_facts(case, facts):
    """What holds of every report, whatever is expected."""
    if facts["found"] != sum(facts[name] for name in NUMBERS[1:]):
        yield "what the legacy commands came to is not what was found"
    findings = facts["findings"]
    overlooked = [finding for finding in findings if finding["kind"] == "overlooked"]
    if len(overlooked) != facts["overlooked"]:
        yield f"{len(overlooked)} findings about {facts['overlooked']} overlooked commands"
    if overlooked and facts["status"] != 1:
        yield "commands are overlooked, and the status does not tell"
    lines = lines_of(case.source.read_bytes())
    for finding in findings:
        place = f"line {finding['firstLine']}"
        if finding["kind"] == "overlooked" and finding["command"] is None:
            yield f"{place}: an overlooked command without a name"
        texts = finding["text"].split("\n")
        is_legible = "\ufffd" not in "".join(lines)
        if is_legible and not (texts[0] in lines[finding["firstLine"]] and
                               texts[-1] in lines[finding["lastLine"]]):
            yield f"{place}: the text of the finding does not stand in its lines"
    codes = {finding["code"] for finding in findings}
    if case.code == "none":
        if codes:
            yield f"nothing is to be told, but {', '.join(sorted(codes))} is"
    elif case.is_near and case.code in codes:
        yield f'{case.code} is told, so the name should not begin with "near-"'
    elif not case.is_near and case.code not in codes:
        yield f'{case.code} is not told, so the name should begin with "near-"'


def run_case(program, case, regenerate):
    expected = read_expected(case)
    with tempfile.TemporaryDirectory(prefix="quillet-findings-") as folder:
        try:
            facts = migrate(program, case, expected["options"], folder)
        except (ValueError, subprocess.TimeoutExpired, OSError) as error:
            return [str(error)]
    if regenerate:
        case.expected.write_text(written(facts), encoding="utf-8")
        expected = facts
    complaints = list(check_facts(case, facts))
    if facts != expected:
        # Takes longer than most runs, which need it not.
        import difflib  # pylint: disable=import-outside-toplevel

        lines = difflib.unified_diff(written(expected).splitlines(), written(facts).splitlines(),
                                     "expected", "actual", lineterm="", n=2)
        complaints.append("\n".join(lines))
    return complaints


def rows():
    """The codes of the list of findings, and all sentences."""
    text = (ROOT / "ctables" / "quillet" / "quillet-findings.def").read_text(encoding="utf-8")
    codes, sentences = [], []
    for arguments in re.findall(r"^QUILLET_FINDING(?:_VARIANT)?\((.*?)\)$", text,
                                re.MULTILINE | re.DOTALL):
        texts = re.findall(r'"((?:[^"\\]|\\.)*)"', arguments)
        # A name is in the line of the code, its sentence in the lines after that.
        if '"' in arguments.split("\n")[0]:
            codes.append(texts.pop(0))
        sentences.append("".join(texts))
    return codes, sentences


def check_files(cases):
    """Complaints about files that belong to no case, and about what has none."""
    owned = {case.expected for case in cases}
    for path in sorted(FINDINGS.rglob("*.findings.json")):
        if path not in owned:
            yield f"{path.relative_to(ROOT)} belongs to no input"
    codes, sentences = rows()
    if len(codes) < 10:
        yield "no list of findings"
    for code in codes:
        for is_near in (False, True):
            if not any(case.code == code and case.is_near == is_near for case in cases):
                yield f"{code}: no case that {'only looks like it' if is_near else 'has it'}"
    for case in cases:
        if case.code not in (*codes, "none"):
            yield f"{case.name}: no finding has that code"
    told = [finding["sentence"] for case in cases for finding in read_expected(case)["findings"]]
    for sentence in sentences:
        pattern = re.compile(re.sub(r"\\\{\w+\\\}", ".+", re.escape(sentence)), re.DOTALL)
        is_said = sentence not in NOT_OF_ARCHIVES | NOT_OF_ONE_FILE
        if is_said and not any(map(pattern.fullmatch, told)):
            yield f"no case has the sentence: {sentence}"


def run_cases(program, cases, regenerate):
    """How many passed and how many failed; tells about the latter."""
    failed = 0
    for case in cases:
        complaints = run_case(program, case, regenerate)
        if not complaints:
            continue
        failed += 1
        print(f"FAIL {case.name}")
        for complaint in complaints:
            print("    " + complaint.replace("\n", "\n    "))
    return len(cases) - failed, failed


def report_files(cases):
    complaints = list(check_files(cases))
    for complaint in complaints:
        print(f"FAIL {complaint}")
    return len(complaints)


def main(arguments):
    options = [argument for argument in arguments if argument.startswith("-")]
    program, *names = [argument for argument in arguments if not argument.startswith("-")] or [None]
    known_options = ([], ["--regenerate"], ["--case"], ["--files"])
    wrong_number = {"--case": len(names) != 1, "--files": bool(names)}
    if (program is None or len(names) > 1 or options not in known_options
            or any(wrong_number.get(option) for option in options)):
        print(__doc__, file=sys.stderr)
        return 2
    program = os.path.abspath(program)
    if options == ["--files"]:
        return 1 if report_files(find_cases()) else 0
    if options == ["--case"]:
        return run_cases(program, [Case(ROOT / names[0])], False)[1]
    wanted = names[0] if names else ""
    cases = [case for case in find_cases() if wanted in case.name]
    passed, failed = run_cases(program, cases, "--regenerate" in options)
    # Only then do all have their expectations.
    if not names:
        failed += report_files(cases)
    print(f"findings: {passed} passed, {failed} failed")
    return 0 if passed and not failed else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
