#!/usr/bin/env python3
"""Runs quillet-migrate as an office does: whole archives, slices of them, interrupted runs, and
everything that can be wrong with files.

usage: [QUILLET_MIGRATE_PROGRAM=PROGRAM] [QUILLET_PROGRAM=PROGRAM] pytest-3 tests/migrate_test.py
           [-k TEST]

Results are compared with those of the second program.
"""

import collections
import contextlib
import csv
import ctypes
import io
import json
import os
import pty
import random
import re
import shutil
import signal
import stat
import subprocess
import sys
import time
import xml.etree.ElementTree

import pytest

from support.foldercase import (MEBIBYTE, TIME_LIMIT, TOP, FolderCase, is_sanitized, program,
                                row_name)

PROGRAM = program("quillet-migrate", "QUILLET_MIGRATE_PROGRAM")
SINGLE_PROGRAM = program("quillet", "QUILLET_PROGRAM")

NOBODY = 65534

ORDINARY = b"LIST x y.\n"
TABLES = b"TABLES /TABLE=sex BY region /STATISTICS=COUNT.\n"
FAILING = b"IGRAPH /NONSENSE.\n"
UNREADABLE = b'LIST "x.\n'
BINARY = b"LIST\0x.\n"

REPORT_NAME = re.compile(r"^quillet-report.*\.(json|html|csv|journal)$")


def contents_of(folder):
    """Everything below a folder, the reports left out: names to contents, None for folders."""
    top = os.fsencode(folder)
    tree = {}
    for place, folders, files in os.walk(top):
        relative = os.path.relpath(place, top)
        for name in folders:
            tree[os.path.normpath(os.path.join(relative, name))] = None
        for name in files:
            if relative == b"." and REPORT_NAME.match(os.fsdecode(name)):
                continue
            with open(os.path.join(place, name), "rb") as file:
                tree[os.path.normpath(os.path.join(relative, name))] = file.read()
    return tree


def wait_until(condition, what, limit=TIME_LIMIT):
    end = time.monotonic() + limit
    while not condition():
        if time.monotonic() > end:
            raise AssertionError(f"waited in vain until {what}")
        time.sleep(0.001)


def timeless(report):
    """A report without what differs from run to run."""
    report = dict(report)
    for name in ("started", "seconds", "shard", "target"):
        del report[name]
    report.pop("sinceLastRun", None)
    report["files"] = [{name: value for name, value in file.items() if name != "changes"}
                       for file in report["files"]]
    return report


def unkept(report):
    """A report without the difference between results of this run and of an earlier one."""
    report = timeless(report)
    report["totals"] = {**report["totals"], "filesKept": 0}
    report["files"] = [
        {name: value for name, value in file.items()
         if name != "kept" and (name, value) != ("result", "kept")}
        | ({"result": "new"} if file.get("result") == "kept" else {})
        for file in report["files"]
    ]
    return report


def exchange(left, right):
    """Swaps what two names stand for, in one step."""
    working_folder, swap = -100, 2
    library = ctypes.CDLL(None, use_errno=True)
    if library.renameat2(working_folder, os.fsencode(left), working_folder, os.fsencode(right),
                         swap) != 0:
        raise OSError(ctypes.get_errno(), "names cannot be exchanged")


# Shells start jobs in the background with this signal ignored, which the program would inherit.
signal.signal(signal.SIGINT, signal.default_int_handler)


class MigrateCase(FolderCase):
    """Gives each test a folder with an empty source in it, and the program to run."""

    def setup_method(self):
        super().setup_method()
        self.program = PROGRAM
        self.source = self.folder / "source"
        self.target = self.folder / "target"
        self.source.mkdir()
        self.user = None
        self.report_name = "quillet-report.json"
        # Texts without anything to convert are to stand in the target, too.
        self.wants_all = True
        # A file with so many commands is in work for a while. A sanitizer makes that long as well.
        self.many = 25000 if is_sanitized(PROGRAM) else 100000

    def create(self, name, text):
        path = os.path.join(os.fsencode(self.source), os.fsencode(name))
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "wb") as file:
            file.write(text)
        return path

    def create_archive(self, files=60, commands=40, seed=1):
        """Files of all sorts in a few folders."""
        generator = random.Random(seed)
        for number in range(files):
            texts = generator.choices([ORDINARY, TABLES, FAILING, b"VAR LAB x 'gr\xf6\xdfe'.\n"],
                                      weights=[6, 3, 1, 1], k=commands)
            name = f"{generator.choice('abc')}/{generator.choice('xyz')}/{number:04}.syn"
            self.create(name, b"".join(texts))
        self.create("stopped.syn", TABLES + UNREADABLE + ORDINARY)
        self.create("picture.png", BINARY)

    def command(self, *arguments):
        words = [os.fspath(argument) for argument in arguments]
        takes_source = any(word.startswith(os.fspath(self.source)) for word in words)
        if self.wants_all and takes_source and not {"--include", "--merge-reports"} & {*words}:
            words = ["--include", "*", *words]
        return [self.program, *words]

    def options(self, **options):
        options.setdefault("stdin", subprocess.DEVNULL)
        options.setdefault("stdout", subprocess.PIPE)
        options.setdefault("stderr", subprocess.PIPE)
        options.setdefault("cwd", self.folder)
        options.setdefault("env", {"LC_ALL": "C"})
        if self.user is not None:
            options.update(user=self.user, group=self.user, extra_groups=[])
        return options

    def run_program(self, *arguments, **options):
        return subprocess.run(self.command(*arguments), timeout=TIME_LIMIT, check=False,
                              **self.options(**options))

    def start_program(self, *arguments, **options):
        process = subprocess.Popen(self.command(*arguments), **self.options(**options))
        self.add_cleanup(self.end_process, process)
        return process

    @staticmethod
    def end_process(process):
        if process.poll() is None:
            process.kill()
        process.communicate()

    def migrate(self, *options, status=0, target=None):
        """Migrates source to target and returns the run. Its report is the one that is read."""
        self.report_name = f"quillet-report{'-dry-run' * ('--dry-run' in options)}.json"
        run = self.run_program(*options, self.source, target or self.target)
        assert (run.returncode, run.stdout) == (status, b""), run.stderr
        return run

    def change(self, name, text, seconds=0):
        """Gives a file of the source another content, and a date so much later."""
        date = os.stat(self.source / name).st_mtime + seconds
        self.create(name, text)
        os.utime(self.source / name, (date, date))

    def records(self, target=None):
        """What the journal says, by path, the latest last."""
        records = {}
        for line in ((target or self.target) / "quillet-report.journal").read_bytes().split(b"\n"):
            if line.startswith(b"quillet1 "):
                record = json.loads(line[26:])
                records.setdefault(record["path"], []).append(record)
        return records

    def report(self, target=None, name=None):
        with open((target or self.target) / (name or self.report_name), encoding="utf-8") as file:
            return json.load(file)

    def facts(self, path, target=None):
        [file] = [file for file in self.report(target)["files"] if file["path"] == path]
        return file

    def not_followed(self, target=None):
        """The paths that were left out because of a link."""
        return {file["path"] for file in self.report(target)["files"]
                if file.get("linkNotFollowed")}

    def results(self, target=None):
        return contents_of(target or self.target)

    def expect_no_left_overs(self, target=None):
        names = [name for name in contents_of(target or self.target) if b"quillet-tmp" in name]
        assert names == []

    def as_ordinary_user(self):
        """From here on the program has no rights that files do not give it."""
        if os.geteuid() != 0:
            return
        copy = self.folder / "program"
        shutil.copy(self.program, copy)
        copy.chmod(0o755)
        self.program = os.fspath(copy)
        self.folder.chmod(0o777)
        self.user = NOBODY


KOREAN = "* 표 만들기.\nTABLES /TABLE=sex /STATISTICS=COUNT(sex '인원').\n"
POLISH = "* Źródło.\nTABLES /TABLE=płeć /STATISTICS=COUNT(płeć 'Łącznie').\n"


class TestEncoding(MigrateCase):
    def converted(self, text):
        """What the second program makes of a text, which it reads as UTF-8."""
        (self.folder / "in").write_bytes(text.encode())
        subprocess.run([SINGLE_PROGRAM, self.folder / "in", self.folder / "out"], check=True,
                       capture_output=True)
        return (self.folder / "out").read_bytes().decode()

    def result(self, name):
        return (self.target / name).read_bytes()

    def expect(self, name, text, encoding, recorded, outcome="converted"):
        # pylint: disable=too-many-arguments
        assert self.result(name) == self.converted(text).encode(encoding)
        facts = self.facts(name)
        assert (facts["outcome"], facts["encoding"]) == (outcome, recorded)
        assert facts["lines"] == text.count("\n")

    def test_the_one_for_all(self):
        self.create("a", POLISH.encode("cp1250"))
        self.create("b", POLISH.encode())
        self.migrate("--encoding", "windows-1250")
        self.expect("a", POLISH, "cp1250", "windows-1250")
        self.expect("b", POLISH, "utf-8", "utf-8")
        [command] = self.facts("a")["commands"]
        assert "COUNT(płeć 'Łącznie')" in command["source"]
        self.migrate("--encoding", "windows-1250")
        assert self.facts("a")["result"] == "kept"
        self.migrate("--encoding", "ISO-8859-2")
        assert self.facts("a")["result"] == "new"

    def test_those_of_some(self):
        self.create("kr/a", KOREAN.encode("euc-kr"))
        self.create("pl/a", POLISH.encode("cp1250"))
        self.create("pl/b", POLISH.encode("iso-8859-2"))
        self.migrate("--encoding", "EUC-KR", "--encoding-include", "pl/*=cp1250",
                     "--encoding-include", "b=ISO-8859-2")
        self.expect("kr/a", KOREAN, "euc-kr", "EUC-KR")
        self.expect("pl/a", POLISH, "cp1250", "cp1250")
        self.expect("pl/b", POLISH, "iso-8859-2", "ISO-8859-2")

    def test_the_first_line_names_it(self):
        text = "* Encoding: windows-1250.\n" + POLISH
        self.create("a", text.encode("cp1250"))
        self.create("b", text.encode("iso-8859-2"))
        self.create("c", b"* Encoding: nonsense.\n" + TABLES)
        self.migrate("--encoding-include", "b=ISO-8859-2")
        self.expect("a", text, "cp1250", "windows-1250")
        # The first line names another encoding still.
        self.expect("b", text, "iso-8859-2", "ISO-8859-2", "changed")
        assert self.facts("b")["findings"][0]["code"] == "encoding-doubtful"
        assert self.facts("c")["encoding"] == "utf-8"
        assert [self.facts(name)["encodingReason"] for name in "abc"] == [
            "first-line", "option", "valid-utf-8"]

    def test_the_name_may_be_spelled_variously(self):
        spellings = ("CP1250", "cp1250", "Cp1250")
        for number, spelling in enumerate(spellings):
            self.create(str(number), f"* Encoding: {spelling}.\n{POLISH}".encode("cp1250"))
        self.create("x", POLISH.encode("iso-8859-2"))
        self.migrate("--encoding-include", "x=ISO-8859-2")
        assert [self.facts(str(number))["encoding"] for number in range(3)] == list(spellings)
        options = [self.records()[name][-1]["options"] for name in "012x"]
        assert options == 3 * ["layout=auto;encoding=cp1250"] + ["layout=auto;encoding=iso-8859-2"]
        self.migrate("--encoding-include", "x=iso-8859-2")
        assert [self.facts(name)["result"] for name in "012x"] == 4 * ["kept"]

    @pytest.mark.parametrize("order", ("utf-16le", "utf-16be"))
    def test_utf16(self, order):
        text = KOREAN.replace("\n", "\r\n")
        self.create("a", ("\ufeff" + text).encode(order))
        large = "\ufeff" + "LIST \U0001F600.\n" * 50000
        self.create("b", large.encode(order))
        self.create("c", (large + "* x\nTABLES /TABLE=a.\n").encode(order))
        self.migrate(status=1)
        self.expect("a", "\ufeff" + text, order, order)
        assert self.result("b") == large.encode(order)
        assert self.facts("b")["outcome"] == "nothing-to-convert"
        assert self.result("c") == (large + "* x\nTABLES /TABLE=a.\n").encode(order)
        assert {finding["code"] for finding in self.facts("c")["findings"]} == {
            "open-comment", "wide-text"}
        self.migrate(status=1)
        assert [self.facts(name)["result"] for name in "abc"] == ["kept", "kept", "kept"]

    def test_utf16_without_a_mark(self):
        self.create("a", KOREAN.encode("utf-16le"))
        self.create("b", TABLES)
        self.migrate()
        assert self.facts("a")["outcome"] == "skipped"
        self.migrate("--encoding", "UTF-16")
        self.expect("a", KOREAN, "utf-16le", "utf-16le")
        assert self.facts("b")["encoding"] == "utf-8"

    def test_results_in_utf8(self):
        first_line = "* Encoding: {}.\n"
        self.create("a", (first_line.format("EUC-KR") + KOREAN).encode("euc-kr"))
        self.create("b", ("\ufeff" + KOREAN).encode("utf-16le"))
        self.create("c", b"* gr\xfcn.\n" + TABLES)
        self.create("d", KOREAN.encode())
        self.create("e", ("\ufeff" + first_line.format("UTF-16") + KOREAN).encode("utf-16le"))
        self.create("f", first_line.format("windows-1250").encode() + TABLES)
        self.migrate("--to-utf8")
        self.expect("a", first_line.format("UTF-8") + KOREAN, "utf-8", "EUC-KR")
        self.expect("b", "\ufeff" + KOREAN, "utf-8", "utf-16le")
        self.expect("c", "* grün.\n" + TABLES.decode(), "utf-8", "windows-1252")
        self.expect("d", KOREAN, "utf-8", "utf-8")
        self.expect("e", "\ufeff" + first_line.format("UTF-8") + KOREAN, "utf-8", "utf-16le")
        self.expect("f", first_line.format("UTF-8") + TABLES.decode(), "utf-8", "utf-8")
        self.migrate()
        assert self.result("a") == self.converted(first_line.format("EUC-KR") + KOREAN).encode(
            "euc-kr")

    def test_lines_that_end_in_cr(self):
        for name, encoding in (("a", "utf-8"), ("b", "cp949"), ("c", "utf-16le")):
            self.create(name, ("\ufeff" * (name == "c") + KOREAN.replace("\n", "\r"))
                        .encode(encoding))
        self.create("d", b"LIST.\rTABLES /TABLE=a.\r" * 50000)
        self.create("e", b"LIST.\rTABLES /TABLE=a.\r" * 500 + b"LIST.\n")
        # Among other line ends, CR is a blank: so all of the last file is one line.
        self.migrate("--encoding", "cp949", status=1)
        for name, encoding in (("a", "utf-8"), ("b", "cp949"), ("c", "utf-16le")):
            text = "\ufeff" * (name == "c") + self.converted(KOREAN).replace("\n", "\r")
            assert self.result(name) == text.encode(encoding)
            assert (self.facts(name)["lines"], self.facts(name)["converted"]) == (2, 1)
        assert (self.facts("d")["lines"], self.facts("d")["converted"]) == (100000, 50000)
        assert b"\n" not in self.result("d")
        assert self.facts("e")["lines"] == 1
        assert [self.facts(name)["told"] for name in "abcde"] == [1, 1, 2, 1, 0]
        facts = self.facts("e")
        assert (facts["found"], {finding["code"] for finding in facts["findings"]}) == (
            (500, {"same-line", "comment-dropped"}))
        assert {finding["code"] for finding in self.facts("c")["findings"]} == {
            "old-line-ends", "wide-text"}

    @pytest.mark.parametrize("options", (
        ("--encoding", "nonsense"), ("--encoding", "UTF-32"), ("--encoding-include", "a=nonsense"),
        ("--encoding", ""), ("--encoding-include", "a"), ("--encoding-include", "=utf-8"),
        ("--encoding-include", "a=")), ids=row_name)
    def test_what_is_no_encoding(self, options):
        self.create("a", ORDINARY)
        run = self.run_program(*options, self.source, self.target)
        assert run.returncode == 2
        assert options[0].encode() in run.stderr
        assert not self.target.exists()

    def test_a_locale_that_is_not_installed(self):
        self.create("a", b"LIST '\xf6'.\n")
        missing = {"LC_ALL": "xx_XX.ISO-8859-2"}
        run = self.run_program(self.source, self.target, env=missing)
        assert run.returncode == 2
        assert b"The locale xx_XX.ISO-8859-2 is not installed" in run.stderr
        assert not self.target.exists()
        self.migrate_in(missing, "--encoding", "ISO-8859-2")
        # Whatever its language, files that are not UTF-8 are Windows-1252 in it.
        self.migrate_in({"LC_ALL": "", "LANG": "xx_XX.UTF-8"})

    def migrate_in(self, environment, *options):
        run = self.run_program(*options, self.source, self.target, env=environment)
        assert run.returncode == 0, run.stderr
        assert self.result("a") == b"LIST '\xf6'.\n"


