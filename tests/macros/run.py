#!/usr/bin/env python3
"""Checks by a proof of its own what becomes of the bodies of generated macros.

usage: tests/macros/run.py QUILLET EXPANDMACROS CONVERTBODIES [--count N] [--in-file N] [--seed N]

Macros of the kinds that survey offices write are generated (2000 without the option), with their
calls. Each macro whose body was converted is looked at again, by nothing but the two programs and
this file: every call is expanded with the old body and then converted, and expanded with the new
body, and both have to be the same but for blanks, line ends, comments, the letter case of names and
the order of CATEGORIES subcommands of different variables. Of the macros whose arguments are all
single names at least four in five have to be converted.

A macro that fails is shown; the same seed makes the same macros.
"""

import argparse
import collections
import dataclasses
import json
import pathlib
import random
import re
import subprocess
import sys
import tempfile

TIME_LIMIT = 3600  # seconds for one file; only a program that hangs takes them
LEAST_CONVERTED = 0.8  # of the macros with single names
MOST_SHOWN = 5

NAMES = ["sex", "age", "q1", "q2a", "region", "v101", "income", "educ", "brand_x", "party", "wave",
         "Q7", "kl5", "f3.1", "zufrieden", "n_hh", "alter4"]
SCALES = ["income", "hours", "m1", "score", "wt2", "price"]
LABELS = ["'Table'", "'All respondents'", '"Basis: all"', "'It''s'", "'Sex by age'", "'Total'"]
FUNCTIONS = ["MEAN", "MEDIAN", "MODE", "MINIMUM", "MAXIMUM", "STDDEV", "SUM"]


@dataclasses.dataclass
class Argument:
    name: str  # "!x" in the body; "" for a positional one that has no name in a call
    definition: str
    word: str  # how the body writes it
    kind: str
    values: object  # makes a value
    default: bool = False


@dataclasses.dataclass
class Macro:
    name: str
    text: str
    calls: list
    has_single_names: bool


def pick_some(rng, items, least, most):
    return rng.sample(items, rng.randint(least, most))


