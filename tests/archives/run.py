#!/usr/bin/env python3
"""Has quillet-migrate account for generated archives, of which it is known what they hold.

usage: tests/archives/run.py PROGRAM [--count N] [--in-archive N] [--seed N]

Each of N texts (300 without the option) is put together of pieces: legacy commands of their own,
ones that a conversion does not see, and text that only looks like them. Of each text it is known
which legacy commands it holds, in which lines, what they come to, and why a conversion overlooks
them. The report has to tell the same, file by file and in all. As many texts again are written in
both layouts, and the right one has to be found for each. An archive holds 500 texts, or as many as
the option says.

A text that fails is shown; the same seed makes the same texts.
"""

import argparse
import collections
import dataclasses
import json
import os
import pathlib
import random
import subprocess
import sys
import tempfile

TIME_LIMIT = 3600  # seconds for one archive; only one that hangs takes them
MOST_SHOWN = 3

OUTCOMES = ("converted", "failed", "unreadable", "overlooked")


@dataclasses.dataclass(frozen=True)
class Planted:
    """A legacy command: where it begins, which it is, and what it comes to, or the finding."""
    line: int
    command: str
    outcome: str


@dataclasses.dataclass
class Text:
    """Lines, and the legacy commands in them."""
    lines: list = dataclasses.field(default_factory=list)
    planted: list = dataclasses.field(default_factory=list)

    def add(self, *lines):
        self.lines += lines

    def plant(self, legacy, outcome, before="", after="."):
        """Adds a legacy command; `before` stands on its first line, `after` at its end."""
        self.planted.append(Planted(len(self.lines) + 1, legacy.command, outcome))
        first, *rest = legacy.lines
        lines = [before + first, *rest]
        lines[-1] += after
        self.lines += lines


@dataclasses.dataclass(frozen=True)
class Legacy:
    command: str
    outcome: str  # where it is a command of its own
    lines: tuple


WORDS = {"TABLES": ("TABLES", "tables", "Tables", "TABLE", "TABL", "tab"),
         "IGRAPH": ("IGRAPH", "igraph", "Igraph", "IGRAP", "igr")}

# What follows the word, by what becomes of the command: lines without the period.
BODIES = {
    ("TABLES", "converted"): (
        (" /TABLE=a BY b",), (" TABLE=a",), ("", "  /TABLE=a + b", "  /STATISTICS=COUNT"),
        (" /OBSERVATION=x", "  /TABLE=a BY x", "  /STATISTICS=MEAN(x 'Mean')"),
        ("", "", "  /TABLE=a > b"), (" /* by region */ /TABLE=a",),
        ("", "/FTOTAL=t", "/TABLE=a + t"), (" /TABLE=a /TITLE='Income. And age'",),
        (" obs=x /tab=x /sta=mean(x)",)),
    ("TABLES", "failed"): (
        (" /TABLE=a BY",), (" /TABLE=a b",), (" /FORMAT=ZERO CWIDTH(10,8)", "  /TABLE=a"),
        (" /TABLE=a", "  /STATISTICS=AVERAGE(a)"), (" /FTOTAL=t",)),
    ("IGRAPH", "converted"): (
        (" /X1=VAR(a) /Y=VAR(b) /BAR(MEAN)",), ("", "  /X1=VAR(a)", "  /Y=VAR(b)", "  /SCATTER"),
        (" /VIEWNAME='Income. And age' /COLOR=VAR(a) /PIE",)),
    ("IGRAPH", "failed"): (
        (" /NOTHING",), (" /X1=VAR(a) /Y=VAR(b) /LINE DROPLINE=ON",), ("", "  /BAR",)),
}

# Commands of one line, without the period.
FILLERS = ("LIST a b", "FREQUENCIES VARIABLES=a", "COMPUTE x = a + 1", "TITLE 'Income and age'",
           "EXECUTE", "VALUE LABELS a 1 'one' 2 'two'", "SORT CASES BY a", "RECODE a (1=2)",
           "IF (a = 1) x = 2", "WEIGHT BY w", "VARIABLE LABELS a \"Respondent's age\"",
           "DESCRIPTIVES a", "SELECT IF (a > 0)", "GET FILE='x.sav'", "CROSSTABS a BY b")

