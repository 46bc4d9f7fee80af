#!/usr/bin/env python3
"""Holds the reports of all sorts of runs against docs/report.schema.json.

usage: QUILLET_MIGRATE_PROGRAM=PROGRAM pytest-3 tests/schema_test.py [-k TEST]
"""

import copy
import json
import os
import pathlib
import signal
import subprocess
import time

import jsonschema
import pytest

TOP = pathlib.Path(__file__).resolve().parent.parent
PROGRAM = os.environ.get("QUILLET_MIGRATE_PROGRAM", TOP / "build" / "release" / "quillet-migrate")
TIME_LIMIT = 120  # seconds for one run

ORDINARY = b"LIST x y.\n"
TABLES = b"TABLES /TABLE=sex BY region /STATISTICS=COUNT.\n"
WARNING = b"TABLES /TABLE=sex BY region /BOXCHARS=1.\n"
FAILING = b"IGRAPH /NONSENSE.\n"
UNREADABLE = b'LIST "x.\n'
BINARY = b"LIST\0x.\n"


def strict(schema):
    """The same, but that objects have no members besides those that it names: what a report of this
    version holds and no page tells about is a mistake of ours."""
    if isinstance(schema, list):
        return [strict(part) for part in schema]
    if not isinstance(schema, dict):
        return schema
    parts = {name: strict(part) for name, part in schema.items()}
    if parts.get("type") == "object":
        parts["additionalProperties"] = False
    return parts


SCHEMA = json.loads((TOP / "docs" / "report.schema.json").read_text(encoding="utf-8"))
VALIDATOR = jsonschema.Draft202012Validator(strict(SCHEMA))


class Archive:
    """A folder with a source in it, and what runs make of that."""

    def __init__(self, folder):
        self.folder = folder
        self.source = folder / "source"
        self.target = folder / "target"
        self.source.mkdir()

    def create(self, name, content):
        path = os.path.join(os.fsencode(self.source), os.fsencode(name))
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "wb") as file:
            file.write(content)

    def run(self, *arguments, status):
        run = subprocess.run([PROGRAM, *arguments], stdin=subprocess.DEVNULL, capture_output=True,
                             timeout=TIME_LIMIT, check=False)
        assert run.returncode == status, run.stderr

    def migrate(self, *options, status=0, name="quillet-report.json"):
        """Migrates source to target and returns the report, which is as it should be."""
        self.run(*options, self.source, self.target, status=status)
        return self.report(self.target / name)

    @staticmethod
    def report(path):
        report = json.loads(path.read_text(encoding="utf-8"))
        VALIDATOR.validate(report)
        return report


@pytest.fixture(name="archive")
def make_archive(tmp_path):
    return Archive(tmp_path)


def results(report):
    return {file["path"]: file.get("result") for file in report["files"]}


def test_the_schema_is_one():
    jsonschema.Draft202012Validator.check_schema(SCHEMA)


def test_an_empty_archive(archive):
    assert archive.migrate()["files"] == []


def test_what_is_converted(archive):
    archive.create("a", ORDINARY + TABLES + WARNING)
    archive.create("b", b"* \xfc.\n" + TABLES)
    archive.create("c/d\xff".encode("latin-1"), ORDINARY)
    archive.create("d", b"* Old\n" + TABLES + b"DEFINE !f ().\n" + TABLES + b"!ENDDEFINE.\n")
    archive.create("e", TABLES + b"LIST. /* x\nINCLUDE 'a'.\n")
    report = archive.migrate("--end-at-blank-lines", status=1)
    codes = {finding["code"] for file in report["files"] for finding in file["findings"]}
    assert codes == {"open-comment", "macro-body", "comment-dropped", "include"}
    assert report["files"][2]["outcome"] == "nothing-to-convert"
    assert report["totals"]["commandsConverted"] == 4
    assert report["totals"]["warnings"] == 1
    assert report["files"][2]["rawPath"] == "c/d%FF"


MACROS = (b"DEFINE !f (!POSITIONAL !ENCLOSE('(',')'))\n" + TABLES.replace(b"sex", b"!1") +
          b"!ENDDEFINE.\nDEFINE @c () a + b !ENDDEFINE.\n!f (q1).\n!f (.\n!f (.).\n"
          b"TABLES /TABLE=@c BY @c.\nDEFINE !g () LIST. TABLES /TABLE=a. !ENDDEFINE.\n!g.\n")


