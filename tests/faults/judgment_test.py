#!/usr/bin/env python3
"""Whether the judgment about runs under faults lets through what is right and nothing else.

usage: [QUILLET_PROGRAM=PROGRAM] pytest-3 tests/faults/judgment_test.py [-k TEST]

Shows it runs that never were: outputs, messages and exit statuses made up from those of a real one.
"""

import dataclasses
import pathlib
import shutil
import tempfile

import injection
import quilletfaults

from support.foldercase import program

PROGRAM = pathlib.Path(program("quillet", "QUILLET_PROGRAM"))

ONE_ALLOCATION = injection.Fault("allocation", "ENOMEM", "once", 1)
ALL_ALLOCATIONS = injection.Fault("allocation", "ENOMEM", "from", 1)
WRITE = injection.Fault("write", "ENOSPC", "from", 1)
SHORT_WRITE = injection.Fault("write", "short", "once", 1)
READ = injection.Fault("read", "EIO", "once", 1)
STATUS = injection.Fault("fstat", "EIO", "once", 1)

MESSAGE = b"Not enough memory for the command that begins in line %d.\n"
WRITE_ERROR = b"Error writing output file out\n"
READ_ERROR = b"Error reading input file in\n"
OPEN_ERROR = b"Error opening output file out\n\nUsage:\n quillet [-b | /b] inputFile outputFile \n"