# What only looks like a legacy command, as lines of an ended command.
LOOKALIKES = (
    ("CROSSTABS", "  TABLES = a BY b."), ("CROSSTABS", "TABLES=a BY b", "  /CELLS=COUNT."),
    ("MEANS TABLES=a BY b.",), ("MEANS", "  tables = a BY b."), ("FREQUENCIES tables tab1.",),
    ("LIST", "  tables sex", "  tab1 igr."), ("CTABLES", "  /TABLE a BY b", "  /TITLES TITLE='x'."),
    ("TITLE 'Old. TABLES /TABLE=a'.",), ("LIST /* TABLES /TABLE=a. */ a.",),
    ("* The TABLES /TABLE=a are gone.",), ("* Old: IGRAPH /PIE, and", "  tables, tables.",),
    ("DOCUMENT The", "TABLES /TABLE=a", "  are old. TABLES /TABLE=b.",),
    ("DATA LIST FREE /a.", "BEGIN DATA", "TABLES /TABLE=a.", "1. IGRAPH /PIE.", "END DATA."),
    ("** TABLES /TABLE=a.",), ("COMPUTE tables = tab.",), ("LIST a.TABLES.",),
    ("GGRAPH", "  /GRAPHDATASET NAME='x'."),
)

REMARKS = ("* Income", "* Income by region", "COMMENT Tables of income", "* Don't use it",
           "** Old **", "*Income: part 1")