@pytest.mark.parametrize("mode", ["report", "expand"])
def test_what_macros_give(archive, mode):
    archive.create("lib", MACROS)
    archive.create("a", b"INCLUDE 'lib'.\n!f (q2).\n")
    report = archive.migrate(f"--macros={mode}", status=1)
    assert report["totals"]["macroCallsConverted"] == 4
    assert report["totals"]["macroCallsLeft"] == 1
    assert report["totals"]["macroCallsFailed"] == 2
    assert report["totals"].get("commandsFromMacros", 0) == (5 if mode == "expand" else 0)


def test_what_fails(archive):
    archive.create("partly", TABLES + FAILING + ORDINARY)
    archive.create("stopped", TABLES + UNREADABLE)
    archive.create("skipped", BINARY)
    (archive.source / "link").symlink_to("/")
    (archive.target / "failed").mkdir(parents=True)
    archive.create("failed", TABLES)
    report = archive.migrate(status=2)
    outcomes = {file["path"]: file["outcome"] for file in report["files"]}
    assert outcomes.pop("link") == "skipped"
    assert outcomes == {name: name for name in ("failed", "partly", "skipped", "stopped")}
    errors = {command.get("error") for file in report["files"] for command in file["commands"]}
    assert errors == {None, "igraph-syntax", "unclosed-literal"}


def test_what_is_copied_and_what_is_tried_alone(archive):
    archive.create("a", BINARY)
    archive.create("b", TABLES)
    assert archive.migrate("--dry-run", name="quillet-report-dry-run.json")["dryRun"]
    report = archive.migrate("--copy-others", "--batch")
    assert report["layout"] == "batch"
    assert [file["outcome"] for file in report["files"]] == ["copied", "converted"]


def test_what_is_left_alone(archive):
    for name in ("edited", "kept", "outdated"):
        archive.create(name, TABLES)
    archive.create("orphaned", FAILING)
    archive.migrate(status=1)
    for name in ("edited", "outdated"):
        (archive.target / name).write_bytes(b"Something else.\n")
    archive.create("outdated", TABLES + TABLES)
    (archive.source / "orphaned").unlink()
    report = archive.migrate(status=1)
    assert results(report) == {"edited": "edited", "kept": "kept", "outdated": "edited",
                               "orphaned": "orphaned"}
    assert [file["path"] for file in report["files"] if "sourceChanged" in file] == ["outdated"]


def test_what_has_changed(archive):
    archive.create("a", b"* old\n" + TABLES)
    archive.create("b", FAILING + TABLES)
    assert archive.migrate(status=1)["sinceLastRun"] is None
    archive.create("a", b"* old.\n" + TABLES)
    archive.create("b", TABLES + b"* old\n" + TABLES)
    report = archive.migrate(status=1)
    del report["sinceLastRun"]["started"]
    assert report["sinceLastRun"] == {"mended": 1, "new": 1, "stillFailing": 0, "gone": 1}
    assert [file["changes"] for file in report["files"]] == [
        {"mended": [2]}, {"new": [3], "gone": [1]}]


def test_what_is_signed_off(archive):
    archive.create("a", TABLES)
    archive.create(b"b\xff", TABLES)
    archive.migrate()
    signs = [{"path": path, "rawPath": path.replace("\ufffd", "%FF"), "number": number,
              "state": "mended", "firstLine": 7}
             for path in ("a", "b\ufffd") for number in (1, 2)]
    value = 0xcbf29ce484222325
    for byte in TABLES.strip():
        value = (value ^ byte) * 0x100000001b3 % 2 ** 64
    for sign in signs:
        sign["hash"] = f"{value:016x}"
    (archive.target / "quillet-signoff.json").write_text(json.dumps(
        {"format": "quillet-signoff", "formatVersion": 1, "signOffs": signs}))
    report = archive.migrate()
    assert [len(file["signOffs"]) for file in report["files"]] == [1, 1]
    assert [other.get("rawPath") for other in report["otherSignOffs"]] == [None, "b%FF"]
    assert report["totals"]["commandsMendedByHand"] == 2


def test_slices_and_what_is_merged(archive):
    for number in range(8):
        archive.create(f"{number}.syn", TABLES + FAILING)
    slices = []
    for number in (1, 2):
        name = f"quillet-report-{number}-of-2.json"
        assert archive.migrate("--shard", f"{number}/2", status=1, name=name)["shard"]
        slices.append(archive.target / name)
    merged = archive.folder / "merged"
    archive.run("--merge-reports", *slices, merged, status=1)
    report = archive.report(merged / "quillet-report.json")
    assert (report["shard"], report["totals"]["files"]) == (None, 8)


