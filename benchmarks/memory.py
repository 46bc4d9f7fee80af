#!/usr/bin/env python3
"""Measures what memory one large command takes, of several kinds.

    benchmarks/memory.py PROGRAM [MEGABYTES]

Converts a file of one command of MEGABYTES (1) for each kind. The figure is the largest resident
set without 4 MiB and without the size of the output, as a multiple of the size of the command.
"""

import os
import pathlib
import sys
import tempfile

from throughput import peak_memory

# What the command begins with, what it repeats, and what it ends in.
KINDS = {
    "copied words": ("LIST\n", " x y z\n", " a.\n"),
    "a copied line": ("LIST", " x y z", " a.\n"),
    "long names": ("TABLES /TABLE a\n", " + a_variable_name\n", " BY sex.\n"),
    "names of two letters": ("TABLES /TABLE a\n", "+ab+cd\n", " BY sex.\n"),
    "names of a letter": ("TABLES /TABLE a\n", "+a+b+c\n", " BY sex.\n"),
    "nested short names": ("TABLES /TABLE a\n", "+(ab>c)\n", " BY sex.\n"),
    "tables": ("TABLES\n", " /TABLE a BY b\n", ".\n"),
    "labels": ("TABLES /TABLE a /TITLE\n", " 'A label of some length'\n", ".\n"),
    "statistics": ("TABLES /TABLE a BY b /STATISTICS\n", " MEAN(a (F8.2) 'Average')\n", ".\n"),
    "short statistics": ("TABLES /TABLE a BY b /STATISTICS\n", " COUNT(a)\n", ".\n"),
    "sorting": ("TABLES /TABLE a BY b /SORT\n", " income\n", ".\n"),
    "series": ("IGRAPH /X1=VAR(a) /Y=VAR(b)\n", " /LINE(MEAN) KEY=ON STYLE=LINE\n", ".\n"),
    "reference lines": ("IGRAPH /X1=VAR(a) /Y=VAR(b) /SCATTER\n", " /REFLINE a 1\n", ".\n"),
    "category orders": ("IGRAPH /X1=VAR(a) /Y=VAR(b) /SCATTER\n",
                        " /CATORDER VAR(a) (ASCENDING VALUES OMITEMPTY)\n", ".\n"),
}


def write_command(path, kind, size):
    begin, part, end = KINDS[kind]
    with open(path, "w", encoding="ascii") as file:
        file.write(begin + part * (size // len(part)) + end)


def main():
    program = os.path.abspath(sys.argv[1])
    size = int(float(sys.argv[2] if len(sys.argv) > 2 else 1) * 1000 * 1000)
    with tempfile.TemporaryDirectory() as name:
        source, output = pathlib.Path(name) / "source.syn", pathlib.Path(name) / "output.syn"
        for kind in KINDS:
            write_command(source, kind, size)
            peak = peak_memory([program, source, output]) * 1024
            written = output.stat().st_size
            factor = (peak - 4 * 1024 * 1024 - written) / source.stat().st_size
            print(f"{kind:22} {peak / 1e6:8.1f} MB, output {written / 1e6:7.1f} MB, "
                  f"factor {factor:6.1f}")


if __name__ == "__main__":
    main()
