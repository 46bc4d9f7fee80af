#!/usr/bin/env python3
"""Runs the program as a user does: its command line, its files, its streams and its exit status.

usage: [QUILLET_PROGRAM=PROGRAM] pytest-3 tests/program_test.py [-k TEST]
"""

import ctypes
import filecmp
import hashlib
import mmap
import os
import pathlib
import pty
import re
import resource
import shutil
import socket
import subprocess
import termios
import threading

import pytest

from support.foldercase import (MEBIBYTE, TIME_LIMIT, FolderCase, is_sanitized, program,
                                row_name)

PROGRAM = program("quillet", "QUILLET_PROGRAM")

USAGE = b"Usage:\n quillet [-b | /b] inputFile outputFile \n"
FAILED = b"Syntax conversion failed. See output file for details.\n"

# A command whose conversion fails whatever the program learns, and what becomes of it.
FAILING = b"IGRAPH /NONSENSE.\n"
FAILED_FRAME = (
    b"COMMENT -- Begin commenting out IGRAPH command to be converted to GGRAPH.\n"
    b" *IGRAPH /NONSENSE\n"
    b" *.\n"
    b"COMMENT -- End commenting out IGRAPH command.\n"
    b"COMMENT -- Begin GGRAPH command.\n"
    b"*IGRAPH syntax is not valid, and can't be converted!.\n"
    b"COMMENT -- End GGRAPH command.\n"
)
RESULT_LINE = b"Igraph conversion failed!\n"

# Too much to be read or written at once.
COMMANDS = b"LIST x.\n" * 500000


def input_open_error(name):
    return b"Error opening input file " + os.fsencode(name) + b"\n\n" + USAGE


def output_open_error(name):
    return b"Error opening output file " + os.fsencode(name) + b"\n\n" + USAGE


def write_error(name):
    return b"Error writing output file " + os.fsencode(name) + b"\n"


STANDARD_OUTPUT_ERROR = b"Error writing standard output\n"


def read_error(name):
    return b"Error reading input file " + os.fsencode(name) + b"\n"


def tokenizing_error(line, column, reason):
    return (
        b"***** Error while tokenizing input syntax file. Line %d, column %d.\n***** %s.\n"
        % (line, column, reason)
    )


def open_terminal():
    """Both ends of a terminal; the test is skipped where the system has none to give."""
    try:
        return pty.openpty()
    except OSError as error:
        return pytest.skip(f"no terminal: {error}")


class ProgramCase(FolderCase):
    """Runs the program in the folder of the test."""

    def run_program(self, *arguments, environment=None, timeout=TIME_LIMIT, **streams):
        streams.setdefault("stdin", subprocess.DEVNULL)
        streams.setdefault("stdout", subprocess.PIPE)
        streams.setdefault("stderr", subprocess.PIPE)
        if "input" in streams:
            del streams["stdin"]
        return subprocess.run(
            [PROGRAM, *arguments],
            cwd=self.folder,
            env={"LC_ALL": "C"} if environment is None else environment,
            timeout=timeout,
            check=False,
            **streams,
        )

    def expect(self, run, status=0, output=b"", error=b""):
        assert (run.stderr, run.stdout, run.returncode) == (error, output, status)

    def state(self):
        """Everything in the folder: names, contents, times."""
        return {
            path.name: (hashlib.sha256(path.read_bytes()).digest(), path.stat().st_mtime_ns)
            for path in self.folder.iterdir()
            if path.is_file()
        }


