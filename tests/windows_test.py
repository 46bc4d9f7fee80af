#!/usr/bin/env python3
"""What only Windows does: runs the program under wine, as tests/program_test.py runs it on Linux.

usage: QUILLET_PROGRAM=PROGRAM pytest-3 tests/windows_test.py [-k TEST]

Names are given as on Linux; wine shows the root folder as drive Z.
"""

import os
import subprocess

import pytest

from support.foldercase import TIME_LIMIT, FolderCase, program, row_name

PROGRAM = program("quillet.exe", "QUILLET_PROGRAM")

USAGE = b"Usage:\n quillet [-b | /b] inputFile outputFile \n"


class TestWindows(FolderCase):
    def run_program(self, *arguments, **streams):
        if "input" not in streams:
            streams.setdefault("stdin", subprocess.DEVNULL)
        streams.setdefault("stdout", subprocess.PIPE)
        # wine takes names from the character set of the locale.
        return subprocess.run([PROGRAM, *arguments], cwd=self.folder, timeout=TIME_LIMIT,
                              env={**os.environ, "LC_ALL": "C.UTF-8"},
                              stderr=subprocess.PIPE, check=False, **streams)

    def expect(self, run, status=0, output=b"", error=b""):
        assert (run.stderr, run.stdout, run.returncode) == (error, output, status)

    def test_the_switch(self):
        self.create("in", b"LIST\n x\nLIST y\n")
        for switch in ("/b", "-b"):
            self.expect(self.run_program(switch, "in", "out"))
            assert self.contents("out") == b"LIST\n x.\nLIST y.\n"
        self.expect(self.run_program("/x", "in", "out"), 1, error=USAGE)

    def test_names_outside_of_the_code_page(self):
        name = "größe Ελλάδα 한국.syn"
        self.create(name, b"LIST x\n")
        self.expect(self.run_program(name, "вывод.syn"))
        assert self.contents("вывод.syn") == b"LIST x.\n"
        missing = "нет.syn"
        error = b"Error opening input file " + missing.encode() + b"\n\n" + USAGE
        self.expect(self.run_program(missing, "out"), 1, error=error)

    def test_wildcards_are_names(self):
        self.create("in", b"LIST x\n")
        error = b"Error opening input file i*\n\n" + USAGE
        self.expect(self.run_program("i*", "out"), 1, error=error)

    def test_paths_with_backslashes(self):
        (self.folder / "sub").mkdir()
        self.create("in", b"LIST x\n")
        self.expect(self.run_program(".\\in", "sub\\out"))
        assert self.contents("sub/out") == b"LIST x.\n"

    def test_line_ends(self):
        self.create("in", b"LIST x\r\n\r\n  y.\nLIST z\r\n")
        self.expect(self.run_program("in", "out"))
        assert self.contents("out") == b"LIST x\r\n  y.\r\nLIST z.\r\n"

    def test_bytes_that_end_a_text_elsewhere(self):
        self.create("in", b"* a\x1ab.\nLIST z\n")
        self.expect(self.run_program("in", "out"))
        assert self.contents("out") == b"* a\x1ab.\nLIST z.\n"

    @pytest.mark.parametrize("name", ("in", "IN", ".\\in", "hard", "symbolic"), ids=row_name)
    def test_the_input_is_never_the_output(self, name):
        self.create("in", b"LIST x\n\n y\n")
        os.link(self.folder / "in", self.folder / "hard")
        (self.folder / "symbolic").symlink_to("in")
        error = b"Error opening output file " + name.encode() + b"\n\n" + USAGE
        self.expect(self.run_program("in", name), 1, error=error)
        assert self.contents("in") == b"LIST x\n\n y\n"

    def test_an_old_output_is_replaced(self):
        self.create("in", b"LIST x\n")
        self.create("out", b"a longer text than what replaces it\n" * 10)
        self.expect(self.run_program("in", "out"))
        assert self.contents("out") == b"LIST x.\n"

    def test_folders(self):
        self.create("in", b"LIST x\n")
        for name in (".", "nothing\\out", ""):
            error = b"Error opening output file " + name.encode() + b"\n\n" + USAGE
            self.expect(self.run_program("in", name), 1, error=error)

    def test_streams(self):
        text = b"LIST x.\n" * 100000
        run = self.run_program("/dev/stdin", "/dev/stdout", input=text)
        assert (run.stderr, run.returncode) == (b"", 0)
        assert run.stdout == text

    def test_a_closed_pipe(self):
        self.create("in", b"LIST x.\n" * 100000)
        reading, writing = os.pipe()
        os.close(reading)
        with os.fdopen(writing, "wb") as stream:
            run = self.run_program("in", "/dev/stdout", stdout=stream)
        self.expect(run, 1, output=None, error=b"Error writing output file /dev/stdout\n")

    def test_a_full_device(self):
        self.create("in", b"LIST x.\n" * 100000)
        with open("/dev/full", "wb") as stream:
            run = self.run_program("in", "/dev/stdout", stdout=stream)
        self.expect(run, 1, output=None, error=b"Error writing output file /dev/stdout\n")