class TestTree(MigrateCase):
    def test_mirrors_a_tree(self):
        self.create("a/b/one.syn", b"LIST x\n\n  y.\n* z\n" + TABLES + b"LIST z")
        self.create("two", b"LIST.\r\n")
        (self.source / "empty" / "inner").mkdir(parents=True)
        self.migrate(status=1)
        assert self.results() == {
  b"a": None, b"a/b": None, b"a/b/one.syn": b"LIST x\n  y.\n* z\n" + TABLES + b"LIST z.\n",
  b"two": b"LIST.\r\n", b"empty": None, b"empty/inner": None}
        self.expect_no_left_overs()

    @pytest.mark.parametrize("mode", (["--layout=interactive"], ["--batch"]), ids=row_name)
    def test_results_are_those_of_the_single_program(self, mode):
        self.create_archive()
        target = self.folder / "target"
        self.migrate(*mode, status=1, target=target)
        files = [file["path"] for file in self.report(target)["files"]
                 if file["outcome"] != "skipped"]
        assert len(files) == 61
        for name in files:
            expected = self.folder / "expected"
            switch = ["-b"] if mode == ["--batch"] else []
            subprocess.run([SINGLE_PROGRAM, *switch, self.source / name, expected], check=False,
                           stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                           env={"LC_ALL": "C"})
            assert (target / name).read_bytes() == expected.read_bytes(), name

    def test_a_single_file(self):
        self.create("one.syn", ORDINARY)
        self.create("two.syn", ORDINARY)
        run = self.run_program(self.source / "one.syn", self.target)
        assert run.returncode == 0, run.stderr
        assert self.results() == {b"one.syn": ORDINARY}
        assert [file["path"] for file in self.report()["files"]] == ["one.syn"]

    def test_an_empty_folder(self):
        self.wants_all = False
        run = self.migrate()
        assert b"0 files" in run.stderr
        assert self.results() == {}
        assert self.report()["files"] == []
        assert (self.target / "quillet-report.html").exists()

    def test_include_and_exclude(self):
        for name in ("a.syn", "B.SYN", "c.sps", "d.txt", "old/e.syn", "old/deep/f.syn"):
            self.create(name, ORDINARY)
        self.migrate("--include", "*.syn", "--include=*.sps", "--exclude", "OLD/deep/*")
        names = {name for name, content in self.results().items() if content is not None}
        assert names == {b"a.syn", b"B.SYN", b"c.sps", b"old/e.syn"}
        assert self.report()["totals"]["files"] == 4

    def test_other_files_are_copied_when_asked_for(self):
        self.create("a.syn", b"LIST")
        self.create("a.txt", TABLES)
        self.create("b.syn", BINARY)
        self.create("c.syn", b"x" * 65536 + b"\0.")
        os.chmod(self.source / "a.txt", 0o751)
        self.migrate("--include", "*.syn")
        assert sorted(self.results()) == [b"a.syn", b"c.syn"]
        assert self.facts("b.syn")["outcome"] == "skipped"
        assert "zero byte" in self.facts("b.syn")["message"]
        self.migrate("--include", "*.syn", "--copy-others", "--force")
        assert self.results()[b"a.syn"] == b"LIST"
        assert self.results()[b"a.txt"] == TABLES
        assert self.results()[b"b.syn"] == BINARY
        assert self.facts("a.txt")["outcome"] == "copied"
        assert stat.S_IMODE((self.target / "a.txt").stat().st_mode) == 0o751
        assert self.report()["totals"]["filesCopied"] == 2

    def test_rights_are_kept(self):
        for mode in (0o444, 0o600, 0o755):
            self.create(oct(mode), ORDINARY)
            os.chmod(self.source / oct(mode), mode)
        self.migrate()
        self.migrate("--force")
        for mode in (0o444, 0o600, 0o755):
            assert stat.S_IMODE((self.target / oct(mode)).stat().st_mode) == mode

    def test_batch_mode(self):
        self.create("a", b"LIST\n x\nTABLES TABLE=x\n")
        self.migrate("--layout=interactive", status=1)
        assert self.results()[b"a"] == b"LIST\n x\nTABLES TABLE=x.\n"
        assert self.report()["layout"] == "interactive"
        self.migrate("--batch")
        assert self.results()[b"a"].startswith(b"LIST\n x.\nCOMMENT")
        assert self.report()["layout"] == "batch"

    def test_a_dry_run_writes_the_report_alone(self):
        self.create_archive(10)
        run = self.migrate("--dry-run", status=1)
        assert b"12 files" in run.stderr
        assert b"quillet-report-dry-run.html" in run.stderr
        assert sorted(os.listdir(self.target)) == (
            [f"quillet-report-dry-run.{form}" for form in ("csv", "html", "json")])
        dry = self.report(name="quillet-report-dry-run.json")
        assert dry["dryRun"]
        self.migrate(status=1)
        assert {**timeless(self.report()), "dryRun": True} == timeless(dry)

    def test_a_dry_run_changes_nothing_that_stands(self):
        self.create_archive(10)
        self.migrate(status=1)
        self.create("new.syn", ORDINARY)
        self.change("stopped.syn", ORDINARY)
        (self.target / "a").mkdir(exist_ok=True)
        before = {name: (self.target / name).read_bytes() for name in os.listdir(self.target)
                  if (self.target / name).is_file()}
        self.migrate("--dry-run", "--accept-edited", status=1)
        after = {name: (self.target / name).read_bytes() for name in os.listdir(self.target)
                 if (self.target / name).is_file() and "dry-run" not in name}
        assert after == before
        dry = {file["path"]: file.get("result")
               for file in self.report(name="quillet-report-dry-run.json")["files"]}
        assert (dry["new.syn"], dry["stopped.syn"]) == ("new", "new")
        assert set(dry.values()) == {None, "new", "kept"}

    def test_patterns_that_match_nothing(self):
        self.create("a.syn", ORDINARY)
        self.create("b/c.txt", ORDINARY)
        for patterns, named in (
                (["*.sps"], b"--include *.sps"),
                (["*.syn", "x/*", "*.old"], b"--include x/*, --include *.old"),
                (["b"], b"--include b")):
            options = [option for pattern in patterns for option in ("--include", pattern)]
            run = self.migrate(*options, status=2)
            assert run.stderr == b"quillet-migrate: No file of SOURCE matches " + named + b"\n"
            assert not self.target.exists()
        # What is excluded is there nevertheless.
        self.migrate("--include", "*.syn", "--include", "*.txt", "--exclude", "b/*")
        assert self.report()["totals"]["files"] == 1


class TestKept(MigrateCase):
    """Results that stand already, and what the journal says about them."""

    def expect(self, path, result, status=0, *options, changed=False):
        # pylint: disable=keyword-arg-before-vararg  # options follow a status
        self.migrate(*options, status=status)
        facts = self.facts(path)
        assert (facts.get("result"), facts.get("sourceChanged", False)) == (result, changed)
        assert facts.get("kept", False) == (result in ("kept", "edited"))
        return facts

    def result(self, name="a"):
        return (self.target / name).read_bytes()

    def test_results_are_kept(self):
        self.create_archive(10)
        self.migrate(status=1)
        first = self.report()
        dates = {path: path.stat().st_mtime_ns for path in self.target.glob("*/*/*.syn")}
        for _ in range(2):
            run = self.migrate(status=1)
            assert b"11 of them kept" in run.stderr
            assert unkept(self.report()) == unkept(first)
            assert self.report()["totals"]["filesKept"] == 11
        assert dates == {path: path.stat().st_mtime_ns for path in dates}

    def test_what_is_recorded(self):
        self.create("a", TABLES + FAILING)
        self.migrate(status=1)
        [record] = self.records()["a"]
        assert (record["outcome"], record["options"], record["converted"], record["failed"]) == (
            ("partly", "layout=auto;encoding=windows-1252", 1, 1))
        assert re.search(r"^\d+\.\d+\.\d+$", record["version"])
        # Its commands stand in the report alone.
        place = record["commands"]
        report = (self.target / "quillet-report.json").read_bytes()
        commands = report[place["offset"]:place["offset"] + place["length"]]
        assert json.loads(commands) == self.facts("a")["commands"]

    def test_findings_are_recorded(self):
        self.create("a", b"* Old\n" + TABLES)
        self.migrate(status=1)
        first = self.report()
        [record] = self.records()["a"]
        assert (record["outcome"], record["found"], record["overlooked"], record["codes"]) == (
            ("overlooked", 1, 1, ["open-comment"]))
        place = record["findings"]
        report = (self.target / "quillet-report.json").read_bytes()
        findings = report[place["offset"]:place["offset"] + place["length"]]
        assert json.loads(findings) == self.facts("a")["findings"]
        for _ in range(2):
            self.migrate(status=1)
            assert self.facts("a")["result"] == "kept"
            assert unkept(self.report()) == unkept(first)
        # What is no longer what it was is found again.
        (self.target / "quillet-report.json").write_bytes(report.replace(b"open-comment", b"other"))
        self.migrate(status=1)
        assert self.facts("a")["result"] == "kept"
        assert unkept(self.report()) == unkept(first)

    def test_the_journal_does_not_grow(self):
        self.create_archive(20)
        self.migrate(status=1)
        journal = self.target / "quillet-report.journal"
        size = journal.stat().st_size
        assert size < 21 * 1000
        for _ in range(3):
            self.migrate(status=1)
            self.migrate("--force", status=1)
            assert abs(journal.stat().st_size - size) < 100

    def test_other_options_convert_again(self):
        # Two commands in one layout, one that fails in the other.
        self.create("a", b"TABLES /TABLE=sex BY region\nLIST x.\n")
        self.create("b", BINARY)
        interactive = "--layout=interactive"
        self.migrate("--copy-others", interactive, status=1)
        assert self.facts("a")["failed"] == 1
        self.expect("a", "new", 0, "--batch", "--copy-others")
        assert self.facts("a")["failed"] == 0
        assert self.facts("b")["result"] == "kept"
        self.expect("a", "kept", 0, "--batch")
        self.expect("a", "kept", 0, interactive, "--batch-include", "A")
        self.expect("a", "new", 1, interactive)
        self.expect("a", "kept", 1, interactive, "--batch-include", "other")
        self.expect("a", "new", 1, interactive, "--end-at-blank-lines")
        self.expect("a", "kept", 1, interactive, "--end-at-blank-lines")
        self.expect("a", "new", 1)

    def test_a_file_that_is_now_copied(self):
        self.create("a", TABLES)
        self.create("b", TABLES)
        self.migrate()
        made = self.result("b")
        self.expect("a", "new", 0, "--include", "b", "--copy-others")
        assert (self.result("a"), self.result("b")) == (TABLES, made)
        self.expect("a", "kept", 0, "--include", "b", "--copy-others")

    def test_another_code_page_converts_again(self):
        self.create("a", TABLES + b"LIST '\xf6'.\n")
        self.migrate()
        name = "de_DE.ISO-8859-1"
        made = subprocess.run(["localedef", "-i", "de_DE", "-f", "ISO-8859-1", self.folder / name],
                              check=False, capture_output=True)
        if not (self.folder / name).exists():
            pytest.skip("no locale can be made here: " + made.stderr.decode())
        environment = {
            "LC_ALL": name,
            # The C library itself never frees its copy of LOCPATH.
            "LOCPATH": os.fspath(self.folder),
            "ASAN_OPTIONS": "detect_leaks=0",
        }
        run = self.run_program(self.source, self.target, env=environment)
        assert run.returncode == 0, run.stderr
        assert self.facts("a")["result"] == "new"
        assert "8859" in self.records()["a"][0]["options"]

    def test_dates_mean_nothing(self):
        self.create("a", b"LIST old.\n")
        self.migrate()
        for seconds in (-1000, 0, 1000):
            text = b"LIST new%d.\n" % (seconds + 2000)
            self.change("a", text, seconds)
            self.expect("a", "new")
            assert self.result() == text
        os.utime(self.source / "a", (5000, 5000))
        os.utime(self.target / "a", (1000, 1000))
        assert self.expect("a", "kept")["modified"] == 5000

    def test_edited_results_stay(self):
        self.create("a", TABLES + FAILING)
        self.migrate(status=1)
        made = self.result()
        for text in (b"", made[:100], made + b"\n", b"edited by hand"):
            (self.target / "a").write_bytes(text)
            for _ in range(2):
                run = self.migrate(status=1)
                assert b"Left alone: 1 edited result\n" in run.stderr
                facts = self.facts("a")
                assert (facts["result"], facts["failed"], facts["converted"]) == (
                    ("edited", 1, 1))
                assert facts["message"] == "the result was edited"
                assert len(facts["commands"]) == 2
                assert self.result() == text
            self.expect("a", "edited", 1, "--batch")
            assert self.result() == text
        # Whoever undoes it has what was made.
        (self.target / "a").write_bytes(made)
        self.expect("a", "kept", 1)
        (self.target / "a").write_bytes(b"edited again")
        self.expect("a", "new", 1, "--force")
        assert self.result() == made

    def test_edited_copies_stay(self):
        self.create("a", BINARY)
        self.migrate("--copy-others")
        (self.target / "a").write_bytes(b"")
        self.expect("a", "edited", 0, "--copy-others")
        self.change("a", BINARY + b"x")
        self.expect("a", "edited", 1, "--copy-others", changed=True)
        assert self.result() == b""

    def test_an_edited_result_whose_source_changes(self):
        self.create("a", ORDINARY)
        self.migrate()
        (self.target / "a").write_bytes(b"edited")
        self.expect("a", "edited", 0)
        self.change("a", TABLES, -10)
        for _ in range(2):
            facts = self.expect("a", "edited", 1, changed=True)
            assert "its source has changed since" in facts["message"]
            assert facts["converted"] == 1
            assert self.result() == b"edited"
        run = self.migrate(status=1)
        assert b"1 edited result, 1 of them with a source that has changed since\n" in run.stderr
        assert self.report()["totals"]["filesOutdated"] == 1
        # By chance it may hold what is to be made now.
        other = self.folder / "other"
        self.migrate(target=other)
        shutil.copy(other / "a", self.target / "a")
        self.expect("a", "kept")

    def test_missing_results_are_made_again(self):
        self.create_archive(10)
        self.migrate(status=1)
        before = self.results()
        (self.target / "stopped.syn").unlink()
        shutil.rmtree(self.target / "a")
        self.migrate(status=1)
        assert self.results() == before
        assert self.facts("stopped.syn")["result"] == "new"
        assert self.report()["totals"]["filesKept"] > 0

    def test_edited_results_can_be_accepted(self):
        self.create("a", TABLES)
        self.create("b", TABLES)
        self.migrate()
        (self.target / "a").write_bytes(b"better")
        self.expect("a", "edited")
        self.expect("a", "kept", 0, "--accept-edited")
        self.expect("a", "kept")
        assert self.result() == b"better"
        assert self.facts("b")["result"] == "kept"
        # It was accepted for this source and these options.
        self.expect("a", "edited", 0, "--batch")
        self.change("a", ORDINARY)
        self.expect("a", "edited", 1, changed=True)
        self.expect("a", "edited", 1, changed=True)
        assert self.result() == b"better"
        self.expect("a", "kept", 0, "--accept-edited")
        (self.target / "a").write_bytes(b"still better")
        self.expect("a", "edited")
        self.expect("a", "new", 0, "--force")
        assert self.result() == ORDINARY
        self.expect("a", "kept")

    def test_results_without_a_record(self):
        self.create("a", TABLES)
        self.create("b", TABLES)
        self.create("c", BINARY)
        self.migrate("--copy-others")
        first = self.report()
        made = self.results()
        (self.target / "b").write_bytes(b"made elsewhere")
        (self.target / "quillet-report.journal").unlink()
        self.migrate("--copy-others")
        assert [file["result"] for file in self.report()["files"]] == ["kept", "edited", "kept"]
        assert self.result("b") == b"made elsewhere"
        assert sorted(self.records()) == ["a", "c"]
        (self.target / "b").write_bytes(made[b"b"])
        self.migrate("--copy-others")
        assert unkept(self.report()) == unkept(first)
        assert sorted(self.records()) == ["a", "b", "c"]

    def test_results_of_another_version(self):
        self.create("a", TABLES)
        self.migrate()
        journal = self.target / "quillet-report.journal"
        text = journal.read_bytes()
        # As every reader of a damaged journal does, this one converts again to compare.
        journal.write_bytes(text.replace(b'"version":"', b'"version":"9'))
        self.expect("a", "kept")
        assert journal.read_bytes().count(b'"version":"9') == 0

    def test_orphans(self):
        self.create("a/b", TABLES)
        self.create("a/c", FAILING)
        self.create("d", ORDINARY)
        self.migrate(status=1)
        shutil.rmtree(self.source / "a")
        for _ in range(2):
            run = self.migrate(status=0)
            assert b"Left alone: 2 results without a source\n" in run.stderr
            files = {file["path"]: file for file in self.report()["files"]}
            for name in ("a/b", "a/c"):
                assert (files[name]["outcome"], files[name]["result"]) == ("skipped", "orphaned")
                assert files[name]["commands"] == []
            assert self.report()["totals"]["filesOrphaned"] == 2
        assert (self.target / "a" / "b").exists()
        # What is left out by a pattern or cannot be seen is not gone.
        self.create("a/b", TABLES)
        self.migrate("--include", "d", status=0)
        assert self.report()["totals"]["filesOrphaned"] == 1
        (self.target / "a" / "c").unlink()
        self.migrate(status=0)
        assert self.report()["totals"]["filesOrphaned"] == 0
        assert self.facts("a/b")["result"] == "kept"
        assert sorted(self.records()) == ["a/b", "d"]

    def test_what_cannot_be_seen_is_not_orphaned(self):
        self.create("a/b", ORDINARY)
        self.create("c", ORDINARY)
        self.as_ordinary_user()
        self.migrate()
        os.chmod(self.source / "a", 0)
        self.migrate(status=2)
        assert self.report()["totals"]["filesOrphaned"] == 0
        os.chmod(self.source / "a", 0o755)
        self.migrate()
        assert self.report()["totals"]["filesKept"] == 2
        # Nor is anything gone because only one file was named.
        run = self.run_program(self.source / "c", self.target)
        assert run.returncode == 0
        assert self.report()["totals"]["filesOrphaned"] == 0

    def test_a_result_that_cannot_be_read_is_not_replaced(self):
        self.create("a", ORDINARY)
        self.as_ordinary_user()
        self.migrate()
        self.change("a", TABLES)
        os.chmod(self.target / "a", 0)
        run = self.migrate(status=2)
        assert b"a: its result cannot be read: Permission denied\n" in run.stderr
        os.chmod(self.target / "a", 0o644)
        assert self.result() == ORDINARY

    def test_facts_survive_a_run_over_a_part(self):
        self.create_archive(12)
        self.migrate(status=1)
        first = self.report()
        self.run_program("--include", "a/*", self.source, self.target)
        assert self.report()["totals"]["files"] < 13
        self.migrate(status=1)
        assert unkept(self.report()) == unkept(first)

    def test_an_edited_report_is_not_believed(self):
        self.create_archive(5)
        self.migrate(status=1)
        first = self.report()
        path = self.target / "quillet-report.json"
        text = path.read_bytes()
        for lie in (b"", b"nonsense", text.replace(b"TABLES /TABLE=sex", b"TABLES /TABLE=xes"),
                    text.replace(b'"failed":', b'"failed":1'), b" " + text):
            assert lie != text
            path.write_bytes(lie)
            self.migrate(status=1)
            assert unkept(self.report()) == unkept(first)
        path.unlink()
        self.migrate(status=1)
        assert unkept(self.report()) == unkept(first)

    def test_a_damaged_journal_does_no_harm(self):
        self.create_archive(5)
        self.migrate(status=1)
        first = self.report()
        before = self.results()
        journal = self.target / "quillet-report.journal"
        text = journal.read_bytes()
        generator = random.Random(1)
        for _ in range(20):
            damaged = bytearray(text)
            for _ in range(5):
                damaged[generator.randrange(len(damaged))] = generator.randrange(256)
            journal.write_bytes(damaged[:generator.randrange(len(damaged) + 1)])
            self.migrate(status=1)
            assert unkept(self.report()) == unkept(first)
        assert self.results() == before