class TestCommandLine(ProgramCase):
    def test_converts_one_file_into_another(self):
        self.create("in", b"\nLIST x\n\n  y.\nLIST z")
        self.expect(self.run_program("in", "out"))
        assert self.contents("out") == b"LIST x\n  y.\nLIST z.\n"

    def test_an_empty_file_becomes_a_line_end(self):
        self.create("in", b"")
        self.expect(self.run_program("in", "out"))
        assert self.contents("out") == b"\n"

    def test_shows_a_result_line_for_each_converted_command(self):
        self.create("in", FAILING + b"LIST x.\n" + FAILING)
        self.expect(self.run_program("in", "out"), output=2 * RESULT_LINE)
        assert self.contents("out") == FAILED_FRAME + b"LIST x.\n" + FAILED_FRAME

    def test_a_tables_command_has_a_result_line(self):
        self.create("in", b"TABLES.\n")
        run = self.run_program("in", "out")
        assert (run.stderr, run.returncode) == (b"", 0)
        assert run.stdout in (
            (b"Tables conversion failed!\n", b"Tables conversion was successful!\n"))

    @pytest.mark.parametrize(
        "switch",
        ("-b", "/b", "-bX", "/bx", "-batch", "/bb", "-b=no", "/b "),
        ids=row_name)
    def test_batch_mode(self, switch):
        self.create("in", b"LIST\n x\n+COMPUTE it's\nLIST y\n")
        self.expect(self.run_program(switch, "in", "out"))
        assert self.contents("out") == b"LIST\n x.\n+COMPUTE it's.\nLIST y.\n"
        (self.folder / "out").unlink()

    def test_batch_mode_is_off_without_the_switch(self):
        self.create("in", b"LIST\n x\nLIST y\n")
        self.expect(self.run_program("in", "out"))
        assert self.contents("out") == b"LIST\n x\nLIST y.\n"

    @pytest.mark.parametrize(
        "switch",
        ("-B", "/B", "-x", "/x", "--b", "b", "-", "/", "", "--batch", " -b", "\\b"),
        ids=row_name)
    def test_other_switches(self, switch):
        self.create("in", b"LIST.\n")
        self.create("out", b"old")
        before = self.state()
        self.expect(self.run_program(switch, "in", "out"), 1, error=USAGE)
        assert self.state() == before

    @pytest.mark.parametrize("arguments", (
        [],
        ["in"],
        ["-b"],
        ["-b", "in", "out", "more"],
        ["in", "out", "more", "still more"],
        ["in", "-b", "out"],
        ["in", "out", "-b"],
    ), ids=row_name)
    def test_wrong_numbers_of_arguments(self, arguments):
        self.create("in", b"LIST.\n")
        self.create("out", b"old")
        before = self.state()
        self.expect(self.run_program(*arguments), 1, error=USAGE)
        assert self.state() == before

    def test_two_arguments_are_always_files(self):
        self.create("-b", b"LIST.\n")
        self.expect(self.run_program("-b", "-x"))
        assert self.contents("-x") == b"LIST.\n"
        self.expect(self.run_program("/b", "out"), 1, error=input_open_error("/b"))

    def test_the_usage_text_does_not_depend_on_the_programs_name(self):
        link = self.folder / "convert-my-syntax"
        link.symlink_to(PROGRAM)
        run = subprocess.run([link], capture_output=True, check=False, timeout=TIME_LIMIT)
        self.expect(run, 1, error=USAGE)


class TestFile(ProgramCase):
    @pytest.mark.parametrize(
        "name",
        ("nothing", "nothing/nothing", "", "with a blank", "größe.syn", b"gr\xf6\xdfe"),
        ids=row_name)
    def test_a_missing_input(self, name):
        self.create("out", b"old")
        before = self.state()
        self.expect(self.run_program(name, "out"), 1, error=input_open_error(name))
        assert self.state() == before

    @pytest.mark.parametrize("name", ("folder", ".", "/"), ids=row_name)
    def test_a_folder_as_input(self, name):
        self.create("out", b"old")
        (self.folder / "folder").mkdir()
        self.expect(self.run_program(name, "out"), 1, error=input_open_error(name))
        assert self.contents("out") == b"old"

    @pytest.mark.parametrize("name", ("folder", ".", "nothing/out", "in/out", ""), ids=row_name)
    def test_an_output_that_cannot_be_opened(self, name):
        self.create("in", b"LIST.\n")
        (self.folder / "folder").mkdir()
        before = self.state()
        self.expect(self.run_program("in", name), 1, error=output_open_error(name))
        assert self.state() == before

    def test_files_without_permission(self):
        if os.geteuid() == 0:
            pytest.skip("every file is open to root")
        self.create("in", b"LIST.\n")
        self.create("closed", b"old").chmod(0)
        self.expect(self.run_program("closed", "out"), 1, error=input_open_error("closed"))
        self.expect(self.run_program("in", "closed"), 1, error=output_open_error("closed"))

    def test_a_running_program_is_no_output(self):
        self.create("in", b"LIST.\n")
        copy = shutil.copy(PROGRAM, self.folder / "copy")
        pathlib.Path(copy).chmod(0o755)
        run = subprocess.run(
            [copy, "in", "copy"], cwd=self.folder, capture_output=True, check=False
        )
        self.expect(run, 1, error=output_open_error("copy"))

    def test_the_input_is_opened_first(self):
        self.create("out", b"old")
        self.expect(
            self.run_program("nothing", "no-folder/out"), 1, error=input_open_error("nothing")
        )
        self.expect(self.run_program("nothing", "out"), 1, error=input_open_error("nothing"))
        assert self.contents("out") == b"old"
        self.expect(self.run_program("nothing", "new"), 1, error=input_open_error("nothing"))
        assert not (self.folder / "new").exists()

    def test_an_old_output_is_replaced(self):
        self.create("in", b"LIST.\n")
        self.create("out", b"a much longer text than what replaces it\n" * 100)
        self.expect(self.run_program("in", "out"))
        assert self.contents("out") == b"LIST.\n"

    # "{}" is the test's folder.
    NAMES_OF_ONE_FILE = ("in", "./in", "{}/in", "symbolic", "symbolic2", "hard", "here/in")

    @pytest.mark.parametrize("output_name", NAMES_OF_ONE_FILE)
    @pytest.mark.parametrize("input_name", NAMES_OF_ONE_FILE)
    def test_the_input_is_never_the_output(self, input_name, output_name):
        self.create("in", b"LIST x\n\n  y.\n" + FAILING)
        (self.folder / "symbolic").symlink_to("in")
        (self.folder / "symbolic2").symlink_to(self.folder / "symbolic")
        os.link(self.folder / "in", self.folder / "hard")
        (self.folder / "here").symlink_to(".")
        before = self.state()
        input_name, output_name = (
            name.format(self.folder) for name in (input_name, output_name))
        self.expect(
            self.run_program(input_name, output_name), 1, error=output_open_error(output_name))
        assert self.state() == before

    def test_an_output_may_be_a_link_to_another_file(self):
        self.create("in", b"LIST.\n")
        self.create("target", b"old")
        (self.folder / "link").symlink_to("target")
        self.expect(self.run_program("in", "link"))
        assert self.contents("target") == b"LIST.\n"
        assert (self.folder / "link").is_symlink()

    @pytest.mark.parametrize(
        "text",
        (b"LIST\n\n x.\n", b"LIST 'x\n", b"", FAILING, b"\xef\xbb\xbf* it's\r\n"),
        ids=row_name)
    def test_the_source_is_never_changed(self, text):
        path = self.create("in", text)
        os.utime(path, ns=(10**18, 10**18))
        path.chmod(0o400)
        self.run_program("in", "out")
        assert path.read_bytes() == text
        assert path.stat().st_mtime_ns == 10**18
        path.unlink()

    def test_a_tokenizing_error_keeps_what_came_before(self):
        self.create("in", b"LIST a.\n" + FAILING + b"LIST 'b.\nLIST c.\n")
        self.expect(self.run_program("in", "out"), 1, output=RESULT_LINE, error=FAILED)
        error = tokenizing_error(3, 9, b"Literal unclosed at the end of a line or command")
        assert self.contents("out") == b"LIST a.\n" + FAILED_FRAME + error

    def test_a_failed_conversion_does_not_change_the_status(self):
        self.create("in", FAILING)
        self.expect(self.run_program("in", "out"), 0, output=RESULT_LINE)

    def test_a_failed_assertion_is_shown_and_the_run_goes_on(self):
        self.create("in", b"LIST a b 1e999.\nLIST c.\n")
        run = self.run_program("in", "out")
        assert (run.stdout, run.returncode) == (b"", 0)
        assert re.search(
            rb"\AAssertion failed: errno != ERANGE, tavqtokenvector:[0-9]+\n\Z", run.stderr)
        assert self.contents("out") == b"LIST a b 1e999.\nLIST c.\n"


