"""The program for single files under faults: what it reads, and what has to hold then."""

import dataclasses
import re

import injection

# More than any result, so that what is left of it shows.
STALE = b"left from an earlier run.\n" * 40000

TABLES, IGRAPH = "Tables", "Igraph"
SUCCEEDED = b"conversion was successful!\n"
FAILED = b"conversion failed!\n"

OUT_OF_MEMORY = re.compile(rb"Not enough memory for the command that begins in line (\d+)\.\n")
RESULT_LINES = re.compile(rb"(?:(?:Tables|Igraph) conversion (?:was successful|failed)!\n)*\Z")

COPIED = (
    "* A comment\n   of two lines.\n",
    "COMMENT Another one.\n",
    "DOCUMENT Where the file is from\n  and who wrote it.\n",
    "GET FILE='survey.sav'.\n",
    "\n\nRECODE age (18 THRU 29=1) (30 THRU 44=2)\n  (ELSE=COPY) INTO group.\n",
    "DATA LIST FREE /x y.\n",
    "BEGIN DATA.\n1 2\n3 4\nEND DATA.\n",
)
CONVERTED = (
    "TABLES /TABLE=sex BY region /STATISTICS=COUNT.\n",
    "TABLES /OBSERVATION income hours\n  /FTOTAL all 'All of them' /PTOTAL first\n"
    "  /TABLE (first + sex + all) > income BY (region + all)\n"
    "  /STATISTICS MEAN(income (F8.2) 'Mean of it') CPCT(sex 'Share': region)\n"
    "  /TITLE 'A title' 'of two lines' /CORNER 'corner'.\n",
    "TABLES /MRGROUP brands 'Brands known' b1 TO b9 /BREAK BY year > quarter\n"
    "  /TABLE brands BY sex /TABLE sex > region.\n",
    "TABLES /BOXCHARS a /CONTINUED 'b' /INDEX BY /FORMAT CWIDTH(10,5) BLANK /TABLE a.\n",
    "IGRAPH /X1=VAR(dose) TYPE=CATEGORICAL /Y=VAR(resp) TYPE=SCALE\n"
    "  /COLOR=VAR(arm) TYPE=CATEGORICAL /VIEWNAME='Response by dose' /TITLE='Response'\n"
    "  /BAR(MEAN) /ERRORBAR CI(95.0) DIRECTION=BOTH CAPWIDTH(45) CAPSTYLE=T SYMBOL=OFF.\n",
    "IGRAPH /X1=VAR(a) TYPE=SCALE /Y=VAR(b) TYPE=SCALE /SCATTER /FITLINE METHOD=REGRESSION.\n",
)
FAILING = (
    "TABLES /TABLE=x BY y (.\n",
    "TABLES /FTOTAL t /TABLE t + a.\n",
    "IGRAPH /X1=VAR(a) TYPE=SCALE /Y=VAR(b) TYPE=SCALE /SPIKE CENTROID.\n",
    "IGRAPH /NONSENSE.\n",
)
LABEL = "VARIABLE LABELS size 'Größe'.\n"
UNREADABLE = ("STRING s (A8).\n", "LIST 'no end.\nLIST z.\n")


def large_data():
    lines = "".join(f"{number} {number * number} 'label {number}'\n" for number in range(15000))
    return "BEGIN DATA.\n" + lines + "END DATA.\n"


@dataclasses.dataclass(frozen=True)
class Scenario:
    name: str
    commands: tuple
    encoding: str = "utf-8"
    line_end: str = "\n"
    batch: bool = False
    from_pipe: bool = False
    to_standard_output: bool = False
    stride: int = 7  # of the allocations that fail, where the file is not the small one


EVERYTHING = COPIED + CONVERTED + FAILING + (LABEL,)
SCENARIOS = (
    Scenario("small", EVERYTHING, stride=1),
    Scenario("windows-1252", EVERYTHING, encoding="windows-1252", line_end="\r\n"),
    Scenario("batch", EVERYTHING, batch=True),
    Scenario("unreadable", EVERYTHING + UNREADABLE),
    Scenario("large", EVERYTHING + (large_data(),) + CONVERTED, stride=11),
    Scenario("pipe", EVERYTHING, from_pipe=True),
    Scenario("standard-output", EVERYTHING, to_standard_output=True),
)

# Kinds of calls of which there are some in every input or in one of them. Where there are none any
# longer, nothing would be tested.
EXPECTED_KINDS = {"write", "error-write", "read", "open", "close", "fstat", "trunc", "seek",
                  "duplicate", "allocation"}


@dataclasses.dataclass(frozen=True)
class Block:
    """What becomes of one command."""

    start: int  # the command's first line, from 1
    text: bytes  # undisturbed
    command: str | None  # TABLES or IGRAPH
    too_large: re.Pattern | None  # when there is no memory for its conversion


