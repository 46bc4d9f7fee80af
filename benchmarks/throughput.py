#!/usr/bin/env python3
"""Times the program on large files next to well-known tools, side by side in one run.

    benchmarks/throughput.py PROGRAM [MEGABYTES [ROUNDS]]

Every figure is the median of ROUNDS (10) runs in turn, in seconds of processor time, so that other
programs count as little as can be; the ratios are what counts. Peak memory is the largest resident
set of any run.
"""

import os
import pathlib
import random
import resource
import statistics
import subprocess
import sys
import tempfile

WORDS = "age sex income region q1 q2 q3_a weight educ marital occup".split()


def some_words(count):
    return " ".join(random.choice(WORDS) for _ in range(count))


def ordinary_command():
    kind = random.random()
    if kind < 0.25:
        return (f"FREQUENCIES VARIABLES={some_words(4)}\n  /STATISTICS=MEAN STDDEV\n"
                "  /ORDER=ANALYSIS.\n")
    if kind < 0.40:
        return (f"RECODE {some_words(1)} (1=2) (2 thru 5=3.5) (ELSE=SYSMIS) "
                f"INTO new_{random.randrange(99)}.\n")
    if kind < 0.55:
        return (f"VARIABLE LABELS {some_words(1)} 'Label of the variable, as it is'\n"
                f'  {some_words(1)} "Another label".\n')
    if kind < 0.70:
        return f"VALUE LABELS {some_words(3)} 1 'Yes' 2 'No' 9 'Don''t know'.\n"
    if kind < 0.80:
        return "* A comment on the next step of the analysis, in words.\n"
    if kind < 0.90:
        return (f"IF ({some_words(1)} > 3 AND {some_words(1)} <= 17.25) "
                f"flag_{random.randrange(99)} = {some_words(1)} * 2.5 + 1.\n")
    return (f"CROSSTABS /TABLES={some_words(1)} BY {some_words(1)} "
            "/CELLS=COUNT ROW COLUMN /* check */\n /STATISTICS=CHISQ.\n\n")


def data_row():
    return " ".join(str(random.randrange(1000)) for _ in range(20)) + "\n"


def write_repeated(path, head, make_line, tail, size):
    block = "".join(make_line() for _ in range(20000))
    with open(path, "w", encoding="ascii") as file:
        written = file.write(head)
        while written < size:
            written += file.write(block)
        file.write(tail)


def run_once(command, locale, outputs):
    # Nobody pays for throwing away what another run wrote, and all for closing what they wrote.
    for output in outputs:
        output.unlink(missing_ok=True)
    environment = dict(os.environ, LC_ALL=locale)
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    with open(outputs[0], "wb") as stream:
        subprocess.run(command, check=True, stdout=stream, env=environment)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def compare(title, commands, rounds, outputs):
    seconds = {name: [] for name in commands}
    for _ in range(rounds):
        for name, (command, locale) in commands.items():
            seconds[name].append(run_once(command, locale, outputs))
    medians = {name: statistics.median(values) for name, values in seconds.items()}
    print(title)
    for name, median in medians.items():
        ratio = medians["quillet"] / median
        print(f"  {name:10} {median:7.3f} s   quillet takes {ratio:.2f} times as long")


def peak_memory(command):
    """The command's largest resident set in KiB, as GNU time (package `time`) measures it."""
    result = subprocess.run(["/usr/bin/time", "-f", "%M", *command], check=True,
                            capture_output=True, text=True)
    return int(result.stderr.split()[-1])


def main():
    program = os.path.abspath(sys.argv[1])
    size = int(sys.argv[2] if len(sys.argv) > 2 else 100) * 1000 * 1000
    rounds = int(sys.argv[3] if len(sys.argv) > 3 else 10)
    random.seed(20)
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        syntax, data = folder / "ordinary.syn", folder / "data.syn"
        output, other = folder / "output.syn", folder / "other"
        write_repeated(syntax, "", ordinary_command, "", size)
        write_repeated(data, "BEGIN DATA\n", data_row, "END DATA.\n", size)
        double = folder / "double.syn"
        write_repeated(double, "BEGIN DATA\n", data_row, "END DATA.\n", 2 * size)
        compare(f"{size // 1000000} MB of ordinary syntax", {
            "quillet": ([program, syntax, output], "C"),
            "sed": (["sed", "s/TABLES/X/", syntax], "C"),
            "wc -w": (["wc", "-w", syntax], "C.UTF-8"),
            "cat": (["cat", syntax], "C"),
        }, rounds, (other, output))
        compare(f"{size // 1000000} MB of inline data", {
            "quillet": ([program, data, output], "C"),
            "cat": (["cat", data], "C"),
            "double": ([program, double, output], "C"),
        }, rounds, (other, output))
        for source in (syntax, data):
            print(f"peak memory on {source.name}: {peak_memory([program, source, output])} KiB")


if __name__ == "__main__":
    main()