class TestReport(MigrateCase):
    def test_generated_commands_stand_where_it_says(self):
        for path in (TOP / "tests" / "golden").glob("**/*.syn"):
            self.create(path.relative_to(TOP / "tests" / "golden"), path.read_bytes())
        self.migrate(status=1)
        found = 0
        for file in self.report()["files"]:
            if file["outcome"] == "skipped":
                continue
            lines = (self.target / file["path"]).read_bytes().decode(
                {"utf-8": "utf-8"}.get(file["encoding"], "cp1252"), errors="replace").split("\n")
            lines = [line.removesuffix("\r") for line in lines]
            for command in file["commands"]:
                if command["outcome"] == "converted":
                    generated = command["generated"].split("\n")
                    begin = command["generatedLine"] - 1
                    assert lines[begin:begin + len(generated)] == generated, file["path"]
                    found += 1
        assert found > 500

    def test_tells_about_files_and_commands(self):
        self.create("a b.syn", ORDINARY + TABLES + b"VAR LAB x '\xf6'.\n" + FAILING)
        self.create("c.syn", ORDINARY + UNREADABLE + TABLES)
        self.create("d.syn", "LIST 'ö'.\n".encode() + TABLES + b"LIST")
        self.migrate(status=1)
        report = self.report()
        assert (report["format"], report["formatVersion"], report["source"], report["target"]) == (
            ("quillet-report", 2, str(self.source.resolve()), str(self.target.resolve())))
        assert (report["layout"], report["dryRun"], report["interrupted"], report["shard"]) == (
            ("auto", False, False, None))
        assert report["totals"] == {
  "files": 3, "filesConverted": 1, "filesChanged": 0, "filesPartly": 1, "filesUnconverted": 0,
  "filesOverlooked": 0, "filesStopped": 1, "filesNothing": 0, "filesKept": 0,
  "filesEdited": 0, "filesOutdated": 0, "filesOrphaned": 0,
  "filesCopied": 0, "filesSkipped": 0, "filesFailed": 0, "linksNotFollowed": 0,
  "bytes": sum(path.stat().st_size for path in self.source.iterdir()),
  "commands": 9, "commandsCopied": 5, "commandsFound": 4, "commandsConverted": 2,
  "commandsFailed": 1, "commandsUnreadable": 0, "commandsOverlooked": 1, "commandsChecked": 0,
  "commandsMendedByHand": 0, "warnings": 0, "findingsChanged": 0, "findingsTold": 0}
        first, second, third = report["files"]
        assert (first["outcome"], first["encoding"], first["lines"]) == (
            ("partly", "windows-1252", 4))
        converted, failed = first["commands"]
        assert (converted["type"], converted["outcome"], converted["firstLine"]) == (
            ("TABLES", "converted", 2))
        assert converted["source"] == TABLES.decode().strip()
        result = (self.target / "a b.syn").read_text("windows-1252").split("\n")
        begin = converted["generatedLine"] - 1
        generated = converted["generated"].split("\n")
        assert result[begin:begin + len(generated)] == generated
        assert (failed["type"], failed["outcome"], failed["error"], failed["firstLine"]) == (
            ("IGRAPH", "failed", "igraph-syntax", 4))
        assert (second["outcome"], second["lines"], second["unreadable"], second["listed"]) == (
            ("stopped", 3, 0, 1))
        assert failed["hint"].startswith("compare the command with the manual")
        assert "hint" not in converted
        assert second["commands"][0]["error"] == "unclosed-literal"
        assert second["commands"][0]["hint"] == (
            "the literal `\"x.` in line 2 is not closed: probably a quotation mark is missing "
            "after `\"x`; one legacy command comes after it and was not read")
        [finding] = second["findings"]
        assert (finding["code"], finding["kind"], finding["command"]) == (
            ("after-stop", "overlooked", "TABLES"))
        assert (finding["firstLine"], finding["causeLine"], finding["macro"]) == (3, 2, None)
        assert finding["text"] == TABLES.decode().strip()
        assert (third["outcome"], third["encoding"], third["lines"], third["listed"]) == (
            ("converted", "utf-8", 3, 1))
        assert (third["encodingReason"], third["layout"], third["layoutReason"]) == (
            ("valid-utf-8", "interactive", "default"))

    def test_the_page_holds_the_same(self):
        self.create_archive(8)
        self.create("overlooked.syn", b"* </script><script>alert(1)\n" + TABLES)
        self.create("hostile.syn", b"IGRAPH /x='</script><script>alert(1)</script><!--'.\n")
        self.migrate(status=1)
        page = (self.target / "quillet-report.html").read_text("utf-8")
        elements = dict(re.findall(
            r'<script type="application/json" id="([^"]*)">(.*?)</script>', page, re.DOTALL))
        report = self.report()
        summary = json.loads(elements["report"])
        assert summary["totals"] == report["totals"]
        assert len(summary["files"]) == len(report["files"])
        for short, full in zip(summary["files"], report["files"]):
            chunk = short.pop("chunk", None)
            errors = short.pop("errors")
            codes = short.pop("codes")
            details = ({"findings": [], "commands": []} if chunk is None
                       else json.loads(elements[f"chunk-{chunk}"]))
            commands = details["commands"]
            assert {**short, **details} == full
            assert codes == collections.Counter(
                finding["code"] for finding in details["findings"])
            assert errors == collections.Counter(
                command["error"] for command in commands if "error" in command)

    def test_the_list_has_every_legacy_command_once(self):
        self.create_archive(8)
        self.create("=one, \"two\".syn", TABLES + b"DEFINE !f ()\n" + TABLES + b"!ENDDEFINE.\n"
                    b"* open\n\n" + TABLES)
        self.create("stopped.syn", TABLES + b"TABLES /TITLE 'x.\n")
        self.migrate("--layout=interactive", status=1)
        content = (self.target / "quillet-report.csv").read_bytes()
        assert content.startswith(b"\xef\xbb\xbfpath,command,outcome,")
        rows = list(csv.DictReader(io.StringIO(content.decode("utf-8-sig"), newline="")))
        report = self.report()
        for outcome in ("converted", "failed", "unreadable", "overlooked"):
            assert (sum(row["outcome"] == outcome for row in rows)
                    == report["totals"][f"commands{outcome.capitalize()}"]), outcome
        assert len(rows) == report["totals"]["commandsFound"] > 3
        mine = [row for row in rows if row["path"].endswith(".syn") and "two" in row["path"]]
        assert {row["path"] for row in mine} == {"'=one, \"two\".syn"}
        assert [(row["outcome"], row["reason"]) for row in mine] == [
            ("converted", ""), ("overlooked", "macro-body"), ("overlooked", "open-comment")]
        lines = [int(row["firstLine"]) for row in mine]
        assert lines == sorted(lines)
        assert [(row["command"], row["outcome"]) for row in rows
                if row["path"] == "stopped.syn"] == [
            ("TABLES", "converted"), ("TABLES", "unreadable")]
        hints = {row["hint"] for row in rows if row["outcome"] == "failed"}
        assert hints == {command["hint"] for file in report["files"] for command in file["commands"]
                         if command["outcome"] == "failed"} != set()
        assert {row["hint"] for row in rows if row["outcome"] == "converted"} == {""}

    def test_junit(self):
        self.create_archive(8)
        self.create("control.syn", b"IGRAPH '\x01\x02 & <b> \xff'.\n")
        self.create("macro.syn", b"DEFINE !f ().\n" + TABLES + b"!ENDDEFINE.\nLIST. /* < &\n")
        junit = self.folder / "junit.xml"
        self.migrate("--junit", junit, status=1)
        totals = self.report()["totals"]
        suites = xml.etree.ElementTree.parse(junit).getroot()
        assert suites.tag == "testsuites"
        assert [suite.get("name") for suite in suites] == (
            [file["path"] for file in self.report()["files"]])
        assert len(suites.findall("./testsuite/testcase/failure")) == (
            totals["commandsFailed"] + totals["commandsOverlooked"])
        # The conversion of one file ends at a command that is no legacy command.
        assert len(suites.findall("./testsuite/testcase/error")) == (
            totals["commandsUnreadable"] + 1)
        macro = suites.find("./testsuite[@name='macro.syn']")
        assert [failure.get("type") for failure in macro.findall(".//failure")] == ["macro-body"]
        assert "/* < &" in macro.find("system-out").text
        assert len(suites.findall("./testsuite/testcase/skipped")) == 1
        cases = suites.findall("./testsuite/testcase")
        assert int(suites.get("tests")) == len(cases)
        for suite in suites:
            for kind, tag in (("failures", "failure"), ("errors", "error"), ("skipped", "skipped")):
                assert int(suite.get(kind)) == len(suite.findall(f"testcase/{tag}"))
        assert "& <b>" in suites.find("./testsuite[@name='control.syn']//failure").text

    def test_strange_names(self):
        names = [b"it's.syn", b'a "b".syn', b"new\nline.syn", b"gr\xf6\xdfe/\xff\xfe.syn", b" ",
                 b"-x", b"--", b"\\", b"&<>.syn", b"\x1b[31m", "ö".encode(), b"%41", b"[x]", b"*",
                 b"n" * 255]
        for name in names:
            self.create(name, TABLES)
        junit = self.folder / "junit.xml"
        run = self.migrate("--junit", junit)
        assert b"\x1b" not in run.stderr
        results = {name for name, content in self.results().items() if content is not None}
        assert results == set(names)
        files = self.report()["files"]
        assert len(files) == len(names)
        assert [file.get("rawPath", file["path"]) for file in files] == [
            "gr%F6%DFe/%FF%FE.syn" if b"\xff" in name else name.decode()
            for name in sorted(names)]
        xml.etree.ElementTree.parse(junit)
        # And the names are found again.
        self.migrate()
        assert self.report()["totals"]["filesKept"] == len(names)

    def test_no_result_takes_the_place_of_the_report(self):
        self.create("quillet-report.json", ORDINARY)
        self.create("a/quillet-report.json", ORDINARY)
        self.create("a/.quillet-tmp-all-1-1", ORDINARY)
        self.migrate()
        assert self.report()["format"] == "quillet-report"
        assert self.facts("quillet-report.json")["outcome"] == "skipped"
        assert sorted(self.results()) == [b"a", b"a/quillet-report.json"]


def text_hash(text):
    """The hash of a command's text as sign-offs have it."""
    value = 0xcbf29ce484222325
    for byte in text.encode():
        value = (value ^ byte) * 0x100000001b3 % 2 ** 64
    return f"{value:016x}"