def test_what_is_interrupted(archive):
    for number in range(150):
        archive.create(f"{number:03}.syn", 100 * (ORDINARY + TABLES))
    with subprocess.Popen([PROGRAM, "--jobs", "1", archive.source, archive.target],
                          stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL) as run:
        while run.poll() is None and not list(archive.target.glob("*.syn")):
            time.sleep(0.001)
        run.send_signal(signal.SIGINT)
        assert run.wait(timeout=TIME_LIMIT) == 130
    report = archive.report(archive.target / "quillet-report-interrupted.json")
    assert report["interrupted"]
    assert 0 < len(report["files"]) < 150


ORDINARY_COMMAND = {"type": "TABLES", "outcome": "converted", "firstLine": 1, "lastLine": 1,
                    "source": "", "generated": "", "generatedLine": 1, "warnings": []}
ORDINARY_FINDING = {"code": "include", "kind": "told", "command": None, "firstLine": 1,
                    "lastLine": 1, "causeLine": 1, "macro": None, "sentence": "", "text": ""}
ORDINARY_FILE = {"path": "a", "outcome": "converted", "result": "new", "bytes": 1, "modified": -1,
                 "encoding": "utf-8", "encodingReason": "valid-utf-8", "layout": "interactive",
                 "layoutReason": "default", "blankLines": "mean-nothing",
                 "blankLinesReason": "default", "lines": 1, "copied": 0, "found": 1, "converted": 1,
                 "failed": 0, "unreadable": 0, "overlooked": 0, "listed": 1, "warnings": 0,
                 "changed": 0, "told": 1, "message": "", "findings": [ORDINARY_FINDING],
                 "commands": [ORDINARY_COMMAND]}

# What becomes of a file's entry, by the name of what is wrong with it.
MISTAKES = {
    "a count below zero": lambda file: file.update(lines=-1),
    "a count that is no whole number": lambda file: file.update(lines=0.5),
    "a member of another kind": lambda file: file.update(message=None),
    "a member that is missing": lambda file: file.pop("path"),
    "a member nobody knows": lambda file: file.update(strange=1),
    "an unknown outcome": lambda file: file.update(outcome="eaten"),
    "an unknown state": lambda file: file.update(result="old"),
    "no path": lambda file: file.update(path=""),
    "a path from the root": lambda file: file.update(path="/etc/x"),
    "a path to a folder": lambda file: file.update(path="a/"),
    "a path that leads out": lambda file: file.update(path="a/../../x"),
    "a path that is wrongly encoded": lambda file: file.update(rawPath="%e9"),
    "kept and new": lambda file: file.update(kept=True),
    "kept and not marked as such": lambda file: file.update(result="kept"),
    "failed with a result": lambda file: file.update(outcome="failed"),
    "skipped with a result": lambda file: file.update(outcome="skipped"),
    "converted without a source": lambda file: file.update(result="orphaned"),
    "a new result whose source has changed": lambda file: file.update(sourceChanged=True),
    "converted for an error": lambda file: file["commands"][0].update(error="tables-syntax"),
    "converted to nothing": lambda file: file["commands"][0].pop("generated"),
    "failed without a reason": lambda file: file["commands"][0].update(outcome="failed"),
    "a copied command": lambda file: file["commands"][0].update(outcome="copied"),
    "nothing to convert, but a command": lambda file: file.update(outcome="nothing-to-convert"),
    "a layout nobody knows": lambda file: file.update(layout="landscape"),
    "a finding of no kind": lambda file: file["findings"][0].update(kind="guessed"),
    "an overlooked nothing": lambda file: file["findings"][0].update(kind="overlooked"),
    "a finding without a sentence": lambda file: file["findings"][0].pop("sentence"),
    "a warning that is no text": lambda file: file["commands"][0].update(warnings=[1]),
}


@pytest.mark.parametrize("mistake", MISTAKES)
def test_mistakes_are_found(archive, mistake):
    report = archive.migrate()
    report["files"] = [copy.deepcopy(ORDINARY_FILE)]
    VALIDATOR.validate(report)
    MISTAKES[mistake](report["files"][0])
    with pytest.raises(jsonschema.ValidationError):
        VALIDATOR.validate(report)