class Generator:
    def __init__(self, seed):
        self.random = random.Random(seed)

    def chance(self, share):
        return self.random.random() < share

    def legacy(self, outcome=None):
        command = "TABLES" if self.chance(0.7) else "IGRAPH"
        outcome = outcome or ("converted" if self.chance(0.7) else "failed")
        body = self.random.choice(BODIES[command, outcome])
        lines = [self.random.choice(WORDS[command]) + body[0], *body[1:]]
        return Legacy(command, outcome, tuple(lines))

    def unbroken(self):
        """A legacy command without blank lines."""
        while True:
            legacy = self.legacy()
            if all(line.strip() for line in legacy.lines):
                return legacy

    def blank_lines(self, text, most=2):
        for _ in range(self.random.randrange(most + 1)):
            text.add(self.random.choice(("", "  ", "\t")))

    def filler(self):
        return self.random.choice(FILLERS)

    # ---- Pieces in interactive layout ----

    def own(self, text):
        legacy = self.legacy()
        text.plant(legacy, legacy.outcome, before=self.random.choice(("", "", "  ", "\t")),
                   after=self.random.choice((".", ".", " .", ".  ")))

    def look_alike(self, text):
        text.add(*self.random.choice(LOOKALIKES))

    def several(self, text, code, between=("",)):
        """Legacy commands of which only the last one is ended."""
        count = self.random.choice((1, 1, 1, 2, 3))
        for number in range(count):
            text.plant(self.legacy(), code, before=self.random.choice(("", "", "  ")),
                       after="." if number + 1 == count else self.random.choice(between))

    def open_comment(self, text):
        text.add(self.random.choice(REMARKS))
        self.blank_lines(text)
        self.several(text, "open-comment")

    def open_command(self, text):
        text.add(self.filler())
        self.blank_lines(text)
        self.several(text, "open-command")

    def comment_behind(self, text):
        comment = self.random.choice(("/* old */", "/* one */ /* two */", "* old"))
        text.add(f"{self.filler()}. {comment}")
        self.blank_lines(text)
        text.plant(self.legacy(), "comment-behind")

    def block_comment_before(self, text):
        comment = self.random.choice(("/* next */", "  /* a */ /* b */"))
        if self.chance(0.5):
            text.plant(self.legacy(), "block-comment-before", before=comment + " ")
            return
        text.add(comment)
        self.blank_lines(text)
        text.plant(self.legacy(), "block-comment-before")

    def sign_before(self, text):
        text.plant(self.legacy(), "sign-before", before=self.random.choice(("+", "- ", "+  ")))

    def same_line(self, text):
        before = self.random.choice((self.filler(), "* Income")) + ". "
        if self.chance(0.3):
            # Another one between them, which is on the same line as well.
            first = self.unbroken()
            if len(first.lines) == 1:
                text.planted.append(Planted(len(text.lines) + 1, first.command, "same-line"))
                before += first.lines[0] + ". "
        text.plant(self.legacy(), "same-line", before=before)

    def macro(self, text):
        name = self.random.choice(("!income", "!tab", "mymacro", "!Old2"))
        arguments = self.random.choice(("()", "(x=!TOKENS(1))", "(!POS !CMDEND)",
                                        "(x=!CHAREND(')'))"))
        if self.chance(0.2):
            first = self.unbroken()
            text.plant(first, "macro-body", before=f"DEFINE {name} {arguments} ",
                       after=". !ENDDEFINE.")
        else:
            text.add(f"DEFINE {name} {arguments}" + self.random.choice(("", "", ".")))
            for _ in range(self.random.choice((1, 1, 2, 3))):
                if self.chance(0.3):
                    text.add(self.random.choice((*REMARKS[:3], self.filler() + ".")))
                self.blank_lines(text, 1)
                text.plant(self.legacy(), "macro-body", after=self.random.choice((".", ".", "")))
            text.add("!ENDDEFINE.")
        for _ in range(self.random.randrange(3)):
            text.add(f"{name} x=1.")

    def lost(self, text):
        """A command that is commented out with a legacy one counts as nothing."""
        text.plant(Legacy("TABLES", "converted", ("TABLES /TABLE=a BY b",)), "converted",
                   after=". /* by region */")
        text.add("", "GET FILE=x.")

    def command(self, text):
        text.add(*self.random.choice((
            (self.filler() + ".",), ("LIST a. /* all of them",), ("* A remark.",),
            ("/* A remark */.",), ("* A remark", "  that ends."))))

    # ---- What ends what can be cut, so that it comes last ----

    def stop(self, text):
        if self.chance(0.5):
            text.add(self.random.choice(("TITLE 'Income.", "LIST a \x01.", "LIST a `.")))
        else:
            text.plant(Legacy("TABLES", "unreadable", ("TABLES /TABLE=a /TITLE='Income",)),
                       "unreadable")
        for _ in range(self.random.randrange(4)):
            piece = self.random.choice((self.own, self.open_comment, self.macro, self.look_alike,
                                        self.same_line, self.command))
            begin = len(text.planted)
            piece(text)
            text.planted[begin:] = [dataclasses.replace(planted, outcome="after-stop")
                                    for planted in text.planted[begin:]]

    def data(self, text):
        text.add("BEGIN DATA.", "1 2", self.random.choice((" END DATA.", "END  DATA.", "3 4")))
        for _ in range(self.random.randrange(3)):
            self.blank_lines(text)
            text.plant(self.unbroken(), "data-lines", before=self.random.choice(("", " ")))
            text.add(self.filler() + ".")

    def interactive(self):
        text = Text()
        pieces = (self.own, self.own, self.look_alike, self.look_alike, self.open_comment,
                  self.open_command, self.comment_behind, self.block_comment_before,
                  self.same_line, self.macro, self.lost, self.command)
        chosen = self.random.choices(pieces, k=self.random.randrange(12))
        # Three signs are a habit, and show that a file is in batch layout.
        chosen += self.random.choices((self.sign_before, self.command), k=2)
        # So many commands with periods that no text looks like batch layout.
        chosen += [None] * (4 * len(chosen) + 10)
        self.random.shuffle(chosen)
        for piece in chosen:
            if piece is None:
                text.add(self.filler() + ".")
            else:
                piece(text)
            self.blank_lines(text, 1)
        if self.chance(0.1):
            self.stop(text)
        elif self.chance(0.1):
            self.data(text)
        return text

    # ---- Batch layout: commands begin in the first column, other lines with blanks ----

    def batch(self):
        text = Text()
        for _ in range(self.random.randrange(6, 30)):
            self.batch_piece(text)
        return text

    def batch_piece(self, text):
        choice = self.random.randrange(10)
        legacy = self.in_batch(self.unbroken())
        if choice == 0:
            text.plant(legacy, legacy.outcome, after=self.random.choice(("", "", ".")))
        elif choice == 1:
            text.plant(legacy, legacy.outcome, before=self.random.choice("+-"), after="")
        elif choice == 2:
            text.plant(legacy, "same-line", before=self.filler() + ". ", after="")
        elif choice == 3:
            text.add(self.filler())
            text.plant(Legacy(legacy.command, "", tuple(" " + line for line in legacy.lines)),
                       "open-command", after="")
        elif choice == 4:
            text.add("DEFINE !income (x=!TOKENS(1))")
            text.plant(legacy, "macro-body", after="")
            text.add("!ENDDEFINE")
        elif choice == 5:
            text.add(*self.random.choice((
                ("CROSSTABS", "  TABLES = a BY b"), ("MEANS TABLES=a BY b",),
                ("FREQUENCIES tables tab1",), ("CTABLES", "  /TABLE a BY b"),
                ("TITLE 'Old. TABLES /TABLE=a'",), ("* The TABLES /TABLE=a are gone",),
                ("* Income", " by region"))))
        elif choice == 6:
            text.add("DO IF (a = 1)", "+ COMPUTE x = 1", "END IF")
        else:
            text.add(self.filler())

    @staticmethod
    def in_batch(legacy):
        first, *rest = legacy.lines
        rest = tuple("  " + line.strip() for line in rest)
        return Legacy(legacy.command, legacy.outcome, (first, *rest))

    def both_layouts(self):
        """The same commands in interactive and in batch layout."""
        commands = [["GET", "FILE=X"], ["TABLES", "TABLE=A", "/STATISTICS=COUNT"],
                    ["COMPUTE Y = 1"], ["FREQUENCIES", "VARIABLES=A B"], ["EXECUTE"],
                    ["VALUE LABELS A", "1 'one'", "2 'two'"], ["IGRAPH", "/X1=VAR(A)", "/BAR"],
                    ["* A remark", "of two lines"], ["TITLE 'Income'"], ["SORT CASES BY A"],
                    ["DO IF (A = 1)"], ["END IF"], ["MEANS", "TABLES=A BY B"], ["!mymacro"],
                    ["TABLES", "/OBSERVATION=X", "/TABLE=A BY X", "/STATISTICS=MEAN(X)"]]
        chosen = self.random.choices(commands, k=self.random.randrange(3, 20))
        # Two commands at least show where one ends.
        for lines in commands[:2]:
            chosen.insert(self.random.randrange(len(chosen) + 1), lines)
        margin = self.random.choice(("", "", "", " "))
        interactive, batch = [], []
        for lines in chosen:
            indent = self.random.choice(("  ", "  ", " ", "\t", margin))
            interactive += [margin + lines[0], *(indent + line for line in lines[1:])]
            interactive[-1] += "."
            # With a tab a new command would begin there.
            batch += [lines[0], *((indent.strip("\t") or " ") + line for line in lines[1:])]
            if self.chance(0.2):
                interactive.append("")
                batch.append("")
        return "\n".join(interactive) + "\n", "\n".join(batch) + "\n"

    def encoded(self, lines):
        """The bytes of a text, in one of the forms that files have."""
        form = self.random.randrange(20)
        end = "\r\n" if form < 5 else "\r" if form == 5 else "\n"
        text = end.join(lines) + end
        if form == 6:
            return ("\ufeff" + text).encode("utf-16le")
        if form == 7:
            return ("\ufeff" + text).encode("utf-8")
        return text.encode("utf-8")