class TestSignOff(MigrateCase):
    FILE = "quillet-signoff.json"

    def sign(self, *signs, target=None):
        """Puts the file there that a page would hand over. Each of `signs` is a path, the text of a
        command, which of several equal ones, a state and a remark."""
        names = ("path", "hash", "number", "state", "remark")
        signs = [dict(zip(names, (path, text_hash(text), *rest))) for path, text, *rest in signs]
        text = json.dumps({"format": "quillet-signoff", "formatVersion": 1, "signOffs": signs})
        ((target or self.target) / self.FILE).write_text(text, encoding="utf-8")
        return text

    def test_shows_in_the_report(self):
        source = b"* old\n" + TABLES + FAILING + TABLES.replace(b"sex", b"gr\xf6\xdfe") + FAILING
        self.create("a/b.syn", source)
        self.migrate(status=1)
        assert "signOffs" not in self.facts("a/b.syn")
        failing = FAILING.decode().strip()
        overlooked = self.facts("a/b.syn")["findings"][0]["text"]
        converted = self.facts("a/b.syn")["commands"][1]["source"]
        assert "größe" in converted
        text = self.sign(("a/b.syn", failing, 2, "mended", "<b>ö"),
                         ("a/b.syn", overlooked, 1, "checked"),
                         ("a/b.syn", converted, 1, "checked", ""))
        for shift in (0, 3):
            self.create("a/b.syn", ORDINARY * shift + source)
            run = self.migrate(status=1)
            assert b"\nSigned off: 2 commands checked, 1 mended by hand\n" in run.stderr
            signs = self.facts("a/b.syn")["signOffs"]
            assert [(sign["firstLine"], sign["number"], sign["state"], sign["remark"])
                    for sign in signs] == [(2 + shift, 1, "checked", ""),
                                           (4 + shift, 1, "checked", ""),
                                           (5 + shift, 2, "mended", "<b>ö")]
            totals = self.report()["totals"]
            assert (totals["commandsChecked"], totals["commandsMendedByHand"]) == (2, 1)
            assert self.report()["otherSignOffs"] == []
        self.migrate("--dry-run", status=1)
        assert self.facts("a/b.syn")["signOffs"] == signs
        assert (self.target / self.FILE).read_text(encoding="utf-8") == text

    def test_goes_along_when_an_overlooked_command_is_converted(self):
        self.create("a.syn", b"* old\n  " + TABLES)
        self.create("b.syn", b"+" + TABLES)
        self.migrate("--layout=interactive", status=1)
        texts = {name: self.facts(name)["findings"][0]["text"] for name in ("a.syn", "b.syn")}
        assert texts["a.syn"] == texts["b.syn"] == TABLES.decode().strip()
        self.sign(*((name, text, 1, "checked", "r") for name, text in texts.items()))
        self.create("a.syn", b"* old.\n  " + TABLES)
        self.migrate("--batch-include=b.syn", "--layout=interactive")
        for name in texts:
            facts = self.facts(name)
            assert (facts["converted"], len(facts["signOffs"])) == (1, 1)
            assert not facts["commands"][0]["source"].startswith("TABLES")

    def test_one_of_two_copies_is_about_none_when_the_other_is_gone(self):
        self.create("a.syn", 2 * FAILING)
        self.migrate(status=1)
        self.sign(("a.syn", FAILING.decode().strip(), 1, "mended", "r"))
        path = self.target / self.FILE
        path.write_text(path.read_text().replace('"number": 1', '"number": 1, "copies": 2'))
        self.migrate(status=1)
        assert [(sign["number"], sign["copies"]) for sign in self.facts("a.syn")["signOffs"]] == [
            (1, 2)]
        # The one that was signed off is put right, and nobody has looked at the other.
        self.create("a.syn", FAILING.replace(b"NONSENSE", b"OTHER") + FAILING)
        self.migrate(status=1)
        assert "signOffs" not in self.facts("a.syn")
        assert [(other["number"], other["copies"]) for other in self.report()["otherSignOffs"]] == [
            (1, 2)]

    def test_one_of_a_command_that_is_no_more_is_told(self):
        self.create("a.syn", FAILING)
        self.create("gr\xf6\xdfe.syn".encode("latin-1"), FAILING)
        self.migrate(status=1)
        failing = FAILING.decode().strip()
        text = self.sign(("a.syn", failing, 1, "mended", "r"), ("a.syn", failing, 2, "checked"),
                         ("b.syn", failing, 1, "checked"))
        text = text.replace('"path": "b.syn"', '"path": "x", "rawPath": "gr%F6%DFe.syn"')
        (self.target / self.FILE).write_text(text)
        self.create("a.syn", FAILING.replace(b"NONSENSE", b"OTHER"))
        run = self.migrate(status=1)
        assert (b"\nSigned off: 1 command checked; 2 sign-offs about commands that are not there "
                b"any more, or were not looked at\n") in run.stderr
        others = self.report()["otherSignOffs"]
        assert [(other["path"], other["number"], other["state"], other["remark"])
                for other in others] == [("a.syn", 1, "mended", "r"), ("a.syn", 2, "checked", "")]
        assert [len(file.get("signOffs", ())) for file in self.report()["files"]] == [0, 1]
        assert (self.target / self.FILE).read_text() == text

    @pytest.mark.parametrize("text, problem", (
        ("", "it is no JSON object, or it is damaged"),
        ('{"format":"quillet-signoff","formatVersion":1,"signOffs":[{"path":', "damaged"),
        ('{"format":"quillet-signoff","formatVersion":2,"signOffs":[]}', "formatVersion"),
        ('{"format":"quillet-signoff","formatVersion":1,"signOffs":[{"path":"a"}]}',
         "signOffs[0] lacks its hash"),
        ("[" * 1000000, "damaged"),
    ), ids=row_name)
    def test_a_broken_file_ends_the_run(self, text, problem):
        self.create("a.syn", TABLES)
        self.migrate()
        (self.target / self.FILE).write_text(text)
        self.create("a.syn", TABLES + TABLES)
        before = {name: (self.target / name).read_bytes() for name in os.listdir(self.target)}
        for more in ((), ("--dry-run",), ("--force",)):
            run = self.migrate(*more, status=2)
            path = self.target.resolve() / self.FILE
            assert run.stderr.decode().startswith(
                f"quillet-migrate: The sign-offs in {path} cannot be read, so nothing was done: ")
            assert problem in run.stderr.decode()
            assert {name: (self.target / name).read_bytes()
                    for name in os.listdir(self.target)} == before
        (self.target / self.FILE).unlink()
        self.migrate()

    def test_no_link_is_followed(self):
        self.create("a.syn", TABLES)
        self.migrate()
        self.sign(target=self.folder)
        (self.target / self.FILE).symlink_to(self.folder / self.FILE)
        run = self.migrate(status=2)
        assert b"there is a link in its path, which is not followed" in run.stderr
        assert (self.target / self.FILE).is_symlink()

    def test_no_result_takes_its_place(self):
        self.create(self.FILE, b"{}")
        self.create("a.syn", TABLES)
        self.create(f"a/{self.FILE}", b"{}")
        self.migrate()
        text = self.sign()
        self.migrate("--copy-others", "--force")
        assert (self.target / self.FILE).read_text() == text
        assert self.facts(self.FILE)["outcome"] == "skipped"
        assert (self.target / "a" / self.FILE).read_bytes() == b"{}"

    def test_slices_and_what_is_merged(self):
        for number in range(8):
            self.create(f"{number}.syn", FAILING)
        failing = FAILING.decode().strip()
        self.migrate(status=1)
        self.sign(*((f"{number}.syn", failing, 1, "checked") for number in range(8)))
        slices = [self.target / f"quillet-report-{number}-of-2.json" for number in (1, 2)]
        signed = 0
        for number, report in enumerate(slices, 1):
            self.run_program("--shard", f"{number}/2", self.source, self.target)
            slice_report = self.report(name=report.name)
            signed += slice_report["totals"]["commandsChecked"]
            assert (slice_report["totals"]["commandsChecked"] +
                    len(slice_report["otherSignOffs"])) == 8
        assert signed == 8
        for target, expected in ((self.target, 8), (self.folder / "merged", 0)):
            run = self.run_program("--merge-reports", *slices, target)
            assert run.returncode == 1, run.stderr
            assert self.report(target)["totals"]["commandsChecked"] == expected


class TestParts(MigrateCase):
    # A command of a few KB that fails.
    LARGE = b"IGRAPH /NONSENSE\n" + b"".join(
        b"  word%d 'a literal of some length' 12 13 14\n" % number
        for number in range(80)) + b" .\n"

    def pages(self, start="quillet-report"):
        """The data of the page of this name and of its parts, by their names."""
        pages = {}
        for path in self.target.iterdir():
            is_part = path.name.startswith(f"{start}-part-") and not path.is_symlink()
            if not is_part and path.name != f"{start}.html":
                continue
            text = path.read_text("utf-8")
            elements = dict(re.findall(
                r'<script type="application/json" id="([^"]*)">(.*?)</script>', text, re.DOTALL))
            if elements:
                pages[path.name] = {name: json.loads(data) for name, data in elements.items()}
        return pages

    @staticmethod
    def part(folder, start="quillet-report"):
        shown = re.sub("[^A-Za-z0-9]", "-", folder) + "-" * bool(folder)
        return f"{start}-part-{shown}{text_hash(folder)}.html"

    def test_small_folders_share_parts(self):
        # One letter of the text becomes six on the page, so that it is twice as large there.
        large = self.LARGE.replace(b"literal", b"<<<<<< literal")
        many = 500_000 // len(large)
        for number in range(30):
            self.create(f"s/{number:02}/x.syn", large * many)
        self.create("top.syn", TABLES)
        self.migrate(status=1)
        pages = self.pages()
        index = pages.pop("quillet-report.html")["report"]
        assert len(pages) == len(index["parts"]) == 3
        assert [part["name"] for part in index["parts"]][2] == self.part("")
        folders = [part["folder"] for part in index["parts"]]
        first, second = (re.fullmatch(r"s/(\d\d) to s/(\d\d)", folder) for folder in folders[:2])
        assert (first[1], int(first[2]) + 1, second[2]) == ("00", int(second[1]), "29")
        for name, page in pages.items():
            assert (self.target / name).stat().st_size < 20_000_000
            assert page["report"]["folder"] in folders
        assert (self.target / index["parts"][0]["name"]).stat().st_size > 18_000_000

    def test_a_large_page_has_parts(self):
        many = 20_000_000 // len(self.LARGE) * 3 // 5
        self.create("a/x.syn", self.LARGE * many)
        self.create("b c/d/y.syn", self.LARGE * many)
        self.create("b c/z.syn", FAILING + TABLES)
        self.create("top.syn", TABLES)
        (self.target / "sub").mkdir(parents=True)
        mine = self.target / "quillet-report-part-mine.html"
        mine.write_text("<p>Mine.</p>")
        self.migrate(status=1)
        pages = self.pages()
        parts = {self.part(folder): folder for folder in ("a", "b c", "")}
        assert set(pages) == {"quillet-report.html", *parts}
        assert (self.target / "quillet-report.html").stat().st_size < 1_000_000
        index = pages["quillet-report.html"]
        assert set(index) == {"report"}
        assert {part["name"]: part["folder"] for part in index["report"]["parts"]} == parts
        report = self.report()
        assert index["report"]["totals"] == report["totals"]
        assert [file["path"] for file in index["report"]["files"]] == [
            file["path"] for file in report["files"]]
        shown = {}
        for name in parts:
            assert (self.target / name).stat().st_size < 20_000_000
            data = pages[name]
            assert data["report"]["index"] == "quillet-report.html"
            for file in data["report"]["files"]:
                details = data.get(f"chunk-{file.get('chunk')}", {"findings": [], "commands": []})
                shown[file["path"]] = (name, details["commands"], details["findings"])
        for short, full in zip(index["report"]["files"], report["files"]):
            name = index["report"]["parts"][short["part"]]["name"]
            assert shown[full["path"]] == (name, full["commands"], full["findings"])
            assert (short["outcome"], short["found"]) == (full["outcome"], full["found"])

        # A dry run has parts of its own, and the same names come again.
        self.migrate("--dry-run", status=1)
        assert set(self.pages("quillet-report-dry-run")) == {"quillet-report-dry-run.html", *(
            self.part(folder, "quillet-report-dry-run") for folder in parts.values())}
        assert set(self.pages()) == {"quillet-report.html", *parts}
        # Parts of folders that are no more go, and nothing else.
        (self.target / self.part("gone")).write_bytes((self.target / self.part("a")).read_bytes())
        (self.target / "sub" / self.part("a")).write_bytes(b"")
        (self.target / "quillet-report-part-linked.html").symlink_to(self.part("a"))
        self.migrate(status=1)
        assert not (self.target / self.part("gone")).exists()
        (self.source / "a" / "x.syn").unlink()
        (self.target / "a" / "x.syn").unlink()
        self.migrate(status=1)
        assert list(self.pages()) == ["quillet-report.html"]
        assert sorted(path.name for path in self.target.glob("quillet-report-part-*")) == [
            "quillet-report-part-linked.html", "quillet-report-part-mine.html"]
        assert "parts" not in self.pages()["quillet-report.html"]["report"]
        assert len(self.pages("quillet-report-dry-run")) == 4
        assert (self.target / "sub" / self.part("a")).exists()
        assert mine.read_text() == "<p>Mine.</p>"
        self.expect_no_left_overs()


class TestSinceLastRun(MigrateCase):
    def changes(self, name=None):
        """The numbers, and the lists of the files."""
        report = self.report(name=name)
        since = report["sinceLastRun"]
        numbers = {name: since[name] for name in ("mended", "new", "stillFailing", "gone")}
        return numbers, {file["path"]: file["changes"] for file in report["files"]
                         if "changes" in file}

    def test_what_was_mended_and_what_was_not(self):
        self.create("a.syn", FAILING + TABLES + FAILING.replace(b"NON", b"NO") + TABLES)
        self.create("b.syn", b"* old\n" + TABLES)
        self.create("c.syn", FAILING)
        self.create("d/gone.syn", FAILING + FAILING)
        self.create("e.syn", TABLES)
        self.migrate(status=1)
        first = self.report()
        assert first["sinceLastRun"] is None
        self.migrate(status=1)
        assert self.report()["sinceLastRun"]["started"] == first["started"]
        assert self.changes() == ({"mended": 0, "new": 0, "stillFailing": 6, "gone": 0}, {})
        # Mended with another text, with the same text, and not at all.
        self.create("a.syn", ORDINARY + FAILING + TABLES + b"IGRAPH /X1=VAR(a) TYPE=SCALE "
                    b"/Y=VAR(b) TYPE=SCALE /SCATTER COINCIDENT=NONE.\n" + TABLES)
        self.create("b.syn", b"* old.\n" + TABLES)
        (self.source / "d" / "gone.syn").unlink()
        (self.target / "d" / "gone.syn").unlink()
        self.create("e.syn", TABLES + FAILING)
        expected = ({"mended": 2, "new": 1, "stillFailing": 2, "gone": 2},
                    {"a.syn": {"mended": [4]}, "b.syn": {"mended": [2]}, "e.syn": {"new": [2]}})
        self.migrate("--dry-run", status=1)
        assert self.changes() == expected
        run = self.migrate(status=1)
        assert self.changes() == expected
        assert (b"\nSince the last run: 2 mended, 1 newly not converted, 2 gone, 2 still not "
                b"converted\n") in run.stderr
        self.migrate(status=1)
        assert self.changes() == ({"mended": 0, "new": 0, "stillFailing": 3, "gone": 0}, {})

    def test_the_sums_hold(self):
        generator = random.Random(7)
        pieces = [FAILING.replace(b"NONSENSE", name) for name in (b"A", b"B", b"C")] + [
            TABLES, ORDINARY, b"* x\n" + TABLES, TABLES.replace(b"sex", b"age")]
        failing = 0
        for turn in range(6):
            for number in range(12):
                if turn and generator.random() < 0.4:
                    continue
                self.create(f"{number % 3}/{number}.syn",
                            b"".join(generator.choices(pieces, k=generator.randrange(9))))
            run = self.run_program(self.source, self.target)
            assert run.returncode in (0, 1), run.stderr
            self.report_name = "quillet-report.json"
            totals = self.report()["totals"]
            now = (totals["commandsFailed"] + totals["commandsUnreadable"]
                   + totals["commandsOverlooked"])
            if turn:
                numbers, files = self.changes()
                assert numbers["new"] + numbers["stillFailing"] == now
                assert numbers["mended"] + numbers["stillFailing"] + numbers["gone"] == failing
                for name in ("mended", "new", "gone"):
                    assert numbers[name] == sum(len(file.get(name, ())) for file in files.values())
            failing = now

    def test_a_source_that_is_gone(self):
        self.create("a.syn", FAILING)
        self.create("b.syn", TABLES)
        self.migrate(status=1)
        (self.source / "a.syn").unlink()
        self.migrate()
        assert self.facts("a.syn")["result"] == "orphaned"
        assert self.changes() == ({"mended": 0, "new": 0, "stillFailing": 0, "gone": 1},
                                  {"a.syn": {"gone": [1]}})

    def test_what_could_not_be_read_is_not_compared(self):
        unreadable = b"\xFF\xFE\0\0T\0\0\0"
        self.create("a.syn", unreadable)
        self.create("b.syn", FAILING)
        os.symlink("/dev/null", self.source / "c.syn")
        self.migrate(status=2)
        self.change("a.syn", FAILING)
        (self.source / "c.syn").unlink()
        self.create("c.syn", FAILING)
        self.migrate(status=1)
        assert self.changes() == ({"mended": 0, "new": 0, "stillFailing": 1, "gone": 0}, {})
        self.change("a.syn", unreadable)
        self.migrate(status=2)
        assert self.changes() == ({"mended": 0, "new": 0, "stillFailing": 2, "gone": 0}, {})

    def test_slices_compare_with_themselves(self):
        for number in range(8):
            self.create(f"{number}.syn", FAILING)
        names = [f"quillet-report-{number}-of-2.json" for number in (1, 2)]
        for turn in range(2):
            for number, name in enumerate(names, 1):
                self.run_program("--shard", f"{number}/2", self.source, self.target)
                assert (self.report(name=name)["sinceLastRun"] is None) == (turn == 0)
            self.run_program("--merge-reports", *(self.target / name for name in names),
                             self.target)
            assert (self.report()["sinceLastRun"] is None) == (turn == 0)
            self.change("1.syn", TABLES)
        # The reports that were joined last knew nothing of that.
        for number in (1, 2):
            self.run_program("--shard", f"{number}/2", self.source, self.target)
        self.run_program("--merge-reports", *(self.target / name for name in names), self.target)
        assert self.changes()[0]["stillFailing"] == 7

    def test_a_damaged_report_is_none(self):
        self.create("a.syn", FAILING)
        self.migrate(status=1)
        path = self.target / "quillet-report.json"
        path.write_bytes(path.read_bytes()[:-10])
        self.migrate(status=1)
        assert self.report()["sinceLastRun"] is None
        path.unlink()
        path.symlink_to("/dev/null")
        self.migrate(status=1)
        assert self.report()["sinceLastRun"] is None