def too_large_form(text, command, line_end):
    """What stands in place of the block `text` when the command is too large."""
    begin = b"COMMENT -- Begin %s command." % (b"CTABLES" if command == TABLES else b"GGRAPH")
    end = b"COMMENT -- End %s command." % (b"CTABLES" if command == TABLES else b"GGRAPH")
    frame = text[: text.index(begin) + len(begin)] + line_end
    pattern = re.escape(frame)
    if command == TABLES:
        pattern += (
            rb"(?:\*{5} Error while parsing or translating input syntax file\. "
            rb"Line \d+, column \d+\." + line_end + rb")?"
            rb"\*{5} The table expression is too large to be converted\.")
    else:
        pattern += rb"\*IGRAPH conversion is not possible: the command is too large\."
    return re.compile(pattern + line_end + re.escape(end) + line_end)


class QuilletTest:
    """One scenario: its files, and the judgment about a run."""

    program_name = "quillet"

    def __init__(self, program, library, scenario, folder):
        self.program = program
        self.library = library
        self.scenario = scenario
        self.name = scenario.name
        self.messages = injection.message_pattern()
        texts = [text.replace("\n", scenario.line_end).encode(scenario.encoding)
                 for text in scenario.commands]
        self.text = b"".join(texts)
        folder.mkdir()
        self.reference = self.run(folder, None, library=None)
        self.blocks = self.split(texts, folder)
        self.baseline = self.run(folder, None)
        if self.seen(self.baseline, folder) != self.expected():
            raise injection.NotInjected("the library itself changes what the program does")

    def stride(self, kind):
        return self.scenario.stride if kind == "allocation" else 1

    def run(self, folder, fault, library="own"):
        (folder / "in").write_bytes(self.text)
        return self.run_on(folder, fault, self.library if library == "own" else library)

    def run_on(self, folder, fault, library):
        scenario = self.scenario
        (folder / "out").write_bytes(STALE)
        command = [self.program, *(["-b"] if scenario.batch else []),
                   "/dev/stdin" if scenario.from_pipe else "in",
                   "/dev/stdout" if scenario.to_standard_output else "out"]
        return injection.run(command, folder, library, fault,
                             (folder / "in").read_bytes(), scenario.from_pipe)

    def seen(self, run, folder):
        """The output and the result lines."""
        if not self.scenario.to_standard_output:
            return (folder / "out").read_bytes(), run.output
        lines = RESULT_LINES.search(run.output)[0]
        return run.output[: len(run.output) - len(lines)], lines

    def split(self, texts, folder):
        """What becomes of each command, found out by leaving away those that follow."""
        blocks = []
        whole = b""
        expected, lines = self.seen(self.reference, folder)
        result_lines = lines.splitlines(keepends=True)
        line_end = self.scenario.line_end.encode()
        for count, text in enumerate(texts, 1):
            beginning = b"".join(texts[:count])
            (folder / "in").write_bytes(beginning)
            output, _ = self.seen(self.run_on(folder, None, None), folder)
            if not output.startswith(whole) or not expected.startswith(output):
                raise ValueError(f"{self.name}: command {count} is none of its own")
            block = output[len(whole):]
            whole = output
            command = None
            if block.startswith(b"COMMENT -- Begin commenting out"):
                command = result_lines.pop(0).split()[0].decode()
            start = beginning[: len(beginning) - len(text.lstrip())].count(b"\n") + 1
            blocks.append(Block(start, block, command,
                                too_large_form(block, command, line_end) if command else None))
        if whole != expected or result_lines:
            raise ValueError(f"{self.name}: the commands are not all of it")
        return blocks

    def expected(self):
        output = b"".join(block.text for block in self.blocks)
        return output, b"".join(self.result_lines(len(self.blocks), set()))

    def result_lines(self, count, too_large):
        """The result lines of the first `count` blocks."""
        lines = []
        for number, block in enumerate(self.blocks[:count]):
            if block.command is None:
                continue
            has_failed = number in too_large or not re.search(
                rb"\nCTABLES|\nGGRAPH", block.text)
            lines.append(block.command.encode() + b" " + (FAILED if has_failed else SUCCEEDED))
        return lines

    def walk(self, output):
        """How many blocks the output begins with, which of them are too large, and the rest."""
        too_large = set()
        position = 0
        for number, block in enumerate(self.blocks):
            if output.startswith(block.text, position) and block.text:
                position += len(block.text)
                continue
            match = block.too_large.match(output, position) if block.too_large else None
            if match is None:
                return number, too_large, output[position:]
            too_large.add(number)
            position = match.end()
        return len(self.blocks), too_large, output[position:]

    def tells_of_failed_write(self, run):
        # What comes from a pipe is written to a temporary file first.
        message = b"Error reading input" if self.scenario.from_pipe else b"Error writing output"
        return run.status == 1 and run.error.startswith(message)

    # The judgment.

    def check(self, run, fault, folder):
        """What is wrong with `run`, a list of texts."""
        crash = run.crash()
        if crash is not None:
            return [crash]
        problems = []
        if (folder / "in").read_bytes() != self.text:
            problems.append("the input was changed")
        if run.record.allocations > self.baseline.record.allocations:
            leaked = run.record.allocations - self.baseline.record.allocations
            problems.append(f"{leaked} blocks of memory were not freed")
        output, lines = self.seen(run, folder)
        if run.status == self.reference.status and (output, lines) == self.expected():
            return problems + self.check_undisturbed_error(run, fault)
        if fault is None or fault.error == "short":
            return problems + [f"nothing failed, but what was written differs "
                               f"(exit status {run.status}, {shown(run.error)})"]
        if run.status == 0:
            return problems + self.check_success(run, fault, output, lines)
        if run.status == 1:
            return problems + self.check_failure(run, fault, output, lines)
        return problems + [f"exit status {run.status}"]

    def check_undisturbed_error(self, run, fault):
        if fault is not None and fault.kind == "error-write":
            return []
        if run.status == 0 and run.error != self.reference.error:
            return [f"exit status 0, but standard error says {shown(run.error)}"]
        return [] if run.status == 0 else self.check_message(run)

    def check_message(self, run):
        lines = run.error.decode("utf-8", "replace").splitlines()
        if not any(lines):
            return ["no message on standard error"]
        return [f"standard error says {line!r}, which is no message"
                for line in lines if line and not self.messages.fullmatch(line)
                and not OUT_OF_MEMORY.fullmatch(line.encode() + b"\n")]

    def check_success(self, run, fault, output, lines):
        if self.reference.status != 0:
            return ["exit status 0"]
        if fault.kind != "allocation":
            what = "output" if output != self.expected()[0] else "standard output"
            return [f"exit status 0, but the {what} is not that of an undisturbed run"]
        count, too_large, rest = self.walk(output)
        if count < len(self.blocks) or rest:
            return [f"exit status 0, but the output differs at command {count + 1} "
                    f"({shown(rest[:80])})"]
        problems = []
        if fault.mode == "once" and len(too_large) > 1:
            problems.append(f"{len(too_large)} commands are too large because of one fault")
        if lines != b"".join(self.result_lines(count, too_large)):
            problems.append("the result lines are not those of the output")
        if run.error != self.reference.error:
            problems.append(f"exit status 0, but standard error says {shown(run.error)}")
        return problems

    def check_failure(self, run, fault, output, lines):
        problems = []
        if fault.kind != "error-write":
            problems += self.check_message(run)
        if fault.kind in ("write", "error-write"):
            expected = self.expected()
            if not expected[0].startswith(output):
                problems.append("the output is no beginning of that of an undisturbed run")
            if not expected[1].startswith(lines):
                problems.append("the result lines are no beginning of those of an undisturbed run")
            return problems
        if not self.scenario.to_standard_output and output == STALE:
            may_be_stale = run.error.startswith(b"Error opening ") or fault.kind == "allocation"
            return problems if may_be_stale else problems + ["the output was never touched"]
        out_of_memory = OUT_OF_MEMORY.fullmatch(run.error)
        if out_of_memory:
            if fault.kind != "allocation":
                problems.append("there was memory enough")
            return problems + self.check_out_of_memory(int(out_of_memory[1]), output, lines)
        if fault.kind == "allocation" and output.startswith(b"*****"):
            return problems + ["stopped without a word about memory"]
        # An output without a line is a single line end.
        count, too_large, rest = self.walk(b"" if output in (b"\n", b"\r\n") else output)
        return (problems + self.check_rest(count, rest)
                + self.check_lines(lines, count, too_large))

    def check_out_of_memory(self, line, output, lines):
        """The output holds everything up to the command in `line`, and says so."""
        if self.scenario.to_standard_output and line == 1 and not output:
            return []  # there was no output yet that could say anything
        starred = b"***** Not enough memory for the command that begins in line %d." % line
        starred += self.scenario.line_end.encode()
        # Before the first line was read nobody knows how lines end.
        if not output.endswith(starred) and output != starred.replace(b"\r\n", b"\n"):
            return [f"the output does not end in {shown(starred)}"]
        count, too_large, rest = self.walk(output[: -len(starred)])
        problems = self.check_rest(count, rest) + self.check_lines(lines, count, too_large)
        if count < len(self.blocks) and line != self.blocks[count].start:
            problems.append(f"line {line} is named, but it stopped at the command of line "
                            f"{self.blocks[count].start}")
        return problems

    def check_rest(self, count, rest):
        """What of the block that follows the `count` whole ones stands there: whole lines."""
        if not rest:
            return []
        if count == len(self.blocks):
            return [f"the output is longer than an undisturbed one ({shown(rest[:80])})"]
        if not rest.endswith(b"\n"):
            return ["the output ends in half a line"]
        if not self.blocks[count].text.startswith(rest):
            return [f"the output differs at command {count + 1} ({shown(rest[:80])})"]
        return []

    def check_lines(self, lines, count, too_large):
        """The result lines are those of the commands that stand there."""
        expected = self.result_lines(count + 1, too_large)
        before = self.result_lines(count, too_large)
        if lines not in (b"".join(expected), b"".join(before)):
            return ["the result lines are not those of the output"]
        return []


def shown(text):
    return repr(text.decode("utf-8", "replace"))


def tests(program, library, folder, name=None):
    """A test for each scenario, or for the one of this name."""
    return [QuilletTest(program, library, scenario, folder / scenario.name)
            for scenario in SCENARIOS if name in (None, scenario.name)]