class Generator:
    def __init__(self, rng):
        self.rng = rng

    def value_of(self, kind):
        rng = self.rng
        if kind == "name":
            return rng.choice(NAMES)
        if kind == "scale":
            return rng.choice(SCALES)
        if kind == "label":
            return rng.choice(LABELS)
        if kind == "plus":
            return " + ".join(pick_some(rng, NAMES, 1, 3))
        if kind == "list":
            return " ".join(pick_some(rng, NAMES, 1, 4))
        if kind == "scales":
            return " ".join(pick_some(rng, SCALES, 1, 3))
        if kind == "expression":
            first, second, third = rng.sample(NAMES, 3)
            return rng.choice([f"{first} > {second}", f"({first} + {second}) > {third}",
                               f"{first} + {second} > {third}", f"{first}"])
        if kind == "function":
            return rng.choice(FUNCTIONS)
        if kind == "number":
            return str(rng.randint(0, 9))
        if kind == "switch":
            return rng.choice(["yes", "no"])
        raise ValueError(kind)

    def arguments(self, kinds):
        """The arguments of a macro: all positional, or all with keywords."""
        rng = self.rng
        positional = rng.random() < 0.4
        result = []
        for number, kind in enumerate(kinds):
            last = number + 1 == len(kinds)
            if kind in ("plus", "list", "scales", "expression"):
                how = rng.choice(["!ENCLOSE('(',')')", "!CHAREND('/')"])
                if kind == "expression":
                    how = "!CHAREND('/')"
                if last and rng.random() < 0.5:
                    how = "!CMDEND"
            else:
                how = "!TOKENS(1)"
            keyword = ["x", "by", "var", "t", "lab", "w", "n", "stat"][number]
            if positional:
                argument = Argument("", f"!POSITIONAL {how}", f"!{number + 1}", kind, how)
            else:
                mark = rng.choice(["", "!"])
                argument = Argument(keyword, f"{mark}{keyword}={how}", f"!{keyword}", kind, how)
            if not positional and kind in ("label", "number", "switch") and rng.random() < 0.3:
                argument.definition += f" !DEFAULT({self.value_of(kind)})"
                argument.default = True
            result.append(argument)
        return result

    def call(self, name, arguments):
        rng = self.rng
        parts = [name]
        order = list(arguments)
        if order and order[0].name:
            fixed = order[-1:] if order[-1].values == "!CMDEND" else []
            free = order[:len(order) - len(fixed)]
            rng.shuffle(free)
            order = [a for a in free if not (a.default and rng.random() < 0.5)] + fixed
        for argument in order:
            value = self.value_of(argument.kind)
            if argument.values.startswith("!ENCLOSE"):
                value = f"({value})"
            elif argument.values.startswith("!CHAREND"):
                value += " /"
            if argument.name:
                value = f"{argument.name}{rng.choice(['=', ' = '])}{value}"
            parts.append(value)
        return " ".join(parts) + rng.choice([".", " ."])

    def title(self, words):
        """Words of a title subcommand from what can be said of the arguments."""
        rng = self.rng
        word = rng.choice(words)
        subcommand = rng.choice(["TITLE", "CAPTION", "CORNER"])
        return f"/{subcommand}=" + rng.choice([
            "'Survey'", f"!QUOTE({word})", f"!QUOTE(!CONCAT('Table of ', {word}))",
            f"!QUOTE(!CONCAT({word}, ' by ', {rng.choice(words)}))",
            f"!QUOTE(!UPCASE({word}))"])

    def layout(self, parts):
        """Subcommands of one command, on one line or on several."""
        rng = self.rng
        return rng.choice([" ", "\n  ", "\n"]).join(parts)

    def head(self, name, arguments):
        rng = self.rng
        separator = rng.choice([" / ", "/", "\n  / "])
        head = f"DEFINE {name} (" + separator.join(a.definition for a in arguments) + ")"
        return head + rng.choice(["", "", "."]) + "\n"

    # Each of these makes a body and tells the kinds of the arguments.

    def plain(self):
        rng = self.rng
        kinds = ["name"] * rng.randint(1, 3)

        def body(words):
            rows = words[0]
            columns = words[1] if len(words) > 1 else rng.choice(NAMES)
            table = f"/TABLE={rows} BY {columns}"
            if len(words) > 2:
                table += rng.choice([" BY ", " > ", " + "]) + words[2]
            parts = ["TABLES", table]
            if rng.random() < 0.5:
                parts.insert(1, rng.choice(["/FORMAT=ZERO", "/FORMAT=BLANK MISSING('.')",
                                            "/GBASE=CASES"]))
            if rng.random() < 0.6:
                parts.append("/STATISTICS=" + rng.choice([
                    f"COUNT({rows})", f"COUNT({rows}) CPCT({rows})",
                    f"CPCT({rows} 'Percent' (PCT5.1))",
                    f"COUNT({rows} (F5.0)) CPCT({rows} (PCT5.1):{columns})"]))
            if rng.random() < 0.6:
                parts.append(self.title(words))
            return self.layout(parts) + "."
        return kinds, body

    def total(self):
        rng = self.rng
        kinds = ["name", "name"]

        def body(words):
            label = rng.choice(["", " 'Total'"])
            rows, columns = words
            table = rng.choice([f"{rows} + tot BY {columns}", f"{rows} BY {columns} + tot",
                                f"{rows} + tot BY {columns} + tot"])
            return self.layout(["TABLES", f"/FTOTAL=tot{label}", f"/TABLE={table}",
                                f"/STATISTICS=COUNT({words[0]}) CPCT({words[0]})"]) + "."
        return kinds, body

    def means(self):
        rng = self.rng
        kinds = ["scale", "name"]

        def body(words):
            function = rng.choice(FUNCTIONS)
            return self.layout(["TABLES", f"/OBSERVATION={words[0]}",
                                f"/TABLE={rng.choice(['region > ', ''])}{words[0]} BY {words[1]}",
                                f"/STATISTICS={function}({words[0]} {self.value_of('label')})",
                                self.title(words)]) + "."
        return kinds, body

    def conditional(self):
        rng = self.rng
        kinds = ["name", "name", "switch"]

        def body(words):
            test = f"!IF (!UPCASE({words[2]}) = YES) !THEN"
            form = rng.randint(0, 3)
            table = f"/TABLE={words[0]} BY {words[1]}"
            if form == 0:
                return (f"{test} WEIGHT BY wt. !ELSE WEIGHT OFF. !IFEND\n"
                        f"TABLES {table} {self.title(words[:2])}.")
            if form == 1:
                return (f"TABLES {table}\n{test} /STATISTICS=COUNT({words[0]}) !ELSE "
                        f"/STATISTICS=CPCT({words[0]}) !IFEND\n {self.title(words[:2])}.")
            if form == 2:
                return (f"{test}\nTABLES {table}.\n!ELSE\nTABLES /TABLE={words[0]}\n"
                        f" {self.title(words[:1])}.\n!IFEND")
            return f"TABLES {table} {test} {self.title(words[:2])} !IFEND ."
        return kinds, body

    def loop(self):
        rng = self.rng
        kinds = ["list", "name"]

        def body(words):
            title = rng.choice(["", "/TITLE=!QUOTE(!v)", "/TITLE=!QUOTE(!CONCAT('Of ', !v))"])
            setting = rng.choice(["", "!LET !lab = !QUOTE(!CONCAT(!v, '!'))\n"])
            if setting:
                title = "/TITLE=!lab"
            return (f"!DO !v !IN ({words[0]})\n{setting}TABLES /TABLE=!v BY {words[1]} {title}.\n"
                    "!DOEND")
        return kinds, body

    def count(self):
        rng = self.rng
        kinds = ["name"]

        def body(words):
            last = rng.randint(2, 4)
            name = rng.choice(["!name", "q!i", "!CONCAT(q, !i)", "!CONCAT(v, '_', !i)"])
            setting = "!LET !name = !CONCAT(k, !i)\n" if name == "!name" else ""
            return (f"!DO !i = 1 !TO {last}\n{setting}TABLES /TABLE={name} BY {words[0]}\n"
                    f"  /TITLE=!QUOTE(!CONCAT('Table ', !i)).\n!DOEND")
        return kinds, body

    def inner_loop(self):
        kinds = ["list", "name"]

        def body(words):
            return (f"TABLES !DO !v !IN ({words[0]}) /TABLE=!v BY {words[1]} "
                    "/STATISTICS=COUNT(!v) !DOEND .")
        return kinds, body

    def plus_lists(self):
        rng = self.rng
        kinds = ["plus", "plus"] if rng.random() < 0.6 else ["name", "plus"]

        def body(words):
            parts = ["TABLES", f"/TABLE={words[0]} BY {words[1]}"]
            if rng.random() < 0.4:
                parts.append(f"/TITLE=!QUOTE({words[0]})")
            return self.layout(parts) + "."
        return kinds, body

    def observed_list(self):
        kinds = ["scales", "name"]

        def body(words):
            return self.layout(["TABLES", f"/OBSERVATION={words[0]}",
                                f"/TABLE=!DO !v !IN ({words[0]}) !v + !DOEND total BY {words[1]}",
                                f"/STATISTICS=MEAN({words[0]})"]) + "."
        return kinds, body

    def expressions(self):
        kinds = ["expression", "name"]

        def body(words):
            return self.layout(["TABLES", f"/TABLE={words[0]} BY {words[1]}"]) + "."
        return kinds, body

    def labels(self):
        rng = self.rng
        kinds = ["name", "label"]

        def body(words):
            return self.layout(["TABLES", f"/TABLE={words[0]} BY sex",
                                f"/{rng.choice(['TITLE', 'CAPTION', 'CORNER'])}={words[1]}",
                                f"/STATISTICS=COUNT({words[0]} {words[1]})"]) + "."
        return kinds, body

    def functions(self):
        kinds = ["scale", "function", "number"]

        def body(words):
            return self.layout(["TABLES", f"/OBSERVATION={words[0]}", f"/TABLE={words[0]} BY sex",
                                f"/STATISTICS={words[1]}({words[0]} (F8.{words[2]}))"]) + "."
        return kinds, body

    def groups(self):
        kinds = ["name", "name"]

        def body(words):
            return self.layout(["TABLES", f"/MRGROUP={words[0]} 'Group' a1 a2 a3",
                                f"/TABLE={words[0]} BY {words[1]}"]) + "."
        return kinds, body

    def graph(self):
        rng = self.rng
        kinds = ["name", "scale"]

        def body(words):
            form = rng.choice(["BAR(MEAN)", "LINE(MEAN)", "SCATTER"])
            axis = "SCALE" if form == "SCATTER" else "CATEGORICAL"
            return self.layout(["IGRAPH", rng.choice(["/VIEWNAME='Chart'", "/VIEWNAME=''"]),
                                f"/X1=VAR({words[0]}) TYPE={axis}",
                                f"/Y=VAR({words[1]}) TYPE=SCALE", f"/{form}",
                                f"/TITLE=!QUOTE(!CONCAT('Of ', {words[0]}))"]) + "."
        return kinds, body

    def nested(self, name):
        """A macro that calls another one, which has the legacy command."""
        rng = self.rng
        inner = name + "i"
        kinds, make_body = rng.choice([self.plain, self.means, self.labels, self.conditional])()
        arguments = self.arguments(kinds)
        body = make_body([argument.word for argument in arguments])
        text = self.head(inner, arguments) + body + "\n!ENDDEFINE.\n"
        outer = self.arguments(kinds)
        values = [f"{argument.name}={source.word}" if argument.name else source.word
                  for argument, source in zip(arguments, outer)]
        before = rng.choice(["", "WEIGHT BY wt.\n"])
        text += self.head(name, outer) + f"{before}{inner} {' '.join(values)}.\n!ENDDEFINE.\n"
        calls = [self.call(name, outer) for _ in range(rng.randint(1, 4))]
        return Macro(inner, text, calls, set(kinds) <= {"name", "scale", "switch"})

    def macro(self, name):
        rng = self.rng
        if rng.random() < 0.05:
            return self.nested(name)
        make = rng.choices([self.plain, self.total, self.means, self.conditional, self.loop,
                            self.count, self.inner_loop, self.plus_lists, self.observed_list,
                            self.expressions, self.labels, self.functions, self.groups,
                            self.graph],
                           [20, 6, 8, 12, 8, 6, 4, 8, 3, 5, 8, 4, 3, 5])[0]
        kinds, make_body = make()
        arguments = self.arguments(kinds)
        body = make_body([argument.word for argument in arguments])
        if rng.random() < 0.2:
            body = rng.choice(["TEMPORARY.\n", "* The table.\n", "/* The table. */\n",
                               "EXECUTE. /* The table. */\n",
                               "SELECT IF (wave = 1).\n", "TITLE 'Part' .\n"]) + body
        if rng.random() < 0.15:
            body += "\n" + rng.choice(["WEIGHT OFF.", "EXECUTE.", "* Done.", "SORT CASES BY id."])
        elif body.endswith(".") and "!IFEND" not in body and rng.random() < 0.2:
            body = body[:-1]  # the period of the call ends it
        text = self.head(name, arguments) + body + "\n!ENDDEFINE.\n"
        calls = [self.call(name, arguments) for _ in range(rng.randint(1, 4))]
        return Macro(name, text, calls, set(kinds) <= {"name", "scale", "switch"})


