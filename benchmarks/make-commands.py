#!/usr/bin/env python3
"""Writes commands that are to be converted, one after the other, as archives have them.

    benchmarks/make-commands.py KIND FILE [COMMANDS [SEED]]

KIND is "tables" or "igraph". COMMANDS (200000) commands, from a few words to two dozen lines; in
TABLES commands the simple ones are many and the large ones few. The same arguments give the same
bytes.
"""

import random
import sys

VARIABLES = ("sex agegroup region educ income hours children marital tenure rooms sector estate "
             "q1 q2 q3_a q17b weight_2 occup birthyear urban").split()
LABELS = ["Region of residence", "Size of the municipality", "Years of schooling", "All regions",
          "Don''t know", "Household income, yearly", "Share of all cases", "Mean"]
FORMATS = ["F5.0", "F8.1", "F8.2", "PCT5.1", "COMMA10.0", "DOLLAR12"]


class Maker:
    def __init__(self, seed):
        self.random = random.Random(seed)

    def names(self, count):
        return self.random.sample(VARIABLES, count)

    def label(self):
        return f"'{self.random.choice(LABELS)}'"

    def expression(self, size):
        names = self.names(size)
        text = names[0]
        for name in names[1:]:
            sign = self.random.choice(["+", "+", ">"])
            text = f"({text}) {sign} {name}" if self.random.random() < 0.2 else (
                f"{text} {sign} {name}")
        return text

    def function(self, name):
        kind = self.random.randrange(6)
        if kind == 0:
            return f"COUNT({name})"
        if kind == 1:
            return f"CPCT({name} ({self.random.choice(FORMATS)}) {self.label()})"
        if kind == 2:
            return f"MEAN({name} {self.label()})"
        if kind == 3:
            return f"PTILE {self.random.choice([5, 25, 75])} ({name})"
        if kind == 4:
            return f"CPCT({name}:{self.random.choice(VARIABLES)})"
        return f"STDDEV({name} ({self.random.choice(FORMATS)}))"

    def table(self):
        rows = self.random.choice([1, 1, 1, 2, 2, 3, 5])
        text = f"  /TABLE={self.expression(rows)}"
        for _ in range(self.random.choice([0, 1, 1, 1, 1, 2])):
            text += f" BY {self.expression(self.random.choice([1, 1, 2]))}"
        if self.random.random() < 0.6:
            functions = [self.function(self.random.choice(VARIABLES))
                         for _ in range(self.random.choice([1, 1, 2, 3]))]
            text += "\n  /STATISTICS=" + " ".join(functions)
        for subcommand, share in (("TITLE", 0.5), ("CAPTION", 0.15), ("CORNER", 0.1)):
            if self.random.random() < share:
                text += f"\n  /{subcommand}={self.label()}"
        if self.random.random() < 0.1:
            text += f"\n  /SORT={self.names(1)[0]}"
        return text

    def tables(self):
        lines = ["TABLES"]
        for subcommand, share in (("/OBSERVATION=income hours", 0.3), ("/FORMAT ZERO", 0.2),
                                  ("/AUTOLABEL ON", 0.1), ("/GBASE=CASES", 0.1),
                                  ("/MRGROUP=many 'Several' q1 q2 q3_a", 0.1),
                                  ("/MISSING=INCLUDE", 0.1)):
            if self.random.random() < share:
                lines.append("  " + subcommand)
        lines += [self.table() for _ in range(self.random.choice([1, 1, 1, 1, 2, 2, 4]))]
        return "\n".join(lines) + "."

    def igraph(self):
        first, second, third = self.names(3)
        chart, x_type, y_name = self.random.choice([
            ("/BAR(MEAN) KEY=ON SHAPE = RECTANGLE BASELINE = AUTO", "CATEGORICAL", second),
            ("/BAR LABEL INSIDE VAL", "CATEGORICAL", None),
            ("/LINE(MEAN) KEY=ON STYLE = LINE DROPLINE = OFF\n"
             "    INTERPOLATE = STRAIGHT BREAK = MISSING",
             "CATEGORICAL", second),
            ("/SCATTER COINCIDENT = NONE", "SCALE", second),
            ("/FITLINE METHOD = REGRESSION LINEAR LINE = TOTAL SPIKE=OFF\n"
             "  /SCATTER COINCIDENT = NONE", "SCALE", second),
            ("/AREA(MEAN) KEY = ON", "CATEGORICAL", second),
            ("/BAR(MEAN) KEY=ON\n  /ERRORBAR CI(95.0) DIRECTION=BOTH CAPWIDTH(45) CAPSTYLE=T",
             "CATEGORICAL", second),
        ])
        lines = [f"IGRAPH /VIEWNAME={self.label()}",
                 f"  /X1 = VAR({first}) TYPE = {x_type}",
                 f"  /Y = VAR({y_name}) TYPE = SCALE" if y_name else "  /Y = $count"]
        if self.random.random() < 0.4:
            lines.append(f"  /COLOR = VAR({third}) TYPE = CATEGORICAL")
        lines.append("  /COORDINATE = VERTICAL")
        if self.random.random() < 0.6:
            lines.append("  /X1LENGTH=3.0 /YLENGTH=3.0 /X2LENGTH=3.0")
        if self.random.random() < 0.5:
            lines.append(f"  /TITLE={self.label()}")
            if x_type == "CATEGORICAL":
                lines.append(f"  /CATORDER VAR({first}) (ASCENDING VALUES OMITEMPTY)")
        lines.append("  " + chart)
        return "\n".join(lines) + "."


def main():
    kind, path = sys.argv[1:3]
    count = int(sys.argv[3]) if len(sys.argv) > 3 else 200000
    maker = Maker(int(sys.argv[4]) if len(sys.argv) > 4 else 20)
    make = {"tables": maker.tables, "igraph": maker.igraph}[kind]
    with open(path, "w", encoding="ascii") as file:
        for _ in range(count):
            file.write(make() + "\n")


if __name__ == "__main__":
    main()