class TestStream(ProgramCase):
    @pytest.mark.parametrize("text", (b"", b"LIST x.\n", b"LIST x.\n" * 200000), ids=row_name)
    def test_reads_a_pipe(self, text):
        self.expect(self.run_program("/dev/stdin", "out", input=text))
        assert self.contents("out") == (text or b"\n")

    def test_the_whole_of_a_pipe_decides_its_code_page(self):
        text = "LIST é 1e.\n".encode()
        reason = b"Number has a trailing E[+|-] but no digits after that"
        self.expect(self.run_program("/dev/stdin", "out", input=text), 1, error=FAILED)
        assert self.contents("out") == tokenizing_error(1, 10, reason)
        text += b"* x.\n" * 100000 + b"* \xe9.\n"
        self.expect(self.run_program("/dev/stdin", "out", input=text), 1, error=FAILED)
        assert self.contents("out") == tokenizing_error(1, 11, reason)

    def test_reads_a_redirected_file(self):
        path = self.create("in", b"LIST x.\n")
        with path.open("rb") as stream:
            self.expect(self.run_program("/dev/stdin", "out", stdin=stream))
        assert self.contents("out") == b"LIST x.\n"

    def test_reads_a_redirected_file_from_where_it_stands(self):
        path = self.create("in", b"skipped line\nLIST x.\n")
        with path.open("rb", buffering=0) as stream:
            stream.readline()
            self.expect(self.run_program("/dev/stdin", "out", stdin=stream))
        assert self.contents("out") == b"LIST x.\n"

    def test_reads_a_socket(self):
        ours, theirs = socket.socketpair()
        with ours, theirs:
            ours.sendall(b"LIST x.\n")
            ours.shutdown(socket.SHUT_WR)
            self.expect(self.run_program("/dev/stdin", "out", stdin=theirs))
        assert self.contents("out") == b"LIST x.\n"

    def test_reads_a_named_pipe(self):
        os.mkfifo(self.folder / "fifo")
        writer = threading.Thread(target=lambda: self.create("fifo", b"LIST x.\n"))
        writer.start()
        self.expect(self.run_program("fifo", "out"))
        writer.join()
        assert self.contents("out") == b"LIST x.\n"

    def test_reads_devices(self):
        self.expect(self.run_program("/dev/null", "out"))
        assert self.contents("out") == b"\n"

    def test_writes_a_pipe_and_result_lines_after_it(self):
        self.create("in", FAILING + b"LIST x.\n" + FAILING)
        text = FAILED_FRAME + b"LIST x.\n" + FAILED_FRAME + 2 * RESULT_LINE
        self.expect(self.run_program("in", "/dev/stdout"), output=text)

    def test_writes_a_large_text_into_a_pipe(self):
        text = FAILING + b"LIST x.\n" * 200000
        run = self.run_program("/dev/stdin", "/dev/stdout", input=text)
        assert (run.returncode, run.stderr) == (0, b"")
        assert run.stdout == FAILED_FRAME + text[len(FAILING) :] + RESULT_LINE

    def test_writes_a_redirected_file_and_result_lines_after_it(self):
        self.create("in", FAILING)
        with (self.folder / "out").open("wb") as stream:
            self.expect(self.run_program("in", "/dev/stdout", stdout=stream), output=None)
        assert self.contents("out") == FAILED_FRAME + RESULT_LINE

    @pytest.mark.parametrize("mode", ("wb", "ab"), ids=row_name)
    def test_keeps_what_a_redirected_file_holds(self, mode):
        self.create("in", FAILING)
        with (self.folder / "out").open(mode, buffering=0) as stream:
            stream.write(b"before\n")
            self.expect(self.run_program("in", "/dev/stdout", stdout=stream), output=None)
            stream.seek(0, os.SEEK_END)
            stream.write(b"after\n")
        assert self.contents("out") == (
            b"before\n" + FAILED_FRAME + RESULT_LINE + b"after\n")
        (self.folder / "out").unlink()

    @pytest.mark.parametrize("name", ("/dev/fd/1", "/proc/self/fd/1"))
    def test_standard_output_under_other_names(self, name):
        if not os.path.exists(name):
            pytest.skip(f"this system has no {name}")
        self.create("in", FAILING)
        self.expect(self.run_program("in", name), output=FAILED_FRAME + RESULT_LINE)

    def test_standard_output_that_is_the_named_file(self):
        self.create("in", FAILING)
        with (self.folder / "out").open("wb") as stream:
            self.run_program("in", "out", stdout=stream)
        assert FAILED_FRAME in self.contents("out")

    def test_from_pipe_to_pipe(self):
        self.expect(
            self.run_program("-b", "/dev/stdin", "/dev/stdout", input=b"LIST\n x\nLIST y\n"),
            output=b"LIST\n x.\nLIST y.\n",
        )

    def test_a_tokenizing_error_in_a_stream(self):
        error = tokenizing_error(2, 9, b"Literal unclosed at the end of a line or command")
        self.expect(
            self.run_program("/dev/stdin", "/dev/stdout", input=FAILING + b"LIST 'b.\n"),
            1,
            output=FAILED_FRAME + error + RESULT_LINE,
            error=FAILED,
        )

    def test_a_redirected_input_is_not_the_output(self):
        path = self.create("in", b"LIST x\n\n  y.\n")
        before = self.state()
        with path.open("rb") as stream:
            self.expect(
                self.run_program("/dev/stdin", "in", stdin=stream),
                1,
                error=output_open_error("in"),
            )
        with path.open("ab") as stream:
            run = self.run_program("in", "/dev/stdout", stdout=stream)
        self.expect(run, 1, output=None, error=output_open_error("/dev/stdout"))
        with path.open("rb") as source, path.open("ab") as target:
            run = self.run_program("/dev/stdin", "/dev/stdout", stdin=source, stdout=target)
        self.expect(run, 1, output=None, error=output_open_error("/dev/stdout"))
        assert self.state() == before

    @pytest.mark.parametrize(
        "closed",
        ("<&-", ">&-", "2>&-", "<&- >&-", "<&- 2>&-", "<&- >&- 2>&-"),
        ids=row_name)
    def test_closed_standard_streams(self, closed):
        # A file takes the first number that is free, which must not make it a standard stream.
        self.create("in", FAILING + b"LIST a b 1e999.\n")
        run = self.run_closed(closed)
        # The result line needs standard output.
        assert run.returncode == (1 if ">&-" in closed.split() else 0)
        is_told = ">&-" in closed.split() and "2>&-" not in closed.split()
        assert (STANDARD_OUTPUT_ERROR in run.stderr) == is_told
        assert self.contents("out") == FAILED_FRAME + b"LIST a b 1e999.\n"
        (self.folder / "out").unlink()

    @pytest.mark.parametrize("closed", (">&-", "<&- >&- 2>&-"), ids=row_name)
    def test_without_result_lines_no_standard_output_is_needed(self, closed):
        self.create("in", b"LIST x.\n")
        self.expect(self.run_closed(closed))
        assert self.contents("out") == b"LIST x.\n"

    def run_closed(self, closed):
        return subprocess.run(
            ["sh", "-c", f'exec "$@" {closed}', "sh", PROGRAM, "in", "out"],
            cwd=self.folder,
            capture_output=True,
            check=False,
            timeout=TIME_LIMIT,
        )

    def test_a_closed_standard_input_cannot_be_opened(self):
        run = subprocess.run(
            ["sh", "-c", 'exec "$@" <&-', "sh", PROGRAM, "/dev/stdin", "out"],
            cwd=self.folder,
            capture_output=True,
            check=False,
            timeout=TIME_LIMIT,
        )
        self.expect(run, 1, error=input_open_error("/dev/stdin"))
        assert not (self.folder / "out").exists()

    def test_one_device_for_both(self):
        self.expect(self.run_program("/dev/null", "/dev/null"))

    def test_one_terminal_for_both(self):
        ours, theirs = open_terminal()
        settings = termios.tcgetattr(theirs)
        settings[1] &= ~termios.OPOST
        settings[3] &= ~termios.ECHO
        termios.tcsetattr(theirs, termios.TCSANOW, settings)
        os.write(ours, b"LIST x\n  y.\n\x04")
        try:
            # Ctrl-D is typed once; a program that reads on after it would wait for ever.
            run = self.run_program(
                "/dev/stdin", "/dev/stdout", stdin=theirs, stdout=theirs, timeout=10
            )
            self.expect(run, output=None)
            assert os.read(ours, 1000) == b"LIST x\n  y.\n"
        finally:
            os.close(theirs)
            os.close(ours)