class TestJudgment:
    @classmethod
    def setup_class(cls):
        cls.temporary = pathlib.Path(tempfile.mkdtemp(prefix="quillet-judgment-"))
        cls.folder = cls.temporary / "test"
        # Only the library would be missing, and nothing that is looked at here comes from it.
        library = PROGRAM.parent / "libquillet_faults.so"
        cls.test = quilletfaults.QuilletTest(PROGRAM, library, quilletfaults.SCENARIOS[0],
                                             cls.folder)
        cls.blocks = cls.test.blocks
        cls.converted = [number for number, block in enumerate(cls.blocks)
                         if b"\nCTABLES" in block.text or b"\nGGRAPH" in block.text]

    @classmethod
    def teardown_class(cls):
        shutil.rmtree(cls.temporary)

    def judge(self, fault, status, output, lines, error=b"", leaked=0, text=None):
        (self.folder / "in").write_bytes(self.test.text if text is None else text)
        (self.folder / "out").write_bytes(output)
        record = dataclasses.replace(
            self.test.baseline.record,
            allocations=self.test.baseline.record.allocations + leaked)
        return self.test.check(injection.Run(status, lines, error, record), fault, self.folder)

    def expect_right(self, *arguments, **options):
        assert self.judge(*arguments, **options) == []

    def expect_wrong(self, *arguments, **options):
        assert self.judge(*arguments, **options) != []

    def output(self, *too_large):
        """What the program would write if these blocks were too large."""
        return b"".join(self.too_large(block) if number in too_large else block.text
                        for number, block in enumerate(self.blocks))

    @staticmethod
    def too_large(block):
        kind = b"CTABLES" if block.command == "Tables" else b"GGRAPH"
        begin = b"COMMENT -- Begin " + kind + b" command.\n"
        reason = (b"***** The table expression is too large to be converted.\n"
                  if kind == b"CTABLES" else
                  b"*IGRAPH conversion is not possible: the command is too large.\n")
        frame = block.text[: block.text.index(begin) + len(begin)]
        return frame + reason + b"COMMENT -- End " + kind + b" command.\n"

    def lines(self, *too_large, count=None):
        count = len(self.blocks) if count is None else count
        return b"".join(self.test.result_lines(count, set(too_large)))

    def beginning(self, count):
        return b"".join(block.text for block in self.blocks[:count])

    def test_the_scenario_converts_commands_of_both_kinds(self):
        assert {self.blocks[number].command for number in self.converted} == {"Tables", "Igraph"}

    def test_what_is_undisturbed_is_right(self):
        for fault in (None, ONE_ALLOCATION, WRITE, READ, SHORT_WRITE):
            self.expect_right(fault, 0, self.output(), self.lines())

    def test_an_end_by_a_signal_is_wrong(self):
        self.expect_wrong(ONE_ALLOCATION, -6, self.output(), self.lines())

    def test_a_run_that_hangs_is_wrong(self):
        self.expect_wrong(ONE_ALLOCATION, None, self.output(), self.lines())

    def test_another_exit_status_is_wrong(self):
        self.expect_wrong(READ, 2, b"", b"", READ_ERROR)

    def test_a_changed_input_is_wrong(self):
        self.expect_wrong(READ, 0, self.output(), self.lines(), text=b"")

    def test_a_leak_is_wrong(self):
        self.expect_wrong(ONE_ALLOCATION, 0, self.output(), self.lines(), leaked=1)

    def test_a_message_with_success_is_wrong(self):
        self.expect_wrong(READ, 0, self.output(), self.lines(), READ_ERROR)

    def test_one_command_may_be_too_large(self):
        for number in self.converted:
            self.expect_right(ONE_ALLOCATION, 0, self.output(number), self.lines(number))

    def test_of_two_commands_one_is_too_many(self):
        two = self.converted[:2]
        self.expect_wrong(ONE_ALLOCATION, 0, self.output(*two), self.lines(*two))
        self.expect_right(ALL_ALLOCATIONS, 0, self.output(*two), self.lines(*two))

    def test_a_command_is_too_large_for_lack_of_memory_alone(self):
        one = self.converted[0]
        self.expect_wrong(READ, 0, self.output(one), self.lines(one))

    def test_the_result_line_must_say_so(self):
        self.expect_wrong(ONE_ALLOCATION, 0, self.output(self.converted[0]), self.lines())

    def test_a_missing_end_is_no_success(self):
        self.expect_wrong(ONE_ALLOCATION, 0, self.beginning(len(self.blocks) - 1), self.lines())
        self.expect_wrong(ONE_ALLOCATION, 0, b"", b"")

    def test_what_is_left_of_an_earlier_output_is_no_success(self):
        self.expect_wrong(STATUS, 0, self.output() + b"left.\n", self.lines())

    def test_missing_result_lines_are_no_success(self):
        self.expect_wrong(WRITE, 0, self.output(), b"")
        self.expect_right(WRITE, 1, self.output(), b"", WRITE_ERROR)

    def test_memory_may_end_at_any_command(self):
        for count, block in enumerate(self.blocks):
            message = MESSAGE % block.start
            lines = self.lines(count=count)
            output = self.beginning(count) + b"***** " + message
            self.expect_right(ONE_ALLOCATION, 1, output, lines, message)
            self.expect_wrong(ONE_ALLOCATION, 1, output, lines, b"")
            self.expect_wrong(ONE_ALLOCATION, 1, self.beginning(count), lines, message)
            self.expect_wrong(READ, 1, output, lines, message)
            self.expect_wrong(ONE_ALLOCATION, 1, output, lines + b"x\n", message)

    def test_the_message_names_the_command(self):
        message = MESSAGE % (self.blocks[2].start + 1)
        output = self.beginning(2) + b"***** " + message
        self.expect_wrong(ONE_ALLOCATION, 1, output, self.lines(count=2), message)

    def test_the_frame_may_stand_before_memory_ends(self):
        number = self.converted[0]
        message = MESSAGE % self.blocks[number].start
        frame = self.blocks[number].text.splitlines(keepends=True)[0]
        for text, expect in ((frame, self.expect_right), (frame[:-2], self.expect_wrong),
                             (b"x\n", self.expect_wrong)):
            expect(ONE_ALLOCATION, 1, self.beginning(number) + text + b"***** " + message,
                   self.lines(count=number), message)

    def test_memory_may_end_after_a_command_that_was_too_large(self):
        number = self.converted[0]
        message = MESSAGE % self.blocks[number + 1].start
        output = self.beginning(number) + self.too_large(self.blocks[number])
        self.expect_right(ALL_ALLOCATIONS, 1, output + b"***** " + message,
                          self.lines(number, count=number + 1), message)

    def test_a_write_may_break_off_anywhere(self):
        for size in (0, 1, 100, len(self.output()) - 1):
            output = self.output()[:size]
            self.expect_right(WRITE, 1, output, b"", WRITE_ERROR)
            self.expect_wrong(WRITE, 1, output, b"", b"")
            self.expect_wrong(WRITE, 1, output, b"", b"That went wrong.\n")
            self.expect_wrong(WRITE, 1, output + b"x", b"", WRITE_ERROR)

    def test_a_short_write_is_no_error(self):
        self.expect_wrong(SHORT_WRITE, 1, b"", b"", WRITE_ERROR)

    def test_a_read_error_leaves_whole_lines(self):
        whole = self.beginning(3)
        lines = self.lines(count=3)
        self.expect_right(READ, 1, whole, lines, READ_ERROR)
        self.expect_right(READ, 1, b"", b"", READ_ERROR)
        self.expect_right(READ, 1, b"\n", b"", READ_ERROR)
        self.expect_wrong(READ, 1, whole[:-3], lines, READ_ERROR)
        self.expect_wrong(READ, 1, whole, lines, b"")
        self.expect_wrong(READ, 1, whole + b"x\n", lines, READ_ERROR)

    def test_an_output_that_cannot_be_opened_stays_as_it_is(self):
        self.expect_right(STATUS, 1, quilletfaults.STALE, b"", OPEN_ERROR)
        self.expect_wrong(STATUS, 1, quilletfaults.STALE, b"", READ_ERROR)
        self.expect_wrong(STATUS, 1, quilletfaults.STALE[:-1], b"", OPEN_ERROR)
