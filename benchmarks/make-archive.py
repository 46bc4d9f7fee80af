#!/usr/bin/env python3
"""Makes an archive of old syntax files, as an office has one: folders, mixed code pages, line ends
and layouts, and here and there a file that cannot be converted to its end.

    benchmarks/make-archive.py FOLDER [FILES [COMMANDS [SEED]]]

FILES (4000) files with COMMANDS (200000) commands in all. The same arguments give the same bytes.
"""

import pathlib
import random
import sys

VARIABLES = "sex agegr region educ income hours children marital tenure rooms sector status".split()
LABELS = ["Région de résidence", "Größe der Gemeinde", "Años de estudio", "Household income",
          "Don''t know", "Zufriedenheit mit Maßnahmen", "Émigration", "Køn og alder"]
TOPICS = ["households", "labour force", "health", "büro", "prix", "tourism", "schools", "census"]


class Maker:
    def __init__(self, seed):
        self.random = random.Random(seed)

    def names(self, count):
        return " ".join(self.random.sample(VARIABLES, count))

    def label(self):
        return self.random.choice(LABELS)

    def ordinary(self):
        first, second, third = self.random.sample(VARIABLES, 3)
        return self.random.choice([
            f"FREQUENCIES VARIABLES={first} {second}\n  /STATISTICS=MEAN STDDEV\n"
            "  /ORDER=ANALYSIS.",
            f"RECODE {first} (1=2) (2 THRU 5=3.5) (ELSE=SYSMIS) INTO {first}_r.",
            f"VARIABLE LABELS {first} '{self.label()}'\n  {second} \"{self.label()}\".",
            f"VALUE LABELS {first} 1 'Yes' 2 'No' 9 '{self.label()}'.",
            f"* {self.label()}, see the notes of {self.random.randrange(1985, 2009)}.",
            f"IF ({first} > 3 AND {second} <= 17.25) {third} = {first} * 2.5 + 1.",
            f"CROSSTABS /TABLES={first} BY {second} /CELLS=COUNT ROW COLUMN /* check */\n"
            "  /STATISTICS=CHISQ.",
            f"GET FILE='{first}_{self.random.randrange(1985, 2009)}.dat'.",
        ])

    def tables(self):
        row, column, nested = self.random.sample(VARIABLES, 3)
        label = self.label()
        return self.random.choice([
            f"TABLES /TABLE={row} BY {column}\n  /TITLE='{label}'.",
            f"TABLES /FTOTAL=t '{label}'\n  /TABLE={row} + t BY {column} > {nested} + t\n"
            f"  /STATISTICS=COUNT() CPCT({row} 'of all').",
            f"TABLES /OBSERVATION={nested}\n  /TABLE={row} > {column} BY {nested}\n"
            f"  /STATISTICS=MEAN({nested} (F8.1) '{label}') COUNT({row}).",
            f"TABLES /FORMAT ZERO\n  /MRGROUP=many '{label}' {row} {nested}\n"
            f"  /TABLE={column} BY many\n  /STATISTICS=COUNT(many) CPCT(many:{column}).",
            f"TABLES /AUTOLABEL ON\n  /TABLE={row} BY {column}\n  /TABLE={nested} BY {row}\n"
            f"  /CAPTION='{label}'.",
            f"TABLES /FORMAT CWIDTH(10,8)\n  /TABLE={row} BY (LABELS) BY {column}.",
            f"TABLES /TABLE={row} BY {column}\n  /STATISTICS=COUNT({row}) CPCT({row}:{column}).",
        ] if self.random.random() < 0.95 else [
            f"TABLES /TABLE={row} BY {column}\n  /STATISTICS=FOO({row}).",
            f"TABLES /TABLE={row} {column}.",
            f"TABLES /OBSERVATION={row} TO {column} /TABLE={nested}.",
        ])

    def igraph(self):
        first, second, third = self.random.sample(VARIABLES, 3)
        return self.random.choice([
            f"IGRAPH /VIEWNAME='{self.label()}' /X1=VAR({first}) TYPE=CATEGORICAL\n"
            f"  /Y=VAR({second}) TYPE=SCALE /COLOR=VAR({third})\n  /BAR(MEAN) LABEL INSIDE VAL.",
            f"IGRAPH /X1=VAR({first}) /Y=VAR({second})\n"
            "  /FITLINE METHOD=REGRESSION LINEAR LINE=TOTAL SPIKE=OFF\n  /SCATTER COINCIDENT=NONE.",
            f"IGRAPH /X1=VAR({first}) /Y=$count /BAR.",
            f"IGRAPH /COLOR=VAR({first}) /PIE.",
            f"IGRAPH /X1=VAR({first}) /Y=VAR({second}) /SPIKE /SCATTER.",
        ])

    def data(self):
        rows = "\n".join(" ".join(str(self.random.randrange(100)) for _ in range(8))
                         for _ in range(self.random.randrange(5, 200)))
        return f"DATA LIST FREE / {self.names(8)}.\nBEGIN DATA\n{rows}\nEND DATA."

    def command(self):
        kind = self.random.random()
        if kind < 0.58:
            return self.ordinary()
        if kind < 0.89:
            return self.tables()
        if kind < 0.98:
            return self.igraph()
        return self.data()

    def text(self, commands):
        parts = []
        while commands > 0:
            parts.append(self.command())
            commands -= 2 if parts[-1].startswith("DATA LIST") else 1
        if self.random.random() < 0.01:
            parts.insert(self.random.randrange(len(parts) + 1),
                         "FREQUENCIES /FORMAT='never closed.")
        return "\n\n".join(parts) + "\n"

    def encoded(self, text):
        encoding = self.random.choice(["utf-8", "utf-8", "utf-8-sig", "cp1252", "cp1252"])
        layout = self.random.random()
        if layout < 0.2:
            # Continuation lines at the margin, as in the oldest files.
            text = text.replace("\n  /", "\n/")
        elif layout < 0.4:
            text = text.replace("\n  ", " ")
        if self.random.random() < 0.5:
            text = text.replace("\n", "\r\n")
        return text.encode(encoding)

    def path(self, number):
        topic = self.random.choice(TOPICS)
        year = self.random.randrange(1985, 2009)
        return pathlib.PurePath(topic, str(year), f"{topic} {number:05d}.syn")


def main():
    folder = pathlib.Path(sys.argv[1])
    files = int(sys.argv[2]) if len(sys.argv) > 2 else 4000
    commands = int(sys.argv[3]) if len(sys.argv) > 3 else 200000
    maker = Maker(int(sys.argv[4]) if len(sys.argv) > 4 else 1)
    for number in range(files):
        path = folder / maker.path(number)
        path.parent.mkdir(parents=True, exist_ok=True)
        share = commands * (number + 1) // files - commands * number // files
        path.write_bytes(maker.encoded(maker.text(share)))


if __name__ == "__main__":
    main()