class TestWriteError(ProgramCase):
    @pytest.mark.parametrize("text", (b"", b"LIST x.\n", COMMANDS), ids=row_name)
    def test_a_full_device(self, text):
        if not os.path.exists("/dev/full"):
            pytest.skip("this system has no full device")
        self.create("in", text)
        self.expect(self.run_program("in", "/dev/full"), 1, error=write_error("/dev/full"))

    def test_a_full_device_behind_standard_output(self):
        if not os.path.exists("/dev/full"):
            pytest.skip("this system has no full device")
        self.create("in", b"LIST x.\n")
        with open("/dev/full", "wb") as stream:
            run = self.run_program("in", "/dev/stdout", stdout=stream)
        self.expect(run, 1, output=None, error=write_error("/dev/stdout"))

    def limit_files(self):
        size = 64 * 1024
        resource.setrlimit(resource.RLIMIT_FSIZE, (size, size))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))

    def test_a_file_that_grows_too_large(self):
        self.create("in", COMMANDS)
        run = self.run_program("in", "out", preexec_fn=self.limit_files)
        self.expect(run, 1, error=write_error("out"))
        assert self.contents("out")[:16] == b"LIST x.\nLIST x.\n"

    @pytest.mark.parametrize(
        "text, frames",
        ((FAILING, FAILED_FRAME), (FAILING * 5000, FAILED_FRAME * 5000)),
        ids=row_name)
    def test_result_lines_on_a_full_device(self, text, frames):
        if not os.path.exists("/dev/full"):
            pytest.skip("this system has no full device")
        self.create("in", text)
        with open("/dev/full", "wb") as stream:
            run = self.run_program("in", "out", stdout=stream)
        self.expect(run, 1, output=None, error=STANDARD_OUTPUT_ERROR)
        assert self.contents("out") == frames

    def test_a_full_device_and_no_result_lines(self):
        if not os.path.exists("/dev/full"):
            pytest.skip("this system has no full device")
        self.create("in", b"LIST x.\n")
        with open("/dev/full", "wb") as stream:
            self.expect(self.run_program("in", "out", stdout=stream), output=None)

    def test_the_output_and_result_lines_on_one_full_device(self):
        if not os.path.exists("/dev/full"):
            pytest.skip("this system has no full device")
        self.create("in", FAILING)
        with open("/dev/full", "wb") as stream:
            run = self.run_program("in", "/dev/stdout", stdout=stream)
        self.expect(run, 1, output=None, error=write_error("/dev/stdout"))

    def test_result_lines_after_an_error(self):
        if not os.path.exists("/dev/full"):
            pytest.skip("this system has no full device")
        self.create("in", FAILING + b"LIST 'b.\n")
        with open("/dev/full", "wb") as stream:
            run = self.run_program("in", "out", stdout=stream)
        self.expect(run, 1, output=None, error=FAILED + STANDARD_OUTPUT_ERROR)

    def test_result_lines_into_a_closed_pipe(self):
        self.create("in", FAILING * 3)
        reading, writing = os.pipe()
        os.close(reading)
        with os.fdopen(writing, "wb") as stream:
            run = self.run_program("in", "out", stdout=stream)
        self.expect(run, 1, output=None, error=STANDARD_OUTPUT_ERROR)
        assert self.contents("out") == FAILED_FRAME * 3

    def test_result_lines_into_a_file_that_grows_too_large(self):
        self.create("in", FAILING)
        with self.create("lines", b"x" * 64 * 1024).open("ab") as stream:
            run = self.run_program("in", "out", stdout=stream, preexec_fn=self.limit_files)
        self.expect(run, 1, output=None, error=STANDARD_OUTPUT_ERROR)
        assert self.contents("out") == FAILED_FRAME

    @pytest.mark.parametrize("text", (b"LIST x.\n", COMMANDS), ids=row_name)
    def test_a_closed_pipe(self, text):
        self.create("in", text)
        reading, writing = os.pipe()
        os.close(reading)
        with os.fdopen(writing, "wb") as stream:
            run = self.run_program("in", "/dev/stdout", stdout=stream)
        self.expect(run, 1, output=None, error=write_error("/dev/stdout"))

    def test_a_pipe_that_is_closed_in_the_middle(self):
        self.create("in", COMMANDS)
        reading, writing = os.pipe()
        with subprocess.Popen(
            [PROGRAM, "in", "/dev/stdout"],
            cwd=self.folder,
            stdout=writing,
            stderr=subprocess.PIPE,
        ) as process:
            os.close(writing)
            assert os.read(reading, 8) == b"LIST x.\n"
            os.close(reading)
            assert process.stderr.read() == write_error("/dev/stdout")
            assert process.wait(TIME_LIMIT) == 1