# A file for each code: its text, the outcome, the exit status, the findings by code, first line and
# line of the cause, and options of the run.
CODES = {
    "after-stop": (TABLES + UNREADABLE + TABLES, "stopped", 1, [("after-stop", 3, 2)]),
    "data-lines": (b"BEGIN DATA.\n1 2\n END DATA.\n" + TABLES, "overlooked", 1,
                   [("data-lines", 4, 1)]),
    "macro-body": (b"DEFINE !f (x=!TOKENS(1))\n" + TABLES + b"!ENDDEFINE.\n!f x=a.\n", "overlooked",
                   1, [("macro-body", 2, 1)]),
    "layout": (b"GET FILE=X\nTABLES TABLE=A\n  /STATISTICS=COUNT\nFINISH\n", "overlooked", 1,
               [("layout", 2, 1)], "--layout=interactive"),
    "layout of batch jobs": (b"GET FILE='x'.\n LIST a.\n TABLES /TABLE=a\n /SORT=a.\n LIST.\n",
                             "overlooked", 1, [("layout", 3, 1)], "--layout=batch"),
    "open-comment": (b"* Income\n" + TABLES, "overlooked", 1, [("open-comment", 2, 1)]),
    "comment-behind": (b"EXECUTE. /* old */\n" + TABLES, "overlooked", 1,
                       [("comment-behind", 2, 1)]),
    "block-comment-before": (b"/* next */\n" + TABLES, "overlooked", 1,
                             [("block-comment-before", 2, 1)]),
    "sign-before": (b"LIST.\n+ TABLES /TABLE=a.\nLIST.\n", "overlooked", 1,
                    [("sign-before", 2, 2)]),
    "same-line": (b"EXECUTE. " + TABLES, "overlooked", 1, [("same-line", 1, 1)]),
    "open-command": (b"GET FILE='x'\n\n" + TABLES, "overlooked", 1, [("open-command", 3, 1)]),
    "command-lost": (b"TABLES /TABLE=a BY b. /* foo */\n\nGET FILE=x.\n", "changed", 0,
                     [("command-lost", 3, 1)]),
    "swallowed": (TABLES + b"* Note\n\nSORT CASES BY a.\n", "changed", 0, [("swallowed", 4, 2)]),
    "comment-dropped": (TABLES + b"LIST. /* all\n", "changed", 0, [("comment-dropped", 2, 2)]),
    "encoding-doubtful": ("* Encoding: nonsense.\n* Przegl\u0105d \u017c\u00f3\u0142\u0107.\n"
                          .encode("cp1250") + TABLES, "changed", 0, [("encoding-doubtful", 1, 1)]),
    "macro-expanded": (b"DEFINE !f (x=!TOKENS(1))\n" + TABLES + b"!ENDDEFINE.\n!f x=a.\n",
                       "converted", 0, [("macro-expanded", 2, 1)], "--macros=expand"),
    "macro-fault": (TABLES + b"DEFINE !f (!POSITIONAL !ENCLOSE('(',')'))\nLIST.\n!ENDDEFINE.\n"
                    b"!f a.\n", "converted", 0, [("macro-fault", 5, 5)]),
    "layout-unclear": (b"mytext.\nyours.\nTABLES /TABLE=a\n/STATISTICS=COUNT.\n", "converted", 0,
                       [("layout-unclear", 3, 3)]),
    "old-line-ends": (b"LIST.\r" + TABLES.replace(b"\n", b"\r"), "converted", 0,
                      [("old-line-ends", 1, 1)]),
    "wide-text": (("\ufeff" + TABLES.decode()).encode("utf-16le"), "converted", 0,
                  [("wide-text", 1, 1)]),
    "include": (TABLES + b"INSERT FILE='nowhere.sps'.\n", "converted", 0, [("include", 2, 2)]),
    "unconverted": (FAILING, "unconverted", 1, []),
    "partly": (FAILING + TABLES, "partly", 1, []),
    "converted": (ORDINARY + TABLES, "converted", 0, []),
    "nothing": (b"CROSSTABS\n  TABLES=a BY b.\n", "nothing-to-convert", 0, []),
    "data": (b"BEGIN DATA.\n" + TABLES + b"END DATA.\n", "nothing-to-convert", 0, []),
    "document": (b"DOCUMENT The\n" + TABLES[:-2] + b"\nare old.\n", "nothing-to-convert", 0, []),
}

# What such a file holds: how many legacy commands, and of these overlooked ones.
PIECES = (
    (TABLES, 1, 0), (FAILING, 1, 0), (ORDINARY, 0, 0), (b"* Old\n" + TABLES, 1, 1),
    (b"LIST. " + TABLES, 1, 1), (b"DEFINE !f ()\n" + TABLES + b"!ENDDEFINE.\n", 1, 1),
    (b"CROSSTABS\nTABLES=a BY b.\n", 0, 0), (b"FREQUENCIES tables tab1.\n", 0, 0),
    (b"TITLE 'Old. TABLES /TABLE=a'.\n", 0, 0), (b"* Old: TABLES /TABLE=a.\n", 0, 0),
    (b"BEGIN DATA.\n" + TABLES + b"END DATA.\n", 0, 0), (b"/* x */\nIGRAPH /PIE.\n", 1, 1),
    (b"TABLES /TABLE=a BY b. /* x */\n\nGET FILE=x.\n", 1, 0),
)


TAB = b"DEFINE !tab (x=!TOKENS(1))\nTABLES /TABLE=!x BY sex.\nLIST !x.\n!ENDDEFINE.\n"


class TestMacros(MigrateCase):
    """What the calls of macros give, in the report and in the results."""

    def setup_method(self):
        super().setup_method()
        self.wants_all = False

    def result(self, name):
        return (self.target / name).read_bytes()

    def calls(self, path):
        return [(macro["name"], macro["file"], call["firstLine"], call["outcome"])
                for macro in self.facts(path)["macros"] for call in macro["calls"]]

    def test_the_report_alone_tells_what_calls_give(self):
        self.create("a", TAB + b"!tab x=q1.\n!tab x=(.\n!tab x=).\n" + TABLES)
        self.create("plain", TABLES)
        run = self.migrate(status=1)
        assert b"1 macro with legacy commands, 3 calls: 1 can be converted, 2 cannot" in run.stderr
        facts = self.facts("a")
        assert self.calls("a") == [("!tab", None, 5, "converted"), ("!tab", None, 6, "failed"),
                                   ("!tab", None, 7, "failed")]
        [macro] = facts["macros"]
        assert macro["legacyCommands"] == [{"type": "TABLES", "firstLine": 2, "lastLine": 2}]
        [command] = macro["calls"][0]["commands"]
        assert command["source"] == "TABLES /TABLE=q1 BY sex."
        assert command["generated"].startswith("CTABLES\n")
        assert (command["macro"], command["firstLine"], command["generatedLine"]) == ("!tab", 5, 0)
        [command] = macro["calls"][1]["commands"]
        assert (command["error"], command["errorLine"]) == ("subcommand-syntax", 6)
        assert command["hint"]
        # The result is that without macros.
        assert (facts["found"], facts["converted"], facts["overlooked"]) == (2, 1, 1)
        source = self.folder / "single"
        subprocess.run([SINGLE_PROGRAM, self.source / "a", source], check=True,
                       stdout=subprocess.DEVNULL)
        assert self.result("a") == source.read_bytes()
        assert "macros" not in self.facts("plain")
        assert self.report()["totals"]["macroCalls"] == 3

    def test_expanded_calls_stand_in_the_result(self):
        self.create("a", b"LIST a. /* b */\n" + TAB + b"!tab x=q1.\nLIST z.\n!TAB x=(.\n")
        self.migrate("--macros=expand", status=1)
        result = self.result("a")
        assert result.startswith(b"LIST a. /* b */.\n" + TAB + b" *!tab x=q1.\n"
                                 b"COMMENT -- Expansion of the macro !tab, called in line 6.\n"
                                 b"COMMENT -- Begin commenting out TABLES command")
        assert b"COMMENT -- End CTABLES command.\nLIST q1.\nLIST z.\n *!TAB x=(.\n" in result
        assert b"syntax file. Line 8, column 1.\n" in result
        facts = self.facts("a")
        assert facts["outcome"] == "partly"
        assert [facts[name] for name in ("found", "converted", "failed", "overlooked",
                                         "fromMacros")] == [2, 1, 1, 0, 2]
        assert [(command["macro"], command["firstLine"]) for command in facts["commands"]] == [
            ("!tab", 6), ("!tab", 8)]
        line = facts["commands"][0]["generatedLine"]
        assert result.split(b"\n")[line - 1] == b"CTABLES"

    def test_a_second_run_keeps_what_it_finds(self):
        self.create("a", TAB + b"!tab x=q1.\n")
        for mode in ("report", "expand"):
            self.migrate(f"--macros={mode}", status=int(mode == "report"))
            first = self.facts("a")
            assert first["result"] == "new"
            self.migrate(f"--macros={mode}", status=int(mode == "report"))
            second = self.facts("a")
            assert second["result"] == "kept"
            assert second["macros"] == first["macros"]
            assert second["commands"] == first["commands"]

    def test_included_files_are_found_as_people_name_them(self):
        self.create("lib/Tab.SPS", TAB)
        self.create("a/b/one", b"INCLUDE 'C:\\old\\LIB\\tab.sps'.\n!tab x=q1.\n")
        self.create("a/two", b"INSERT FILE='../lib/Tab.SPS'.\n!tab x=q1.\n")
        self.create("a/three", b"INCLUDE 'gone.sps'.\n!tab x=q1.\n")
        self.create("a/four", b"!tab x=q1.\n")
        self.migrate("--macros=expand")
        for name in ("a/b/one", "a/two"):
            assert self.calls(name) == [("!tab", "lib/Tab.SPS", 2, "converted")]
            assert self.facts(name)["outcome"] == "converted"
            assert b"called in line 2" in self.result(name)
        for name in ("a/three", "a/four"):
            assert self.facts(name)["outcome"] == "nothing-to-convert"
            assert "macros" not in self.facts(name)
        [finding] = self.facts("a/three")["findings"]
        assert finding["sentence"] == ("Line 1 runs the file gone.sps, which is not in the source "
                                       "folder.")
        library = self.facts("lib/Tab.SPS")
        assert (library["found"], library["macros"][0]["callsElsewhere"]) == (0, 2)
        # It is still of use for what includes it.
        assert (library["outcome"], self.result("lib/Tab.SPS")) == ("converted", TAB)

    def test_calls_of_other_files_decide_about_a_body(self):
        self.create("lib", TAB + TABLES)
        self.create("a", b"INCLUDE 'lib'.\n!tab x=q1.\n")
        self.migrate("--macros=expand")
        [finding] = self.facts("lib")["findings"]
        assert finding["sentence"] == ("TABLES in line 2 is in the macro !tab of line 1, which "
                                       "other files call; all calls were expanded.")
        self.migrate("--macros=expand")
        assert self.facts("lib")["result"] == "kept"
        # A call that becomes no syntax is left, and so the body is not dealt with.
        self.create("b", b"INCLUDE 'lib'.\n!tab x=' .\n")
        self.migrate("--macros=expand", status=1)
        assert [self.facts(name)["result"] for name in ("a", "lib")] == ["kept", "new"]
        [finding] = self.facts("lib")["findings"]
        assert finding["sentence"] == ("TABLES in line 2 is in the macro !tab of line 1, which "
                                       "other files call; 1 of 2 calls could not be expanded.")
        assert self.facts("lib")["overlooked"] == 1

    def test_a_changed_include_makes_a_result_stale(self):
        self.create("lib/tab", TAB)
        self.create("a", b"INCLUDE 'lib/tab'.\n!tab x=q1.\n")
        self.create("b", TABLES)
        self.migrate("--macros=expand")
        assert b"TABLES /TABLE=q1 BY sex" in self.result("a")
        self.create("lib/tab", TAB.replace(b"sex", b"age"))
        self.migrate("--macros=expand")
        assert b"TABLES /TABLE=q1 BY age" in self.result("a")
        assert (self.facts("a")["result"], self.facts("b")["result"]) == ("new", "kept")
        # One that was not there is there now, and hides the other one.
        self.create("lib/lib/tab", TAB)
        self.create("other/lib/tab", TAB)
        self.migrate("--macros=expand", status=1)
        assert self.facts("a")["result"] == "kept"
        os.remove(self.source / "lib/tab")
        self.migrate("--macros=expand", status=1)
        assert self.facts("a")["outcome"] == "nothing-to-convert"

    def test_what_is_told_is_not_kept_when_an_include_has_changed(self):
        self.create("lib/tab", TAB)
        self.create("a", b"INCLUDE 'lib/tab'.\n!tab x=q1.\n" + TABLES)
        self.migrate(status=1)
        assert self.calls("a") == [("!tab", "lib/tab", 2, "converted")]
        self.create("lib/tab", TAB.replace(b"sex", b"("))
        self.migrate(status=1)
        assert self.calls("a") == [("!tab", "lib/tab", 2, "failed")]

    def test_includes_are_read_in_their_own_encodings(self):
        self.create("lib", TAB.replace(b"!x BY", "!x BY l\u00e4nder +".encode("latin-1")))
        self.create("utf16", ("\ufeff" + TAB.decode().replace("tab", "wide")).encode("utf-16le"))
        self.create("a", "INCLUDE 'lib'.\nINCLUDE 'utf16'.\n* \u2192.\n!tab x=q1.\n!wide x=q2.\n"
                    .encode())
        self.migrate("--macros=expand")
        assert "TABLES /TABLE=q1 BY l\u00e4nder + sex".encode() in self.result("a")
        assert b"TABLES /TABLE=q2 BY sex" in self.result("a")

    def test_slices_say_the_same_as_the_whole(self):
        self.create("lib/tab", TAB)
        for number in range(12):
            self.create(f"{number:02}", b"INCLUDE 'lib/tab'.\n!tab x=q1.\n" + TABLES)
        self.migrate("--macros=expand")
        whole = {file["path"]: file.get("macros") for file in self.report()["files"]}
        results = self.results()
        other = self.folder / "slices"
        for index in (1, 2):
            run = self.run_program("--macros=expand", f"--shard={index}/2", self.source, other)
            assert run.returncode == 0
        merged = self.run_program("--merge-reports", other / "quillet-report-1-of-2.json",
                                  other / "quillet-report-2-of-2.json", other)
        assert merged.returncode == 0
        assert {file["path"]: file.get("macros")
                for file in self.report(other, "quillet-report.json")["files"]} == whole
        assert self.results(other) == results

    @pytest.mark.parametrize("mode", ["convert", "Expand"])
    def test_other_modes_are_refused(self, mode):
        run = self.migrate(f"--macros={mode}", status=2)
        assert b"report or expand is expected" in run.stderr

    def test_a_single_file_includes_what_lies_beside_it(self):
        self.create("lib/tab", TAB)
        self.create("a", b"INCLUDE 'lib\\tab'.\nINCLUDE '../x'.\n!tab x=q1.\n")
        run = self.run_program("--macros=expand", self.source / "a", self.target)
        assert run.returncode == 0
        self.report_name = "quillet-report.json"
        assert self.calls("a") == [("!tab", "lib/tab", 3, "converted")]


class TestFindings(MigrateCase):
    """What is told besides the commands that were converted or failed."""

    def setup_method(self):
        super().setup_method()
        self.wants_all = False

    @pytest.mark.parametrize("name", CODES)
    def test_each_has_its_outcome_and_status(self, name):
        text, outcome, status, findings, *options = CODES[name]
        self.create("a", text)
        self.migrate(*options, status=status)
        facts = self.facts("a")
        assert facts["outcome"] == outcome
        assert [(finding["code"], finding["firstLine"], finding["causeLine"])
                for finding in facts["findings"]] == findings
        for finding in facts["findings"]:
            assert finding["sentence"].endswith(".") or finding["code"] == "comment-dropped"
            assert (finding["kind"] == "overlooked") <= (finding["command"] == "TABLES")
        assert self.report()["totals"]["commandsFound"] == facts["found"]
        assert (self.target / "a").exists() == (outcome != "nothing-to-convert")

    def test_every_code_is_here(self):
        rows = (TOP / "ctables/quillet/quillet-findings.def").read_text(encoding="utf-8")
        known = re.findall(r'^QUILLET_FINDING\(k\w+, "([a-z0-9-]+)"', rows, re.MULTILINE)
        assert len(known) > 10
        assert {code for _, _, _, findings, *_ in CODES.values()
                for code, _, _ in findings} == {*known}

    def test_every_legacy_command_comes_to_something(self):
        generator = random.Random(13)
        planted = {}
        for number in range(400):
            pieces = generator.choices(PIECES, k=generator.randrange(12))
            # So much of interactive layout that no file looks like batch layout.
            self.create(f"{number:03}", 30 * ORDINARY + b"".join(text for text, _, _ in pieces))
            planted[f"{number:03}"] = (sum(found for _, found, _ in pieces),
                                       sum(overlooked for _, _, overlooked in pieces))
        self.migrate(status=1)
        found = {}
        for file in self.report()["files"]:
            found[file["path"]] = (file["found"], file["overlooked"])
            assert file["found"] == (file["converted"] + file["failed"] + file["unreadable"] +
                                     file["overlooked"])
            kinds = [finding["kind"] for finding in file["findings"]]
            assert kinds.count("overlooked") == file["overlooked"]
        assert found == planted

    def test_files_with_nothing_to_convert_are_left_out(self):
        texts = {"data.csv": b'a,b\n\n"c,d\n', "script.sh": b"echo x\n\n",
                 "old/list.sps": b"LIST x\n\n y.\nLIST", ".git/HEAD": b"ref: refs/heads/main"}
        for name, text in texts.items():
            self.create(name, text)
        self.create("tables.sps", TABLES)
        run = self.migrate()
        assert b"5 files in" in run.stderr
        assert b": 1 converted, 4 with nothing to convert\n" in run.stderr
        assert {name for name, content in self.results().items() if content} == {b"tables.sps"}
        for options in (("--copy-others",), ("--include", "*"),
                        ("--include", "*.sps", "--copy-others")):
            target = self.folder / f"target {options}"
            self.migrate(*options, target=target)
            results = self.results(target)
            for name, text in texts.items():
                assert results[name.encode()] == text
            assert results[b"tables.sps"] != TABLES
            self.migrate(*options, target=target)
            assert self.report(target)["totals"]["filesKept"] == 5

    def test_what_stands_of_a_file_that_has_nothing_left_to_convert(self):
        self.create("a", TABLES)
        self.migrate()
        made = (self.target / "a").read_bytes()
        self.change("a", ORDINARY)
        self.migrate()
        facts = self.facts("a")
        assert (facts["outcome"], facts.get("result")) == ("nothing-to-convert", None)
        assert "left alone" in facts["message"]
        assert (self.target / "a").read_bytes() == made
        self.migrate("--copy-others")
        assert (self.target / "a").read_bytes() == ORDINARY

    def test_the_layout_of_each_file_is_found_out(self):
        commands = [["GET", " FILE=X"], ["TABLES", " TABLE=A", " /STATISTICS=COUNT"],
                    ["COMPUTE", " Y = 1"], ["FREQUENCIES", " VARIABLES=A B"], ["EXECUTE"]]
        generator = random.Random(7)
        for number in range(200):
            chosen = generator.choices(commands, k=generator.randrange(3, 12))
            chosen.insert(generator.randrange(len(chosen)), commands[1])
            for layout, end in (("batch", ""), ("interactive", ".")):
                text = "".join("\n".join(lines) + end + "\n" for lines in chosen)
                self.create(f"{layout}/{number:03}", text.encode())
        self.migrate()
        for file in self.report()["files"]:
            assert file["layout"] == file["path"].split("/")[0], file["path"]
            assert file["layoutReason"] == (
                "reads-well" if file["layout"] == "batch" else "default")

    def test_the_layout_that_is_asked_for(self):
        batch = b"GET FILE=X\nTABLES TABLE=A\n  /STATISTICS=COUNT\nFINISH\n"
        self.create("jobs/a", batch)
        self.create("b", TABLES)
        self.migrate("--layout", "interactive", status=1)
        facts = self.facts("jobs/a")
        assert (facts["layout"], facts["layoutReason"], facts["outcome"]) == (
            ("interactive", "option", "overlooked"))
        assert facts["findings"][0]["code"] == "layout"
        self.migrate("--layout=interactive", "--batch-include", "JOBS/*")
        facts = self.facts("jobs/a")
        assert (facts["layout"], facts["layoutReason"], facts["outcome"], facts["result"]) == (
            ("batch", "pattern", "converted", "new"))
        assert self.facts("b")["result"] == "kept"
        self.migrate("--batch")
        assert {file["layout"] for file in self.report()["files"]} == {"batch"}

    def test_commands_that_end_at_blank_lines(self):
        self.create("a", b"GET FILE='x' /* y\n\n* Note\n\n" + TABLES)
        self.migrate(status=1)
        assert [finding["code"] for finding in self.facts("a")["findings"]] == ["open-command"]
        assert self.facts("a")["blankLines"] == "mean-nothing"
        self.migrate("--end-at-blank-lines")
        facts = self.facts("a")
        assert (facts["outcome"], facts["blankLines"], facts["blankLinesReason"]) == (
            ("changed", "end-commands", "option"))
        # The comment comes after the new period.
        assert [(finding["code"], finding["text"]) for finding in facts["findings"]] == [
            ("comment-dropped", "/* y")]
        result = (self.target / "a").read_bytes()
        assert result.startswith(b"GET FILE='x'.")
        assert b"* Note.\nCOMMENT" in result

    def test_where_included_files_are(self):
        self.create("a/one.sps", TABLES + b"INCLUDE 'two.sps'.\nINSERT FILE='c:\\x\\three.sps'.\n" +
                    b"INCLUDE 'four.sps'.\n")
        self.create("a/two.sps", b"INCLUDE '..\\b\\three.sps'.\n")
        self.create("b/three.sps", ORDINARY)
        self.migrate()
        inside = {(file["path"], finding["firstLine"]): "is in the source folder" in
                  finding["sentence"] for file in self.report()["files"]
                  for finding in file["findings"]}
        assert inside == {("a/one.sps", 2): True, ("a/one.sps", 3): True, ("a/one.sps", 4): False,
                          ("a/two.sps", 1): True}