def migrate(program, texts, folder):
    """The report of an archive that holds `texts`, by their names."""
    source, target = pathlib.Path(folder) / "source", pathlib.Path(folder) / "target"
    for name, text in texts.items():
        path = source / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(text)
    run = subprocess.run(
        [program, "--quiet", source, target], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
        stderr=subprocess.PIPE, env={**os.environ, "LC_ALL": "C"}, timeout=TIME_LIMIT, check=False)
    if run.returncode not in (0, 1):
        sys.exit(f"status {run.returncode}: {run.stderr.decode(errors='replace')}")
    return json.loads((target / "quillet-report.json").read_text(encoding="utf-8"))


def check_file(text, file):
    """What the report of a file does not say as it was planted."""
    wanted = collections.Counter(planted.outcome if planted.outcome in OUTCOMES else "overlooked"
                                 for planted in text.planted)
    for outcome in OUTCOMES:
        if file[outcome] != wanted[outcome]:
            yield f"{wanted[outcome]} were planted as {outcome}, {file[outcome]} are told"
    if file["found"] != len(text.planted):
        yield f"{len(text.planted)} were planted, {file['found']} were found"
    if file["found"] != sum(file[outcome] for outcome in OUTCOMES):
        yield "what they came to is not what was found"
    planted = sorted((planted.line, planted.command, planted.outcome) for planted in text.planted
                     if planted.outcome not in OUTCOMES)
    told = sorted((finding["firstLine"], finding["command"], finding["code"])
                  for finding in file["findings"] if finding["kind"] == "overlooked")
    for place in planted:
        if place not in told:
            yield f"planted, but not told: {place}"
    for place in told:
        if place not in planted:
            yield f"told, but not planted: {place}"