# The comparison. It shares nothing with the programs.

TOKEN = re.compile(r"""'(?:[^'\n]|'')*'|"(?:[^"\n]|"")*"|/\*.*?(?:\*/|$)|"""
                   r"""[A-Za-z$#@][A-Za-z0-9._$#@]*|[0-9]+(?:\.[0-9]+)?|\S""", re.MULTILINE)
NAME = re.compile(r"[A-Za-z$#@]")


def tokens_of(text):
    """The tokens of a text without comments; names in capitals, final periods for themselves."""
    tokens = []
    for match in TOKEN.finditer(text):
        token = match.group()
        if token.startswith("/*"):
            continue
        if not NAME.match(token):
            tokens.append(token)
            continue
        name = token.rstrip(".")
        tokens.append(name.upper())
        tokens.extend(token[len(name):])
    return tokens


def categories_of(tokens):
    """The variables of a CATEGORIES subcommand that may change places; none for any other."""
    if tokens[:2] != ["/", "CATEGORIES"] or tokens[3:4] != ["="]:
        return set()
    variables = []
    for token, following in zip(tokens[4:], tokens[5:] + [""]):
        if not NAME.match(token) or following == "=":
            break
        variables.append(token)
    return set() if "ALL" in variables else set(variables)


def in_order(tokens):
    """The same with CATEGORIES subcommands of different variables in one order."""
    parts = [[]]
    for token in tokens:
        if token == "/" or (parts[-1] and parts[-1][-1] == "."):
            parts.append([])
        if token == "." and parts[-1][:1] == ["/"]:
            parts.append([])
        parts[-1].append(token)
    changed = True
    while changed:
        changed = False
        for place in range(1, len(parts)):
            before, after = categories_of(parts[place - 1]), categories_of(parts[place])
            if before and after and not before & after and parts[place] < parts[place - 1]:
                parts[place - 1], parts[place] = parts[place], parts[place - 1]
                changed = True
    return [token for part in parts for token in part]