class TestProgress(MigrateCase):
    def test_the_summary(self):
        self.create_archive(5, 10)
        run = self.migrate(status=1)
        lines = run.stderr.decode().splitlines()
        assert re.search(r"^7 files in \d+\.\d s: .*1 stopped at an error, 1 skipped$", lines[0])
        assert re.search(r"^\d+ legacy commands: \d+ converted(, \d+ failed)?; 0 warnings; "
                         r"\d+ other commands copied$", lines[1])
        assert lines[2] == f"Report: {self.target.resolve()}/quillet-report.html"
        assert len(lines) == 3

    def test_quiet(self):
        self.create_archive(5, 10)
        assert self.migrate("--quiet", status=1).stderr == b""

    def test_one_line_on_a_terminal(self):
        self.create("big.syn", TABLES * 60000)
        try:
            master, slave = pty.openpty()
        except OSError as error:
            pytest.skip(f"no terminal: {error}")
        process = self.start_program(self.source, self.target, stderr=slave)
        os.close(slave)
        shown = b""
        with contextlib.suppress(OSError):  # at the end
            while piece := os.read(master, 65536):
                shown += piece
        os.close(master)
        assert process.wait(TIME_LIMIT) == 0
        progress, summary = shown.rsplit(b"\r\x1b[K", 1)
        assert b"\n" not in progress
        lines = [line for line in progress.replace(b"\x1b[K", b"").split(b"\r") if line]
        assert len(lines) > 0
        for line in lines:
            # On a busy machine the file may be done when a line is shown, but the run is not.
            assert re.search(rb"^(0/1 files \(\d+%\)|1/1 files \(100%\)), "
                             rb"\d+ commands, 0 failures, 0 overlooked, [0-9.]+ MB/s", line)
            assert len(line) < 80
        assert b"1 file in" in summary


class TestInterruption(MigrateCase):
    def start_and_wait(self, *options, results=5, **keywords):
        """Starts a run and returns when it has written some files."""
        process = self.start_program("--jobs", "1", *options, self.source, self.target, **keywords)

        def has_begun():
            if process.poll() is not None:
                raise AssertionError("the run was over too soon")
            names = (name for _, _, files in os.walk(self.target) for name in files)
            return sum(name.endswith(".syn") for name in names) >= results

        wait_until(has_begun, "the run had begun")
        return process

    def test_a_killed_run_goes_on_where_it_stopped(self):
        self.create_archive(150, 200)
        undisturbed = self.folder / "undisturbed"
        self.migrate(status=1, target=undisturbed)
        total = len(self.results(undisturbed))
        for results in (1, 30, 60):
            process = self.start_and_wait("--quiet", results=results)
            process.kill()
            process.wait()
            written = self.results()
            assert len([name for name in written if b"quillet-tmp" not in name]) < total
            for name, content in written.items():
                if b"quillet-tmp" not in name:
                    assert content == self.results(undisturbed)[name]
        kept = [path.stat().st_mtime_ns for path in self.target.glob("*/*/*.syn")]
        assert len(kept) > 50
        self.migrate(status=1)
        assert self.results() == self.results(undisturbed)
        assert unkept(self.report()) == unkept(self.report(undisturbed))
        assert self.report()["totals"]["filesKept"] >= 60
        now = {path.stat().st_mtime_ns for path in self.target.glob("*/*/*.syn")}
        assert set(kept) <= now
        self.expect_no_left_overs()

    @pytest.mark.parametrize("number", (signal.SIGINT, signal.SIGTERM), ids=row_name)
    def test_an_interrupted_run_stops_cleanly(self, number):
        self.create_archive(150, 200)
        undisturbed = self.folder / "undisturbed"
        self.migrate(status=1, target=undisturbed)
        shutil.rmtree(self.target, ignore_errors=True)
        process = self.start_and_wait()
        process.send_signal(number)
        _, error = process.communicate(timeout=TIME_LIMIT)
        assert process.returncode == 130
        assert b"Stopped after " in error
        assert b"quillet-report-interrupted.html" in error
        self.expect_no_left_overs()
        assert not (self.target / "quillet-report.json").exists()
        report = self.report(name="quillet-report-interrupted.json")
        assert report["interrupted"]
        written = {name for name, content in self.results().items() if content is not None}
        assert {file["path"].encode() for file in report["files"]
   if file["outcome"] != "skipped"} == written
        assert len(report["files"]) < 152
        self.migrate(status=1)
        assert self.results() == self.results(undisturbed)
        assert unkept(self.report()) == unkept(self.report(undisturbed))
        assert list(self.target.glob("*interrupted*")) == []

    def test_an_interrupted_run_leaves_the_whole_report(self):
        self.create_archive(150, 200)
        junit = self.folder / "junit.xml"
        self.migrate("--junit", junit, status=1)
        names = ("quillet-report.json", "quillet-report.html", "quillet-report.csv")
        before = [(self.target / name).read_bytes() for name in names] + [junit.read_bytes()]
        for path in self.target.glob("*/*/*.syn"):
            path.unlink()
        process = self.start_and_wait("--junit", junit)
        process.send_signal(signal.SIGINT)
        process.communicate(timeout=TIME_LIMIT)
        assert process.returncode == 130
        after = [(self.target / name).read_bytes() for name in names] + [junit.read_bytes()]
        assert after == before
        assert self.report(name="quillet-report-interrupted.json")["interrupted"]

    def test_killed_at_any_moment(self):
        # Other options replace what stands, so that there are old results and new ones.
        self.create_archive(60, 30)
        undisturbed = self.folder / "undisturbed"
        self.migrate("--batch", status=1, target=undisturbed)
        self.migrate(status=1)
        generator = random.Random(7)
        for number in range(25):
            process = self.start_program("--batch", "--quiet", self.source, self.target)
            time.sleep(generator.uniform(0, 0.3))
            process.kill()
            process.wait()
            if number % 5 == 4:
                self.migrate(*(["--batch"] if number % 10 == 9 else []), status=1)
                assert self.report()["totals"]["filesEdited"] == 0
        self.migrate("--batch", status=1)
        assert self.results() == self.results(undisturbed)
        assert unkept(self.report()) == unkept(self.report(undisturbed))
        self.expect_no_left_overs()

    def test_a_second_signal_ends_at_once(self):
        self.create("big.syn", TABLES * 400000)
        process = self.start_program(self.source, self.target)
        wait_until(lambda: list(self.target.glob(".quillet-tmp*")), "the file was in work")
        process.send_signal(signal.SIGINT)
        time.sleep(0.1)
        assert process.poll() is None
        process.send_signal(signal.SIGINT)
        assert process.wait(TIME_LIMIT) == 130
        assert not (self.target / "big.syn").exists()
        assert not (self.target / "quillet-report.json").exists()

    def test_signals_that_are_ignored_stay_ignored(self):
        self.create_archive(100, 200)
        process = self.start_and_wait(
            preexec_fn=lambda: signal.signal(signal.SIGHUP, signal.SIG_IGN))
        process.send_signal(signal.SIGHUP)
        process.communicate(timeout=TIME_LIMIT)
        assert process.returncode == 1
        assert not self.report()["interrupted"]

    def test_one_run_at_a_time(self):
        self.create_archive(150, 200)
        process = self.start_and_wait()
        process.send_signal(signal.SIGSTOP)
        run = self.migrate(status=2)
        assert b"Another run is writing to TARGET" in run.stderr
        process.send_signal(signal.SIGCONT)
        process.communicate(timeout=TIME_LIMIT)
        assert process.returncode == 1
        assert self.report()["totals"]["files"] == 152

    def test_a_result_appears_when_it_is_whole(self):
        self.create("big.syn", TABLES * self.many)
        process = self.start_program(self.source, self.target)
        wait_until(lambda: any(path.stat().st_size > MEBIBYTE
                               for path in self.target.glob(".quillet-tmp*")), "much was written")
        assert not (self.target / "big.syn").exists()
        process.communicate(timeout=TIME_LIMIT)
        assert (self.target / "big.syn").read_bytes().count(b"Begin CTABLES") == self.many