class TestReadError(ProgramCase):
    def test_an_input_that_cannot_be_read(self):
        if not os.path.exists("/proc/self/mem"):
            pytest.skip("this system has no file whose reading fails")
        run = self.run_program("/proc/self/mem", "out")
        self.expect(run, 1, error=read_error("/proc/self/mem"))

    def test_an_input_that_fails_in_the_middle(self):
        # The memory of a process is a file whose reading fails where nothing is mapped: two pages
        # of text, and nothing after them.
        text = FAILING + b"LIST x.\n" * 2000
        size = 2 * mmap.PAGESIZE
        try:
            library = ctypes.CDLL(None, use_errno=True)
            memory = mmap.mmap(-1, size + mmap.PAGESIZE)
            memory.write(text[:size])
            address = ctypes.addressof(ctypes.c_char.from_buffer(memory))
            unmapped = library.munmap(
                ctypes.c_void_p(address + size), ctypes.c_size_t(mmap.PAGESIZE)
            )
            stream = open("/proc/self/mem", "rb", buffering=0)
            stream.seek(address)
        except (OSError, AttributeError) as error:
            pytest.skip(f"no file whose reading fails in the middle: {error}")
        with stream:
            assert unmapped == 0
            assert stream.read(len(FAILING)) == FAILING
            stream.seek(address + size)
            with pytest.raises(OSError):
                stream.read(1)
            stream.seek(address)
            run = self.run_program("/dev/stdin", "out", stdin=stream)
        assert (run.stderr, run.returncode) == (read_error("/dev/stdin"), 1)
        whole = FAILED_FRAME + text[len(FAILING) : size]
        result = self.contents("out")
        assert result in (b"", b"\n") or whole.startswith(result)

    def change_while_read(self, text, change):
        """Runs the program, whose output is a pipe. With the first bytes of that the input has been
        read once, and the second reading has to wait for the pipe to be emptied."""
        path = self.create("in", text)
        os.utime(path, ns=(10**18, 10**18))
        with subprocess.Popen(
            [PROGRAM, "in", "/dev/stdout"],
            cwd=self.folder,
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
        ) as process:
            output = process.stdout.read(1)
            change(path)
            output += process.stdout.read()
            error = process.stderr.read()
            return process.wait(TIME_LIMIT), error, output

    @staticmethod
    def overwrite(path):
        with path.open("r+b") as stream:
            stream.seek(len(COMMANDS) - 100)
            stream.write(b"y")

    @staticmethod
    def append(path):
        with path.open("ab") as stream:
            stream.write(b"LIST x.\n")

    @staticmethod
    def cut_in_half(path):
        os.truncate(path, len(COMMANDS) // 2)

    @staticmethod
    def cut_last_command(path):
        os.truncate(path, len(COMMANDS) - 8)

    @staticmethod
    def empty(path):
        os.truncate(path, 0)

    @pytest.mark.parametrize(
        "change", ("append", "overwrite", "cut_in_half", "cut_last_command", "empty"))
    @pytest.mark.parametrize("first", (b"", b"* \xe9.\n"), ids=("UTF-8", "Latin-1"))
    def test_an_input_that_changes_while_it_is_read(self, first, change):
        status, error, output = self.change_while_read(first + COMMANDS, getattr(self, change))
        assert (status, error) == (1, read_error("in"))
        # Nothing is cut within a command.
        assert output.endswith(b"LIST x.\n")

    def test_an_input_that_is_only_looked_at(self):
        text = COMMANDS
        status, error, output = self.change_while_read(text, pathlib.Path.read_bytes)
        assert (status, error) == (0, b"")
        assert output == text

    @pytest.mark.parametrize("text", (
        "LIST x.\n".encode("utf-16"),
        b"\xff\xfe" + "TABLES /TABLE a.\n".encode("utf-16-le"),
        b"\xfe\xff" + "TABLES /TABLE a.\n".encode("utf-16-be"),
        "LIST x.\n".encode("utf-32"),
        b"\xff\xfe",
        b"\xfe\xff",
    ), ids=row_name)
    def test_utf16_is_refused(self, text):
        self.create("in", text)
        self.expect(self.run_program("in", "out"), 1, error=read_error("in"))
        assert self.contents("out") == b""
        run = self.run_program("/dev/stdin", "out", input=text)
        self.expect(run, 1, error=read_error("/dev/stdin"))
        assert self.contents("out") == b""

    def test_a_terminal_that_hangs_up(self):
        # Reading the controlling side of a terminal fails once its other side is closed.
        ours, theirs = open_terminal()
        settings = termios.tcgetattr(theirs)
        settings[1] &= ~termios.OPOST
        termios.tcsetattr(theirs, termios.TCSANOW, settings)
        os.write(theirs, b"LIST x.\nLIST\n y")
        os.close(theirs)
        run = self.run_program("/dev/stdin", "out", stdin=ours)
        os.close(ours)
        assert (run.stderr, run.returncode) == (read_error("/dev/stdin"), 1)
        assert self.contents("out") in (b"", b"\n", b"LIST x.\n")


class LargeInputCase(ProgramCase):
    """Gives each test large inputs, and the program with a limit to what it may have of `KIND`."""

    SIZE = 0
    LIMIT = 0
    KIND = None

    def setup_method(self):
        super().setup_method()
        if is_sanitized(PROGRAM):
            self.teardown_method()
            pytest.skip("the sanitizer keeps memory that was given back")

    def run_limited(self, *arguments, **streams):
        def limit():
            resource.setrlimit(self.KIND, (self.LIMIT, self.LIMIT))
            resource.setrlimit(resource.RLIMIT_CORE, (0, 0))

        return self.run_program(*arguments, preexec_fn=limit, **streams)

    def create_large(self, before, part, behind, size=None):
        with (self.folder / "in").open("wb") as stream:
            stream.write(before)
            block = part * (MEBIBYTE // len(part))
            for _ in range((size or self.SIZE) // len(block)):
                stream.write(block)
            stream.write(behind)


class TestMemory(LargeInputCase):
    """Large inputs, converted with room for little more than the largest command.

    The system limits the memory that the program may take for its data. Its peak is not measured:
    it would be counted from the moment before the program replaces this interpreter, which is
    larger.
    """

    SIZE = 200 * MEBIBYTE
    LIMIT = 8 * MEBIBYTE
    KIND = resource.RLIMIT_DATA

    def expect_copied(self):
        assert filecmp.cmp(self.folder / "in", self.folder / "out", shallow=False)

    def test_the_limit_is_in_force(self):
        self.create_large(b"LIST\n", b" x\n", b" y.\n", size=2 * self.LIMIT)
        assert self.run_limited("in", "out").returncode != 0

    def test_inline_data_of_any_size(self):
        self.create_large(b"BEGIN DATA.\n", b"1 2 3 'label' 4.5\n", b"END DATA.\n")
        self.expect(self.run_limited("in", "out"))
        self.expect_copied()

    def test_any_number_of_commands(self):
        self.create_large(b"", b"RECODE x y (1=2) (ELSE=COPY).\n", b"")
        self.expect(self.run_limited("in", "out"))
        self.expect_copied()

    def test_a_large_pipe(self):
        self.create_large(b"BEGIN DATA.\n", b"1 2 3 'label' 4.5\n", b"END DATA.\n")
        with subprocess.Popen(["cat", "in"], cwd=self.folder, stdout=subprocess.PIPE) as feeder:
            run = self.run_limited("/dev/stdin", "out", stdin=feeder.stdout)
        self.expect(run)
        self.expect_copied()


class TestOutOfMemory(LargeInputCase):
    """A command that never ends, in less address space than it needs.

    What comes before it is converted; that it could not be read is told like a text that cannot be
    cut into tokens.
    """

    SIZE = 100 * MEBIBYTE
    LIMIT = 48 * MEBIBYTE
    KIND = resource.RLIMIT_AS
    BEFORE = b"\nLIST x.\n" + FAILING
    MESSAGE = b"Not enough memory for the command that begins in line 4.\n"

    def expect_told(self, *switches, beginning, part):
        self.create_large(self.BEFORE + beginning, part, b"")
        self.expect(self.run_limited(*switches, "in", "out"), 1, RESULT_LINE, self.MESSAGE)
        assert self.contents("out") == b"LIST x.\n" + FAILED_FRAME + b"***** " + self.MESSAGE

    def test_the_limit_leaves_room_for_others(self):
        self.create("in", self.BEFORE)
        self.expect(self.run_limited("in", "out"), 0, RESULT_LINE)

    def test_a_command_of_many_lines(self):
        self.expect_told(beginning=b"LIST\n", part=b" x\n")

    def test_a_command_of_one_line(self):
        self.expect_told(beginning=b"LIST", part=b" x")

    def test_a_command_of_many_lines_in_batch_mode(self):
        self.expect_told("-b", beginning=b"LIST\n", part=b" x\n")

    def test_a_comment(self):
        self.expect_told(beginning=b"* A comment\n", part=b" of many lines\n")

    def test_a_tables_command(self):
        self.expect_told(beginning=b"TABLES\n", part=b" /TABLE=x\n")

    def test_an_igraph_command(self):
        self.expect_told(beginning=b"IGRAPH\n", part=b" /X1=VAR(a)\n")

    def test_a_pipe(self):
        self.create_large(self.BEFORE + b"LIST\n", b" x\n", b"")
        with subprocess.Popen(["cat", "in"], cwd=self.folder, stdout=subprocess.PIPE) as feeder:
            run = self.run_limited("/dev/stdin", "out", stdin=feeder.stdout)
        self.expect(run, 1, RESULT_LINE, self.MESSAGE)
        assert self.contents("out") == b"LIST x.\n" + FAILED_FRAME + b"***** " + self.MESSAGE

    # Its text has room enough, its tokens have not.
    def test_a_conversion_alone(self):
        self.create("in", b"TABLES /TABLE=x" + b"+x" * 1500000 + b".\n" + FAILING)
        self.expect(self.run_limited("in", "out"), 0, b"Tables conversion failed!\n" + RESULT_LINE)
        assert re.search(
            rb"\nCOMMENT -- Begin CTABLES command\.\n(\*{5} .*Line 1, column \d+\.\n)?"
            rb"\*{5} The table expression is too large to be converted\.\n"
            rb"COMMENT -- End CTABLES command\.\n" + re.escape(FAILED_FRAME) + rb"\Z",
            self.contents("out")[-1000:])


class TestLocale(ProgramCase):
    """The user's locale names the code page of texts that are not UTF-8, and nothing else."""

    def build_locale(self, source, character_map):
        """Makes a locale for this test alone; returns the environment that selects it."""
        if shutil.which("localedef") is None:
            pytest.skip("localedef is not installed")
        name = f"{source}.{character_map}"
        run = subprocess.run(
            ["localedef", "-c", "-i", source, "-f", character_map, "--no-archive"]
            + [str(self.folder / name)],
            capture_output=True,
            check=False,
        )
        if not (self.folder / name / "LC_CTYPE").exists():
            pytest.skip(f"no {name} could be made: {run.stderr.decode(errors='replace')}")
        # The C library itself never frees its copy of LOCPATH.
        return {
            "LOCPATH": str(self.folder),
            "LC_ALL": name,
            "ASAN_OPTIONS": "detect_leaks=0",
        }

    def convert(self, text, environment):
        self.create("in", text)
        run = self.run_program("in", "out", environment=environment)
        return run.returncode, self.contents("out")

    NUMBER = b"Number has a trailing E[+|-] but no digits after that"

    @pytest.mark.parametrize("environment", (
        {},
        {"LC_ALL": "C"},
        {"LC_ALL": "POSIX"},
        {"LC_ALL": "C.UTF-8"},
        {"LANG": "C.UTF-8"},
        {"LC_CTYPE": "C.UTF-8"},
        {"LC_ALL": "xx_XX.no-such-locale"},
    ), ids=row_name)
    # The column counts the letter once, whether it has one byte or two.
    @pytest.mark.parametrize("text, expected", (
        (b"LIST \xe9 1e.\n", (1, tokenizing_error(1, 10, NUMBER))),
        ("LIST é 1e.\n".encode(), (1, tokenizing_error(1, 10, NUMBER))),
        (b"LIST '\xb0\xa1' 1.5.\n", (0, b"LIST '\xb0\xa1' 1.5.\n")),
    ), ids=("Latin-1", "UTF-8", "bytes"))
    def test_texts_are_the_same_under_all_plain_and_utf8_locales(
            self, environment, text, expected):
        assert self.convert(text, environment) == expected

    def test_a_double_byte_code_page(self):
        # The second byte of this character is a backslash, which is no syntax on its own.
        environment = self.build_locale("zh_TW", "BIG5")
        text = b"LIST x \xa5\x5c y.\n"
        assert self.convert(text, environment) == (0, text)
        status, output = self.convert(text, {"LC_ALL": "C"})
        assert (status, output) == (
            1,
            tokenizing_error(1, 9, b"Encountered a character that is not valid in Korvel syntax"))

    def test_columns_count_the_characters_of_the_code_page(self):
        environment = self.build_locale("ko_KR", "EUC-KR")
        reason = b"Literal unclosed at the end of a line or command"
        text = b"LIST \xb0\xa1\xb3\xaa x 'y.\n"
        assert self.convert(text, environment) == (1, tokenizing_error(1, 11, reason))
        assert self.convert(text, {"LC_ALL": "C"}) == (1, tokenizing_error(1, 13, reason))

    def test_utf8_is_utf8_under_every_locale(self):
        environment = self.build_locale("ko_KR", "EUC-KR")
        reason = b"Literal unclosed at the end of a line or command"
        text = "LIST 가나 x 'y.\n".encode()
        assert self.convert(text, environment) == (1, tokenizing_error(1, 11, reason))

    def test_numbers_have_a_period_under_every_locale(self):
        environment = self.build_locale("de_DE", "ISO-8859-1")
        text = b"LIST x y 1.5 .5 5. 1.5e3 gr\xf6\xdfe.\n"
        assert self.convert(text, environment) == (0, text)