def without_comment_commands(text):
    return "\n".join(line for line in text.split("\n")
                     if not re.match(r"\s*(\*|COMMENT)", line, re.IGNORECASE))


def run(*arguments, source=None):
    result = subprocess.run(arguments, input=source, capture_output=True, timeout=TIME_LIMIT,
                            check=False)
    if result.returncode != 0:
        sys.exit(f"{' '.join(map(str, arguments))}: exit status {result.returncode}\n"
                 f"{result.stderr.decode()}")
    return result.stdout


class Checker:
    def __init__(self, arguments, folder):
        self.arguments = arguments
        self.folder = pathlib.Path(folder)
        self.problems = []
        self.counts = collections.Counter()
        self.unconverted = collections.Counter()

    def expansions(self, source):
        """The text of each call, with its period."""
        report = json.loads(run(self.arguments.expandmacros, "--json", source=source.encode()))
        texts = []
        for call in report["calls"]:
            text = call.get("text")
            texts.append(None if text is None else text if text.endswith(".") else text + ".")
        return texts

    def converted(self, texts):
        """What the program makes of each text; None where a conversion failed."""
        # A command after a comment in its line or before it is not recognized.
        texts = [re.sub(r"(?m)^[ \t]*/\*.*?(?:\*/|$)\s*", "", text) for text in texts]
        texts = [re.sub(r"(?m)(\.)[ \t]*/\*.*?(?:\*/|$)[ \t]*$", r"\1", text) for text in texts]
        source = "".join(f"{text}\nECHO 'piece {number}'.\n" for number, text in enumerate(texts))
        before, after = self.folder / "before.sps", self.folder / "after.sps"
        before.write_text(source, encoding="utf-8")
        run(self.arguments.quillet, before, after)
        results = []
        output = after.read_text(encoding="utf-8")
        for number in range(len(texts)):
            piece, output = output.split(f"ECHO 'piece {number}'.\n", 1)
            piece = re.sub(r"(?ms)^COMMENT -- Begin commenting out.*?"
                           r"^COMMENT -- End commenting out.*?$", "", piece)
            results.append(None if re.search(r"^\*\*\*\*\* ", piece, re.MULTILINE) else piece)
        return results

    def check(self, macros):
        source = "".join(macro.text + "".join(call + "\n" for call in macro.calls)
                         for macro in macros)
        line_end = "\r\n" if self.counts["files"] % 2 else "\n"
        self.counts["files"] += 1
        data = source.replace("\n", line_end).encode()
        verdicts = json.loads(run(self.arguments.convertbodies, "--json", source=data))
        new_source = run(self.arguments.convertbodies, source=data).decode()
        if new_source.count("\n") != new_source.count(line_end) or "\r\r" in new_source:
            self.problems.append(f"a line end is another one\n{new_source}")
        new_source = new_source.replace("\r\n", "\n")
        old, new = self.expansions(source), self.expansions(new_source)
        if len(old) != len(new) or len(old) != sum(len(macro.calls) for macro in macros):
            self.problems.append(f"{len(old)} and {len(new)} calls\n{source}")
            return
        expected = self.converted(["" if text is None else text for text in old])
        found = {verdict["name"]: verdict for verdict in verdicts["macros"]}
        first = 0
        for macro in macros:
            calls = range(first, first + len(macro.calls))
            first = calls.stop
            self.check_macro(macro, found[macro.name], new_source,
                             [(old[i], expected[i], new[i]) for i in calls])

    def check_macro(self, macro, verdict, new_source, calls):
        kind = "names" if macro.has_single_names else "others"
        outcome = verdict["outcome"]
        is_convertible = all(expected is not None for _, expected, _ in calls)
        self.counts[kind, is_convertible, outcome] += 1
        if outcome != "converted":
            if is_convertible:
                self.unconverted[verdict.get("reason", "")] += 1
            if is_convertible and self.arguments.show:
                print(f"--- {json.dumps(verdict, indent=1)}\n{macro.text}" + "\n".join(macro.calls))
            if macro.text not in new_source:
                self.problems.append(f"{macro.name} is {outcome}, but changed\n{macro.text}")
            return
        if macro.text in new_source:
            self.problems.append(f"{macro.name} is converted, but the same\n{macro.text}")
        if verdict["calls"] != len(macro.calls):
            self.problems.append(f"{macro.name}: {verdict['calls']} calls\n{macro.text}")
        for old, expected, new in calls:
            if expected is None or new is None:
                self.problems.append(f"a call of {macro.name} fails\n{macro.text}{old}")
                continue
            wanted = in_order(tokens_of(without_comment_commands(expected)))
            given = in_order(tokens_of(without_comment_commands(new)))
            self.counts["calls"] += 1
            if wanted != given or any(re.match(r"TAB|IGR", token) for token in given[:1]):
                self.problems.append(f"{macro.text}\n--- expanded\n{old}\n--- expected\n{expected}"
                                     f"\n--- found\n{new}")


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("quillet")
    parser.add_argument("expandmacros")
    parser.add_argument("convertbodies")
    parser.add_argument("--count", type=int, default=2000)
    parser.add_argument("--in-file", type=int, default=100)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--show", action="store_true",
                        help="show the macros that could be converted, but are not")
    arguments = parser.parse_args()
    generator = Generator(random.Random(arguments.seed))
    with tempfile.TemporaryDirectory() as folder:
        checker = Checker(arguments, folder)
        for begin in range(0, arguments.count, arguments.in_file):
            end = min(begin + arguments.in_file, arguments.count)
            checker.check([generator.macro(f"!m{number}") for number in range(begin, end)])

    def count(kind, outcomes=None):
        return sum(number for key, number in checker.counts.items()
                   if isinstance(key, tuple) and key[0] == kind and key[1] and
                   (outcomes is None or key[2] in outcomes))
    for problem in checker.problems[:MOST_SHOWN]:
        print(f"PROBLEM {problem}\n")
    for key in sorted(map(str, checker.counts)):
        print(key, next(n for k, n in checker.counts.items() if str(k) == key))
    for reason, number in collections.Counter(
            {re.sub(r"\d+", "N", reason): 0 for reason in checker.unconverted}).items():
        number = sum(n for r, n in checker.unconverted.items() if re.sub(r"\d+", "N", r) == reason)
        print(f"{number:5} not converted: {reason}")
    names, converted = count("names"), count("names", {"converted"})
    print(f"{converted} of {names} macros with single names are converted, "
          f"{count('others', {'converted'})} of {count('others')} others")
    if checker.problems:
        sys.exit(f"{len(checker.problems)} problems")
    if converted < LEAST_CONVERTED * names or names == 0:
        sys.exit("too few macros with single names are converted")


if __name__ == "__main__":
    main()