class TestShard(MigrateCase):
    def setup_method(self):
        super().setup_method()
        self.create_archive(80, 20)
        (self.source / "empty").mkdir()
        self.whole = self.folder / "whole"
        self.migrate(status=1, target=self.whole)

    def expect_whole(self):
        reports = [self.target / f"quillet-report-{index}-of-4.json" for index in range(1, 5)]
        for index, report in enumerate(reports, 1):
            assert self.report(name=report.name)["shard"] == {"index": index, "count": 4}
        assert self.results() == self.results(self.whole)
        run = self.run_program("--merge-reports", *reports, self.target)
        assert run.returncode == 1, run.stderr
        assert timeless(self.report()) == timeless(self.report(self.whole))
        assert self.report()["shard"] is None
        sizes = [self.report(name=report.name)["totals"]["files"] for report in reports]
        assert sum(sizes) == 82
        assert min(sizes) > 5
        merged, whole = (
            re.sub(r'"(started|seconds|target)":("[^"]*"|[0-9.e-]+)', "",
                   (folder / "quillet-report.html").read_text("utf-8"))
            for folder in (self.target, self.whole))
        assert merged == whole

    def test_slices_make_up_the_whole(self):
        for index in (3, 1, 4, 2):
            run = self.run_program("--shard", f"{index}/4", self.source, self.target)
            assert run.returncode in (0, 1), run.stderr
        self.expect_whole()

    def test_slices_side_by_side(self):
        processes = [self.start_program("--shard", f"{index}/4", self.source, self.target)
                     for index in range(1, 5)]
        for process in processes:
            process.communicate(timeout=TIME_LIMIT)
            assert process.returncode in (0, 1)
        self.expect_whole()

    def test_slices_by_gnu_parallel(self):
        if shutil.which("parallel") is None:
            pytest.skip("GNU parallel is not there")
        command = ["parallel", "--jobs", "2", self.program, "--jobs", "1", "--shard", "{}/4",
                   os.fspath(self.source), os.fspath(self.target), ":::", "1", "2", "3", "4"]
        environment = {**os.environ, "LC_ALL": "C", "HOME": os.fspath(self.folder)}
        subprocess.run(command, env=environment, timeout=TIME_LIMIT, check=False,
                       stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.expect_whole()

    def test_what_is_wrong_with_reports(self):
        for index in (1, 2):
            self.run_program("--shard", f"{index}/4", self.source, self.target)
        one, two = (self.target / f"quillet-report-{index}-of-4.json" for index in (1, 2))
        run = self.run_program("--merge-reports", one, one, self.folder / "m")
        assert run.returncode == 2
        assert b"both tell about the file" in run.stderr
        assert not (self.folder / "m").exists()
        run = self.run_program("--merge-reports", one, self.folder / "missing", self.folder / "m")
        assert run.returncode == 2
        assert b"No such file" in run.stderr
        run = self.run_program("--merge-reports", one, self.source / "stopped.syn",
                               self.folder / "m")
        assert run.returncode == 2
        assert b"no report" in run.stderr
        run = self.run_program("--merge-reports", one, two, one)
        assert run.returncode == 2
        assert self.report(name=one.name)["shard"]["index"] == 1
        run = self.run_program("--merge-reports", "--junit", "junit.xml", one, two, "m")
        assert run.returncode == 1
        assert b"No report of slice 3 of 4 was given\n" in run.stderr
        xml.etree.ElementTree.parse(self.folder / "junit.xml")


class TestHostileReport(MigrateCase):
    """Reports that nobody wrote in good faith."""

    SUMS = {"files": 1, "filesPartly": 1}
    FINDING = {"code": "macro-body", "kind": "overlooked", "command": "TABLES", "firstLine": 2,
               "lastLine": 2, "causeLine": 1, "macro": "!f", "sentence": "s", "text": "t"}
    COMMAND = {"type": "TABLES", "outcome": "failed", "firstLine": 1, "lastLine": 1, "source": "x",
               "error": "tables-syntax", "errorLine": 1, "errorColumn": 1, "message": "m",
               "hint": "h", "warnings": []}
    FILE = {"path": "a", "outcome": "partly", "bytes": 1, "modified": 0, "encoding": "utf-8",
            "lines": 1, "copied": 0, "found": 2, "converted": 0, "failed": 1, "unreadable": 0,
            "overlooked": 1, "listed": 1, "warnings": 0, "message": "", "findings": [FINDING],
            "commands": [COMMAND]}
    REPORT = {"format": "quillet-report", "formatVersion": 2, "quilletVersion": "0.1.0",
              "source": "/old", "target": "/new", "layout": "auto", "dryRun": False,
              "interrupted": False, "shard": None, "started": "2026-11-21T03:00:00Z",
              "seconds": 1.5, "totals": SUMS, "files": [FILE]}

    # The member that is named, and the text of the report with something else in it.
    CASES = (
        ("seconds", '"seconds": 1.5', '"seconds": 1e300'),
        ("seconds", '"seconds": 1.5', '"seconds": 1e999'),
        ("seconds", '"seconds": 1.5', '"seconds": NaN'),
        ("seconds", '"seconds": 1.5', '"seconds": Infinity'),
        ("seconds", '"seconds": 1.5', '"seconds": -1'),
        ("seconds", '"seconds": 1.5', '"seconds": 300000000000'),
        ("started", '"2026-11-21T', '"99999-11-21T'),
        ("shard.index", '"shard": null', '"shard": {"index": 0, "count": 1}'),
        ("shard.count", '"shard": null', '"shard": {"index": 1, "count": 4294967296}'),
        ("shard", '"shard": null', '"shard": {"index": 2, "count": 1}'),
        ("totals.files", '"files": 1,', '"files": -1,'),
        ("files[0].copied", '"copied": 0', '"copied": -1'),
        ("files[0].copied", '"copied": 0', '"copied": 0.5'),
        ("files[0].copied", '"copied": 0', '"copied": "0"'),
        ("files[0].lines", '"lines": 1', '"lines": 9223372036854775808'),
        ("files[0].bytes", '"bytes": 1', '"bytes": 1e300'),
        ("files[0].path", '"path": "a"', '"path": "' + 300000 * "a" + '"'),
        ("files[0]", '"found": 2', '"found": 1'),
        ("files[0].findings[0].kind", '"kind": "overlooked"', '"kind": "guessed"'),
        ("files[0].findings[0].macro", '"macro": "!f"', '"macro": 1'),
        ("files[0].findings[0].firstLine", '"firstLine": 2', '"firstLine": -2'),
        ("files[0].commands[0].firstLine", '"firstLine": 1,', '"firstLine": 1e300,'),
        ("files[0].commands[0].errorColumn", '"errorColumn": 1', '"errorColumn": 2147483648'),
        ("files[0].commands[0].source", '"source": "x"', '"source": 1'),
        ("files[0].commands[0].hint", '"hint": "h"', '"hint": null'),
        ("files[1]", '"files": [{', '"files": [{"path": "a", "outcome": "partly"}, {'),
        ("files[1]", '"files": [{', '"files": [{"path": "b", "outcome": "partly"}, {'),
        ("files[1]", '"files": [{',
         '"files": [{"path": "0", "outcome": "partly", "found": 9007199254740991, '
         '"failed": 9007199254740991}, {'),
        ("nested", '"files": [{', '"new": ' + 1000000 * "[" + ', "files": [{'),
    )

    def merge(self, *reports):
        return self.run_program("--merge-reports", "--junit", "junit.xml", *reports, "merged")

    @pytest.mark.parametrize("member, old, new", CASES, ids=row_name)
    def test_each_is_refused_by_name(self, member, old, new):
        good = self.folder / "good.json"
        good.write_text(json.dumps({**self.REPORT, "files": []}))
        bad = self.folder / "bad.json"
        whole = json.dumps(self.REPORT)
        assert old in whole
        bad.write_text(whole.replace(old, new, 1))
        run = self.merge(good, bad)
        error = run.stderr.decode("ascii")
        assert run.returncode == 2, error
        assert error.startswith(f"quillet-migrate: {bad}: this is no report"), error[:200]
        assert member in error
        assert len(error) < 1000
        assert sorted(path.name for path in self.folder.iterdir()) == [
            "bad.json", "good.json", "source"]

    def test_sums_of_several_reports(self):
        names = []
        for number in range(2):
            file = {**self.FILE, "path": f"{number}", "warnings": 2 ** 52}
            names.append(self.folder / f"{number}.json")
            names[-1].write_text(json.dumps({**self.REPORT, "files": [file]}))
        run = self.merge(*names)
        assert run.returncode == 2
        assert run.stderr.decode() == (
            f"quillet-migrate: {names[1]}: the file 1 makes the sum of all "
            '"warnings" too large\n')
        assert not (self.folder / "merged").exists()
        assert not (self.folder / "junit.xml").exists()

    def test_what_is_at_the_edges_is_taken(self):
        (self.folder / "edge.json").write_text(json.dumps({
            **self.REPORT, "started": "9999-12-31T23:59:58Z", "seconds": 1,
            "files": [{**self.FILE, "warnings": 2 ** 53 - 1, "bytes": 2 ** 63 - 1,
                       "modified": -2 ** 63}]}))
        run = self.merge("edge.json")
        assert run.returncode == 1, run.stderr
        merged = self.report(self.folder / "merged")
        assert (merged["started"], merged["seconds"]) == ("9999-12-31T23:59:58Z", 1)
        assert merged["totals"]["warnings"] == 2 ** 53 - 1
        assert merged["files"][0]["bytes"] == 2 ** 63 - 1
        xml.etree.ElementTree.parse(self.folder / "junit.xml")
        again = self.run_program("--merge-reports", "merged/quillet-report.json", "again")
        assert again.returncode == 1, again.stderr
        assert timeless(self.report(self.folder / "again")) == timeless(merged)

    @pytest.mark.parametrize("old, new", (
        ('"warnings":0', '"warnings":1e300'),
        ('"converted":1', '"converted":-1'),
        ('"firstLine":1', '"firstLine":1e300'),
    ), ids=row_name)
    def test_an_earlier_report_is_not_trusted(self, old, new):
        self.create("a.syn", TABLES)
        self.migrate()
        first = self.report()
        path = self.target / "quillet-report.json"
        text = path.read_text()
        assert old in text
        path.write_text(text.replace(old, new))
        self.migrate()
        assert unkept(self.report()) == unkept(first)


class TestFault(MigrateCase):
    def test_exit_statuses(self):
        cases = {0: ORDINARY + TABLES, 1: FAILING}
        for status, text in cases.items():
            self.create("a", text)
            self.migrate("--force", status=status)
        self.create("a", TABLES + UNREADABLE)
        self.migrate("--force", status=1)
        assert self.run_program().returncode == 2
        assert self.run_program("--nonsense").returncode == 2
        assert self.run_program(self.folder / "missing", self.target).returncode == 2
        assert self.run_program("--help").returncode == 0
        version = self.run_program("--version")
        assert (version.returncode, version.stderr) == (0, b"")
        assert re.search(rb"^quillet-migrate \d+\.\d+\.\d+\n$", version.stdout)

    def test_help_that_does_not_arrive(self):
        for option in ("--help", "--version"):
            with open("/dev/full", "wb") as full:
                run = subprocess.run(self.command(option), stdout=full, stderr=subprocess.PIPE,
                                     check=False)
            assert run.returncode == 2
            assert run.stderr == b"quillet-migrate: Standard output cannot be written\n"

    def test_a_file_that_cannot_be_read(self):
        self.create("a", ORDINARY)
        os.chmod(self.create("b", ORDINARY), 0)
        os.chmod(os.path.dirname(self.create("c/d", ORDINARY)), 0)
        self.create("e", FAILING)
        self.as_ordinary_user()
        run = self.migrate(status=2)
        assert b"b: it cannot be opened: Permission denied\n" in run.stderr
        assert b"c: the folder cannot be read: Permission denied\n" in run.stderr
        assert {name for name, content in self.results().items() if content} == {b"a", b"e"}
        assert [file["outcome"] for file in self.report()["files"]] == (
            ["nothing-to-convert", "failed", "failed", "unconverted"])
        os.chmod(self.source / "b", 0o644)
        os.chmod(self.source / "c", 0o755)
        self.migrate(status=1)
        assert self.report()["totals"]["files"] == 4
        assert self.report()["totals"]["filesFailed"] == 0

    def test_a_target_that_cannot_be_written(self):
        self.create("a/b", ORDINARY)
        self.create("c/d", ORDINARY)
        self.as_ordinary_user()
        (self.folder / "locked").mkdir(0o555)
        run = self.migrate(status=2, target=self.folder / "locked")
        assert b"Permission denied" in run.stderr
        run = self.migrate(status=2, target=self.folder / "locked" / "new")
        assert b"Permission denied" in run.stderr
        run = self.migrate(status=2, target=self.source / "a" / "b" / "new")
        self.migrate()
        os.chmod(self.target / "a", 0o555)
        run = self.migrate("--force", status=2)
        assert b"a/b: the result cannot be written: Permission denied\n" in run.stderr
        assert self.facts("c/d")["result"] == "new"

    def test_a_file_in_the_place_of_a_folder(self):
        self.create("a/b", ORDINARY)
        self.create("c", ORDINARY)
        self.create("d", ORDINARY)
        self.target.mkdir()
        (self.target / "a").write_bytes(b"precious")
        (self.target / "c").mkdir()
        run = self.migrate(status=2)
        assert b"a: the folder cannot be made" in run.stderr
        assert b"c: the result cannot be written: Is a directory" in run.stderr
        assert self.results() == {b"a": b"precious", b"c": None, b"d": ORDINARY}
        run = self.migrate(status=2, target=self.target / "a")
        assert b"Not a directory" in run.stderr

    def test_a_folder_with_two_problems(self):
        self.create("a/b", ORDINARY)
        self.create("c", ORDINARY)
        self.target.mkdir()
        self.target.chmod(0o777)
        (self.target / "a").write_bytes(b"precious")
        os.chmod(self.source / "a", 0)
        self.as_ordinary_user()
        run = self.migrate(status=2)
        assert b"a: the folder cannot be read: Permission denied\n" in run.stderr
        assert [file["path"] for file in self.report()["files"]] == ["a", "c"]
        # A report in which a path stands twice would be refused.
        run = self.run_program("--merge-reports", self.target / self.report_name,
                               self.folder / "merged")
        assert run.returncode == 2, run.stderr
        assert self.report(self.folder / "merged")["totals"]["filesFailed"] == 1

    def test_a_full_disk(self):
        if os.geteuid() != 0:
            pytest.skip("a small file system can only be mounted by root")
        self.target.mkdir()
        mount = subprocess.run(["mount", "-t", "tmpfs", "-o", "size=512k", "tmpfs", self.target],
                               check=False, capture_output=True)
        if mount.returncode != 0:
            pytest.skip("nothing can be mounted here: " + mount.stderr.decode())
        self.add_cleanup(subprocess.run, ["umount", self.target], check=True)
        self.create_archive(100, 60)
        undisturbed = self.folder / "undisturbed"
        self.migrate(status=1, target=undisturbed)
        run = self.migrate(status=2)
        assert b"No space left on device" in run.stderr
        # Every result that stands has its record.
        assert {os.fsdecode(name) for name, content in self.results().items()
                if content is not None} <= set(self.records())
        assert re.search(rb"The report .* cannot be written: No space left on device", run.stderr)
        expected = self.results(undisturbed)
        written = self.results()
        assert len(written) < len(expected)
        for name, content in written.items():
            assert content == expected[name]
        assert list(self.target.glob("**/.quillet-tmp*")) == []
        assert list(self.target.glob("*.html")) + list(self.target.glob("*.json")) == []
        subprocess.run(["mount", "-o", "remount,size=64m", self.target], check=True)
        self.migrate(status=1)
        assert self.results() == expected
        assert unkept(self.report()) == unkept(self.report(undisturbed))
        self.expect_no_left_overs()

    def test_a_file_that_vanishes(self):
        self.create("a big.syn", TABLES * 20000)
        self.create("b", ORDINARY)
        self.create("c", ORDINARY)
        self.create("d", ORDINARY)
        process = self.start_program("--jobs", "1", self.source, self.target)
        # The walk is over when the first file is in work.
        wait_until(lambda: list(self.target.glob(".quillet-tmp*")), "the first file was in work")
        process.send_signal(signal.SIGSTOP)
        assert not (self.target / "b").exists()
        (self.source / "b").unlink()
        (self.source / "c").unlink()
        os.mkfifo(self.source / "c")
        process.send_signal(signal.SIGCONT)
        _, error = process.communicate(timeout=TIME_LIMIT)
        assert process.returncode == 2
        assert b"b: it cannot be opened: No such file or directory\n" in error
        assert b"c: it cannot be opened: Invalid argument\n" in error
        assert sorted(self.results()) == [b"a big.syn", b"d"]

    def test_what_only_looks_like_unicode_is_not_converted_in_silence(self):
        self.create("a.syn", "TABLES /TABLE a.\n".encode("utf-32"))
        self.create("b.syn", b"\xfe\xffno zero byte\n")
        self.create("c.syn", ORDINARY)
        messages = {"a.syn": "it is UTF-32, which cannot be converted: save it as UTF-8",
                    "b.syn": "it is no valid UTF-16"}
        for options in ((), ("--dry-run",), ("--force",), ("--copy-others", "--force")):
            run = self.run_program(self.source, self.target, *options)
            assert run.returncode == 2
            for name, message in messages.items():
                assert self.facts(name)["outcome"] == "failed"
                assert self.facts(name)["message"] == message
            assert sorted(self.results()) == [b"c.syn"]

    def test_a_file_that_changes_while_it_is_read(self):
        path = self.create("a", TABLES * self.many)
        process = self.start_program(self.source, self.target)
        wait_until(lambda: any(file.stat().st_size > MEBIBYTE
                               for file in self.target.glob(".quillet-tmp*")), "much was written")
        with open(path, "ab") as file:
            file.write(ORDINARY)
        _, error = process.communicate(timeout=TIME_LIMIT)
        assert process.returncode == 2
        assert b"a: it was changed while it was read\n" in error
        assert self.results() == {}

    def test_links(self):
        outside = self.folder / "outside"
        outside.mkdir()
        (outside / "secret").write_bytes(ORDINARY)
        self.create("a/file", TABLES)
        for name, to in (("a/loop", ".."), ("a/itself", "itself"), ("b", "a"), ("c", "a/file"),
                         ("d", outside), ("e", outside / "secret"), ("f", "nowhere"),
                         ("g", "../source/a/file")):
            (self.source / name).symlink_to(to)
        os.mkfifo(self.source / "pipe")
        self.migrate(status=1)
        results = self.results()
        assert sorted(results) == [b"a", b"a/file", b"c", b"g"]
        assert results[b"c"] == results[b"a/file"]
        skipped = {file["path"] for file in self.report()["files"] if file["outcome"] == "skipped"}
        assert skipped == {"a/loop", "a/itself", "b", "d", "e", "f", "pipe"}
        assert self.not_followed() == skipped - {"pipe"}
        assert self.report()["totals"]["linksNotFollowed"] == 6
        for file in self.report()["files"]:
            assert (file["outcome"] == "skipped") == (file["message"] != "")

    def test_deep_folders(self):
        depth = 700
        path = b"/".join([b"d"] * depth)
        self.create(path + b"/file", ORDINARY)
        self.migrate()
        assert self.results()[path + b"/file"] == ORDINARY

    def test_a_path_that_is_too_long(self):
        self.create("a", ORDINARY)
        script = ("import os\n"
                  "for level in range(30): os.mkdir('d' * 200); os.chdir('d' * 200)\n"
                  "open('file', 'w').close()")
        subprocess.run([sys.executable, "-c", script], cwd=self.source, check=True)
        run = self.migrate(status=2)
        assert b": File name too long\n" in run.stderr
        assert self.results()[b"a"] == ORDINARY
        failed = [file for file in self.report()["files"] if file["outcome"] == "failed"]
        assert len(failed) > 0

    def test_nothing_is_written_into_the_source(self):
        self.create("a/b", ORDINARY)
        self.create("source/b", ORDINARY)
        (self.folder / "link").symlink_to(self.source)
        before = contents_of(self.source)
        cases = (
            (self.source, self.source), (self.source, self.source / "target"),
            (self.source, self.source / "a" / "new" / "er"), (self.source, self.folder / "link"),
            (self.source, self.folder / "link" / "x"), (self.source, self.source / "a" / ".."),
            (self.source / "a" / "b", self.source / "a"),
            # Its folder "source" would land in itself.
            (self.source, self.folder),
        )
        for source, target in cases:
            run = self.run_program(source, target)
            assert run.returncode == 2
            assert re.search(rb"SOURCE", run.stderr)
            assert contents_of(self.source) == before
        run = self.run_program("--junit", self.source / "j.xml", self.source, self.target)
        assert run.returncode == 2
        assert b"lies in SOURCE" in run.stderr
        assert contents_of(self.source) == before

    def test_a_link_in_the_target_does_not_lead_into_the_source(self):
        self.create("a/b", b"LIST")
        self.create("c", b"LIST")
        self.create("d", b"LIST")
        self.target.mkdir()
        (self.target / "a").symlink_to(self.source / "a")
        (self.target / "c").symlink_to(self.source / "c")
        before = contents_of(self.source)
        for options in ([], ["--force"], ["--dry-run"]):
            self.migrate(*options, status=1)
            assert self.not_followed() == (
                {"a/b", "c"} | (set() if "--dry-run" in options else {"a"}))
            assert self.facts("a/b")["message"] == (
                "the folder a of TARGET is a link, which is not followed")
            assert self.facts("c")["message"] == (
                "the result's name in TARGET is a link, which is not followed")
            assert contents_of(self.source) == before
            assert (self.target / "c").is_symlink()
            assert (self.target / "d").read_bytes() == b"LIST"

    def test_a_source_inside_the_target_is_no_harm_where_nothing_meets(self):
        self.create("a", ORDINARY)
        before = contents_of(self.source)
        run = self.migrate(target=self.folder)
        assert run.returncode == 0
        assert (self.folder / "a").read_bytes() == ORDINARY
        assert contents_of(self.source) == before

    def test_where_the_junit_file_cannot_be(self):
        self.create("a", ORDINARY)
        for name in (self.folder / "missing" / "j.xml", self.folder):
            run = self.run_program("--junit", name, self.source, self.target)
            assert run.returncode == 2
            assert b"--junit" in run.stderr
            assert not self.target.exists()


class TestLink(MigrateCase):
    """Nothing outside of the target is written, and nothing outside of the source is read,
    whatever links and mounts say."""

    def setup_method(self):
        super().setup_method()
        self.outside = self.folder / "outside"
        self.outside.mkdir()
        for name in ("one.syn", "two.syn", ".quillet-tmp-all-1-0", ".quillet-tmp-all-77-json"):
            (self.outside / name).write_bytes(b"LIST secret.\n")
        self.create("sub/one.syn", TABLES)
        self.create("sub/two.syn", ORDINARY)
        self.create("three.syn", ORDINARY)
        self.before = None

    def create_first_file(self, path="a first.syn"):
        """A file that is in work long before the others, for it is large."""
        self.create(path, TABLES * self.many)

    def remember(self):
        """What must be the same in the end."""
        self.before = contents_of(self.source), contents_of(self.outside)

    def expect_unharmed(self):
        source, outside = self.before
        assert contents_of(self.outside) == outside
        # Compared one by one: a difference may be large.
        now = contents_of(self.source)
        assert sorted(now) == sorted(source)
        for name, content in now.items():
            assert content == source[name], name

    def expect_no_secrets(self):
        for name, content in self.results().items():
            assert b"secret" not in (content or b""), name

    def bind(self, source, target):
        """Mounts a folder a second time, until the test is over."""
        if os.geteuid() != 0:
            pytest.skip("folders can only be mounted by root")
        mount = subprocess.run(["mount", "--bind", source, target], check=False,
                               capture_output=True)
        if mount.returncode != 0:
            pytest.skip("nothing can be mounted here: " + mount.stderr.decode())
        self.add_cleanup(subprocess.run, ["umount", target], check=True)

    def run_with_pause(self, act, *options, temporary_in=".", status):
        """Migrates and calls `act` while the first file is in work, everything else standing
        still. Returns what the run said."""
        place = self.target / temporary_in

        def is_begun():
            """The first file is in work and far from its end."""
            sizes = [file.stat().st_size for file in place.glob(".quillet-tmp*")]
            return len(sizes) == 1 and sizes[0] < MEBIBYTE

        # A machine that is busy may let the run go on too far, or to its end; then once more.
        for _ in range(20):
            process = self.start_program("--jobs", "1", *options, self.source, self.target)
            wait_until(
                # pylint: disable-next=cell-var-from-loop  # it is over before the next round
                lambda: process.poll() is not None or list(place.glob(".quillet-tmp*")),
                "the first file was in work")
            process.send_signal(signal.SIGSTOP)
            if process.poll() is None:
                os.waitid(os.P_PID, process.pid, os.WSTOPPED | os.WEXITED | os.WNOWAIT)
                if is_begun() and not (place / "a first.syn").exists():
                    break
            self.end_process(process)
            shutil.rmtree(self.target)
        else:
            pytest.fail("the first file was never seen in work")
        assert not (self.target / "three.syn").exists()
        act()
        process.send_signal(signal.SIGCONT)
        _, error = process.communicate(timeout=TIME_LIMIT)
        assert process.returncode == status, error
        return error

    def test_a_folder_of_the_target_that_is_a_link(self):
        self.target.mkdir()
        (self.target / "sub").symlink_to(self.outside)
        self.create("sub/deep/four.syn", ORDINARY)
        self.remember()
        for options in ([], ["--force"], ["--copy-others"]):
            self.migrate(*options, status=1)
            self.expect_unharmed()
            assert self.not_followed() == {"sub", "sub/one.syn", "sub/two.syn", "sub/deep/four.syn"}
            for path in self.not_followed():
                assert self.facts(path)["outcome"] == "skipped"
                assert self.facts(path)["message"] == (
                    "the folder sub of TARGET is a link, which is not followed")
            assert (self.target / "three.syn").read_bytes() == ORDINARY
        self.migrate("--dry-run", status=1)
        assert self.not_followed() == {"sub/one.syn", "sub/two.syn", "sub/deep/four.syn"}

    def test_the_exit_status_of_joined_reports_counts_links(self):
        (self.source / "link").symlink_to(self.outside)
        for index in (1, 2):
            run = self.run_program("--shard", f"{index}/2", self.source, self.target)
            assert run.returncode in (0, 1), run.stderr
        reports = [self.target / f"quillet-report-{index}-of-2.json" for index in (1, 2)]
        run = self.run_program("--merge-reports", *reports, self.folder / "joined")
        assert run.returncode == 1, run.stderr
        assert self.not_followed(self.folder / "joined") == {"link"}
        assert self.report(self.folder / "joined")["totals"]["linksNotFollowed"] == 1

    def test_results_that_are_links(self):
        self.target.mkdir()
        (self.target / "sub").mkdir()
        (self.target / "sub" / "one.syn").symlink_to(self.outside / "one.syn")
        (self.target / "three.syn").symlink_to("nowhere")
        self.remember()
        self.migrate("--force", status=1)
        self.expect_unharmed()
        assert self.not_followed() == {"sub/one.syn", "three.syn"}
        assert os.readlink(self.target / "three.syn") == "nowhere"

    def test_reports_and_journals_that_are_links(self):
        self.target.mkdir()
        for name in ("quillet-report.json", "quillet-report.html", "quillet-report.csv"):
            (self.target / name).symlink_to(self.outside / "one.syn")
        self.remember()
        self.migrate()
        self.expect_unharmed()
        assert not (self.target / "quillet-report.json").is_symlink()
        journal = self.target / "quillet-report.journal"
        journal.unlink()
        journal.symlink_to(self.outside / "one.syn")
        run = self.migrate(status=2)
        assert b"quillet-report.journal: there is a link in its path" in run.stderr
        self.expect_unharmed()
        journal.unlink()
        os.link(self.outside / "one.syn", journal)
        run = self.migrate(status=2)
        assert b"quillet-report.journal: Too many links" in run.stderr
        self.expect_unharmed()

    def test_roots_may_be_reached_over_links(self):
        (self.folder / "source link").symlink_to(self.source)
        self.target.mkdir()
        (self.folder / "target link").symlink_to(self.target)
        run = self.run_program(self.folder / "source link", self.folder / "target link" / "new")
        assert run.returncode == 0, run.stderr
        assert (self.target / "new" / "three.syn").read_bytes() == ORDINARY

    def test_a_folder_of_the_target_that_becomes_a_link(self):
        self.create_first_file()
        self.remember()
        for destination in (self.outside, self.source / "sub"):
            shutil.rmtree(self.target, ignore_errors=True)

            def act(destination=destination):
                (self.target / "sub").rename(self.target / "moved")
                (self.target / "sub").symlink_to(destination)

            self.run_with_pause(act, status=1)
            self.expect_unharmed()
            assert self.not_followed() == {"sub/one.syn", "sub/two.syn"}
            assert list((self.target / "moved").iterdir()) == []

    def test_a_folder_that_becomes_a_link_while_a_result_is_in_it(self):
        self.create_first_file("sub/a first.syn")
        self.remember()

        def act():
            (self.target / "sub").rename(self.target / "moved")
            (self.target / "sub").symlink_to(self.outside)

        error = self.run_with_pause(act, temporary_in="sub", status=2)
        assert b"sub/a first.syn: the folder sub of TARGET is a link" in error
        self.expect_unharmed()
        assert list((self.target / "moved").iterdir()) == []
        assert self.not_followed() == {"sub/one.syn", "sub/two.syn"}

    def test_a_folder_that_is_replaced_while_a_result_is_in_it(self):
        self.create_first_file("sub/a first.syn")

        def act():
            (self.target / "sub").rename(self.target / "moved")
            (self.target / "sub").mkdir()

        error = self.run_with_pause(act, temporary_in="sub", status=2)
        assert b"sub/a first.syn: the folder of its result was replaced" in error
        assert list((self.target / "moved").iterdir()) == []
        assert sorted(self.results()) == (
            [b"moved", b"sub", b"sub/one.syn", b"sub/two.syn", b"three.syn"])

    def test_the_target_is_moved_into_the_source(self):
        self.create_first_file()
        (self.source / "new").mkdir()
        self.remember()
        error = self.run_with_pause(lambda: self.target.rename(self.source / "new" / "target"),
                                    status=2)
        assert b"three.syn: TARGET lies in SOURCE\n" in error
        (self.source / "new" / "target").rename(self.target)
        self.expect_unharmed()
        assert {name for name, content in self.results().items() if content} == set()

    @pytest.mark.parametrize("known", (False, True), ids=row_name)
    def test_the_source_replaces_a_folder_of_the_target(self, known):
        self.create_first_file()
        # A new one, which the walk has not met, and one that it has.
        shutil.rmtree(self.target, ignore_errors=True)
        self.remember()

        def act(known=known):
            name = "sub" if known else "new"
            (self.source / "new").mkdir(exist_ok=True)
            (self.target / "sub").rename(self.folder / "away")
            (self.target / "sub").symlink_to(self.source / name)

        self.run_with_pause(act, status=1)
        assert list((self.source / "new").iterdir()) == []
        (self.source / "new").rmdir()
        (self.folder / "away").rmdir()
        self.expect_unharmed()

    def test_a_file_of_the_source_that_becomes_a_link(self):
        self.create_first_file()
        self.create("sub2/one.syn", ORDINARY)
        self.create("four.syn", ORDINARY)

        def act():
            (self.source / "three.syn").unlink()
            (self.source / "three.syn").symlink_to(self.outside / "one.syn")
            (self.source / "four.syn").unlink()
            (self.source / "four.syn").symlink_to("sub/two.syn")
            shutil.rmtree(self.source / "sub")
            (self.source / "sub").symlink_to(self.outside)
            shutil.rmtree(self.source / "sub2")
            os.mkfifo(self.source / "sub2")

        error = self.run_with_pause(act, status=2)
        for name in ("three.syn", "four.syn", "sub/one.syn", "sub/two.syn"):
            assert self.facts(name)["outcome"] == "failed"
            assert (f"{name}: it cannot be opened: there is a link in its path, which is "
                   "not followed\n".encode()) in error
        assert b"sub2/one.syn: it cannot be opened: Not a directory\n" in error
        self.expect_no_secrets()

    def test_a_link_to_a_file_goes_where_it_went_in_the_walk(self):
        self.create_first_file()
        (self.source / "link.syn").symlink_to("three.syn")

        def act():
            (self.source / "link.syn").unlink()
            (self.source / "link.syn").symlink_to(self.outside / "one.syn")

        self.run_with_pause(act, status=0)
        assert self.results()[b"link.syn"] == ORDINARY

    def test_parts_of_the_source_that_are_mounted_into_the_target(self):
        self.create("sub/deep/four.syn", ORDINARY)
        self.create("other/five.syn", ORDINARY)
        self.create("other/deep/five.syn", ORDINARY)
        (self.target / "sub").mkdir(parents=True)
        (self.target / "other" / "deep").mkdir(parents=True)
        self.bind(self.source / "sub", self.target / "sub")
        self.bind(self.source, self.target / "other" / "deep")
        self.remember()
        for options in ([], ["--force"]):
            run = self.migrate(*options, status=2)
            self.expect_unharmed()
            assert b"sub: the folder sub of TARGET is a folder of SOURCE\n" in run.stderr
            failed = {file["path"] for file in self.report()["files"]
                      if file["outcome"] == "failed"}
            assert failed == {"sub", "sub/one.syn", "sub/two.syn", "sub/deep/four.syn",
                            "other/deep", "other/deep/five.syn"}
            assert (self.target / "other" / "five.syn").read_bytes() == ORDINARY
            assert (self.target / "three.syn").read_bytes() == ORDINARY
        self.migrate("--dry-run", status=2)
        assert self.facts("sub/one.syn")["outcome"] == "failed"

    def test_a_part_of_the_source_is_mounted_during_the_run(self):
        self.create_first_file()
        self.remember()
        error = self.run_with_pause(lambda: self.bind(self.source / "sub", self.target / "sub"),
                                    status=2)
        assert b"sub/one.syn: the folder sub of TARGET is a folder of SOURCE\n" in error
        self.expect_unharmed()

    @pytest.mark.parametrize("name, problem", (
        ("three.syn", b"three.syn: the result cannot be written: Device or resource busy"),
        ("quillet-report.json", b"cannot be written: Device or resource busy"),
        ("quillet-report.journal", b"quillet-report.journal: Device or resource busy"),
    ), ids=row_name)
    def test_files_of_the_source_that_are_mounted_into_the_target(self, name, problem):
        self.target.mkdir()
        for other in ("three.syn", "quillet-report.json", "quillet-report.journal"):
            (self.target / other).touch()
        self.remember()
        self.bind(self.source / "three.syn", self.target / name)
        run = self.migrate("--force", status=2)
        assert problem in run.stderr
        self.expect_unharmed()

    def test_a_target_or_junit_file_in_the_source_by_another_name(self):
        mounted = self.folder / "mounted"
        mounted.mkdir()
        self.bind(self.source / "sub", mounted)
        (self.folder / "link").symlink_to(self.source / "sub")
        self.remember()
        for target in (mounted, mounted / "new" / "er", self.folder / "link" / "new"):
            run = self.migrate(status=2, target=target)
            assert b"TARGET lies in SOURCE\n" in run.stderr
            self.expect_unharmed()
        for junit in (mounted / "j.xml", mounted / "one.syn", self.folder / "link" / "j.xml"):
            run = self.migrate("--junit", junit, status=2)
            assert b"lies in SOURCE\n" in run.stderr
            self.expect_unharmed()
            assert not self.target.exists()
        run = self.run_program("--junit", mounted / "one.syn", self.source / "sub" / "one.syn",
                               self.target)
        assert run.returncode == 2
        assert b"lies in SOURCE\n" in run.stderr
        self.expect_unharmed()

    def test_a_junit_file_stays_in_its_folder(self):
        self.create_first_file()
        junit = self.folder / "junit"
        junit.mkdir()
        self.remember()

        def act():
            junit.rename(self.folder / "moved")
            junit.symlink_to(self.outside)

        self.run_with_pause(act, "--junit", junit / "j.xml", status=0)
        self.expect_unharmed()
        xml.etree.ElementTree.parse(self.folder / "moved" / "j.xml")

    def run_while_names_are_swapped(self, left, right, rounds=6):
        """Migrates several times, while two names are swapped all the time from the end of the
        walk on, so that it is known what the source is."""
        self.target.mkdir()
        self.create_archive(40, 5)
        self.remember()
        self.migrate(status=1)
        try:
            exchange(left, right)
            exchange(left, right)
        except (OSError, AttributeError) as error:
            pytest.skip(str(error))
        for _ in range(rounds):
            # That there is a journal shows that the walk is over.
            journal = self.target / "quillet-report.journal"
            journal.unlink()
            process = self.start_program("--force", "--jobs", "2", self.source, self.target)
            swaps = 0
            while process.poll() is None:
                if swaps > 0 or journal.exists():
                    exchange(left, right)
                    swaps += 1
            if swaps % 2 == 1:
                exchange(left, right)
            _, error = process.communicate(timeout=TIME_LIMIT)
            assert process.returncode in (1, 2), error
            yield

    def test_a_race_with_links_in_the_target(self):
        spare = self.folder / "spare"
        for destination in (self.outside, self.source / "sub"):
            shutil.rmtree(self.target, ignore_errors=True)
            spare.unlink(missing_ok=True)
            spare.symlink_to(destination)
            for _ in self.run_while_names_are_swapped(self.target / "sub", spare):
                self.expect_unharmed()
                assert self.report()["format"] == "quillet-report"

    @pytest.mark.parametrize("name", ("sub", "a"), ids=row_name)
    def test_a_race_with_folders_of_the_source_in_the_target(self, name):
        shutil.rmtree(self.target, ignore_errors=True)
        for _ in self.run_while_names_are_swapped(self.target / "sub", self.source / name):
            self.expect_unharmed()

    def test_a_race_with_links_in_the_source(self):
        spare = self.folder / "spare"
        spare.symlink_to(self.outside)
        for _ in self.run_while_names_are_swapped(self.source / "sub", spare):
            self.expect_unharmed()
            self.expect_no_secrets()


class TestLoad(MigrateCase):
    def test_memory_is_a_few_times_that_of_a_file(self):
        if is_sanitized(PROGRAM):
            pytest.skip("the sanitizer keeps memory that was given back")
        # One large file of commands that are all in the report. It is kept while it is in work, and
        # so is where its commands stand, but neither its result nor what is told about them.
        self.create("big.syn", TABLES * 400000)
        size = (self.source / "big.syn").stat().st_size
        script = ("import resource, subprocess, sys; "
                  "status = subprocess.run(sys.argv[1:]).returncode; "
                  "print(status, resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss)")

        def memory(target):
            run = subprocess.run(
                [sys.executable, "-c", script, *self.command("--quiet", self.source, target)],
                timeout=TIME_LIMIT, check=True, **self.options())
            status, kibibytes = map(int, run.stdout.split())
            assert status == 0
            return kibibytes * 1024

        assert memory(self.target) < 40 * MEBIBYTE + 4 * size
        assert (self.target / "quillet-report.json").stat().st_size > 100 * MEBIBYTE
        # One without a legacy command is not kept, whatever its size.
        self.create("big.syn", ORDINARY * 4000000)
        assert memory(self.folder / "target-2") < 40 * MEBIBYTE
        # What its commands were in the last run is looked up when it has changed.
        assert memory(self.target) < 40 * MEBIBYTE + 4 * size