def check_archive(program, generator, count):
    """How many of `count` texts are accounted for; shows the first that are not."""
    texts = {}
    for number in range(count):
        layout = "batch" if generator.chance(0.2) else "interactive"
        texts[f"{layout}/{number:05}"] = (generator.batch() if layout == "batch"
                                         else generator.interactive())
    with tempfile.TemporaryDirectory(prefix="quillet-archives-") as folder:
        report = migrate(program, {name: generator.encoded(text.lines)
                                   for name, text in texts.items()}, folder)
    failed = 0
    for file in report["files"]:
        text = texts[file["path"]]
        complaints = list(check_file(text, file))
        # Where nothing is found, nothing is told of the layout either.
        if file["layout"] not in ("", file["path"].split("/")[0]):
            complaints.append(f"read in {file['layout']} layout")
        if not complaints:
            continue
        failed += 1
        if failed <= MOST_SHOWN:
            print(f"FAIL {file['path']}", *complaints, sep="\n    ")
            for number, line in enumerate(text.lines, 1):
                print(f"    {number:4} | {line}")
    planted = sum(len(text.planted) for text in texts.values())
    totals = report["totals"]
    if len(report["files"]) != count or totals["commandsFound"] != planted or planted != sum(
            totals["commands" + outcome.capitalize()] for outcome in OUTCOMES):
        print(f"FAIL {planted} were planted in all, and the totals say: {totals}")
        failed += 1
    return count - failed, failed, planted


def check_layouts(program, generator, count):
    """How many of `count` pairs of texts are read in the right layouts; shows the others."""
    texts = {}
    for number in range(count):
        interactive, batch = generator.both_layouts()
        texts[f"interactive/{number:05}"] = interactive.encode()
        texts[f"batch/{number:05}"] = batch.encode()
    with tempfile.TemporaryDirectory(prefix="quillet-archives-") as folder:
        report = migrate(program, texts, folder)
    wrong = [file["path"] for file in report["files"]
             if file["layout"] != file["path"].split("/")[0]]
    for path in wrong[:MOST_SHOWN]:
        print(f"FAIL {path} is read in the other layout:")
        print("    " + texts[path].decode().replace("\n", "\n    "))
    return len(texts) - len(wrong), len(wrong) + (len(report["files"]) != len(texts))


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program", type=os.path.abspath)
    parser.add_argument("--count", type=int, default=300)
    parser.add_argument("--in-archive", type=int, default=500)
    parser.add_argument("--seed", type=int, default=13)
    arguments = parser.parse_args()
    generator = Generator(arguments.seed)
    passed = failed = planted = right = wrong = 0
    for begin in range(0, arguments.count, arguments.in_archive):
        count = min(arguments.in_archive, arguments.count - begin)
        one_passed, one_failed, one_planted = check_archive(arguments.program, generator, count)
        one_right, one_wrong = check_layouts(arguments.program, generator, count)
        passed, failed, planted = passed + one_passed, failed + one_failed, planted + one_planted
        right, wrong = right + one_right, wrong + one_wrong
    print(f"archives: {passed} texts passed, {failed} failed, {planted} legacy commands planted; "
          f"{right} layouts right, {wrong} wrong")
    return 0 if passed and right and not failed and not wrong else 1


if __name__ == "__main__":
    sys.exit(main())
