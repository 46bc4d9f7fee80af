"""Runs a program with the preloaded library that has one call to the system fail."""

import dataclasses
import errno
import os
import pathlib
import re
import select
import signal
import struct
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))
import messages  # pylint: disable=wrong-import-position

TIME_LIMIT = 60  # seconds for one run; one that takes them hangs

HEADER = struct.Struct("=16sQqQq")
CALLS = struct.Struct("=16sQ")

# What goes wrong, by the kind of the calls: the error and whether it lasts ("from") or not. A full
# disk and an exhausted table of files stay so, most often, and errors of a medium come and go.
# "short" is none: half is moved, and the program has to ask for the rest. Nor is EINTR.
ERRORS = {
    "write": [("ENOSPC", "once"), ("ENOSPC", "from"), ("EIO", "once"), ("EINTR", "once"),
              ("short", "once"), ("short", "from")],
    "error-write": [("EIO", "once"), ("EIO", "from")],
    "read": [("EIO", "once"), ("EIO", "from"), ("EINTR", "once"), ("short", "once"),
             ("short", "from")],
    "open": [("EMFILE", "once"), ("EMFILE", "from"), ("EINTR", "once")],
    "close": [("EIO", "once"), ("EIO", "from")],
    "rename": [("EIO", "once"), ("ENOSPC", "from")],
    "stat": [("EIO", "once"), ("EIO", "from")],  # of a name
    "fstat": [("EIO", "once"), ("EIO", "from")],  # of a descriptor
    "trunc": [("EIO", "once"), ("EIO", "from")],
    "sync": [("EIO", "once"), ("EIO", "from")],
    "mkdir": [("ENOSPC", "once"), ("ENOSPC", "from")],
    "unlink": [("EIO", "once"), ("EIO", "from")],
    "folder": [("EIO", "once"), ("EMFILE", "from")],
    "seek": [("EIO", "once"), ("EIO", "from")],
    "duplicate": [("EMFILE", "once"), ("EMFILE", "from")],
    "lock": [("ENOLCK", "once"), ("ENOLCK", "from")],
    "attributes": [("EPERM", "once"), ("EPERM", "from")],
    "resolve": [("EIO", "once"), ("EIO", "from")],
    "thread": [("EAGAIN", "once"), ("EAGAIN", "from")],
    "allocation": [("ENOMEM", "once"), ("ENOMEM", "from")],
}


class NotInjected(Exception):
    """The library is not at work, so that nothing that is seen says anything."""


@dataclasses.dataclass(frozen=True)
class Fault:
    kind: str
    error: str  # the name of an error, or "short"
    mode: str  # "once" or "from"
    at: int  # which call of the kind, from 1

    def environment(self):
        number = self.error if self.error == "short" else str(getattr(errno, self.error))
        return {
            "QUILLET_FAULT_KIND": self.kind,
            "QUILLET_FAULT_ERROR": number,
            "QUILLET_FAULT_MODE": self.mode,
            "QUILLET_FAULT_AT": str(self.at),
        }

    def __str__(self):
        return f"{self.kind}:{self.error}:{self.mode}:{self.at}"


@dataclasses.dataclass(frozen=True)
class Record:
    """What the library counted during one run."""

    calls: dict  # by kind
    allocations: int  # blocks of memory that were still in use at the end
    delivered: int  # calls that were made to fail
    descriptor: int  # of the first of them; -1 if it had none


def read_record(path):
    try:
        content = path.read_bytes()
    except FileNotFoundError:
        raise NotInjected("the library left no record") from None
    if len(content) < HEADER.size or not content.startswith(b"quillet-faults\0"):
        raise NotInjected("the record was not begun")
    _, kinds, allocations, delivered, descriptor = HEADER.unpack_from(content)
    calls = {}
    for number in range(kinds):
        name, count = CALLS.unpack_from(content, HEADER.size + number * CALLS.size)
        calls[name.rstrip(b"\0").decode()] = count
    if set(calls) != set(ERRORS):
        raise NotInjected("the library counts other kinds of calls")
    return Record(calls, allocations, delivered, descriptor)


@dataclasses.dataclass(frozen=True)
class Run:
    status: int | None  # negative for a signal, None for one that hung
    output: bytes  # standard output
    error: bytes  # standard error
    record: Record | None  # None without the library

    def crash(self):
        """How the run ended, unless by itself."""
        if self.status is None:
            return f"hangs (still running after {TIME_LIMIT} s)"
        if self.status < 0:
            last = self.error.decode("latin-1").strip().rpartition("\n")[2]
            return f"ended by {signal.Signals(-self.status).name}: {last}"
        return None


def run(command, folder, library=None, fault=None, standard_input=b"", is_pipe=False):
    """Runs `command` in `folder`, which is where its streams and the record go, too.

    Without `library` nothing is preloaded. `standard_input` comes from a pipe or is empty.
    """
    record = folder / "record"
    record.unlink(missing_ok=True)
    environment = {"LC_ALL": "C"}
    if library is not None:
        environment["LD_PRELOAD"] = os.fspath(library)
        environment["QUILLET_FAULT_RECORD"] = os.fspath(record)
    if fault is not None:
        environment.update(fault.environment())
    with open(folder / "stdout", "wb+") as output, open(folder / "stderr", "wb+") as error:
        process = subprocess.Popen(
            command, cwd=folder, env=environment, stdout=output, stderr=error,
            stdin=subprocess.PIPE if is_pipe else subprocess.DEVNULL)
        if is_pipe:
            try:
                with process.stdin as stream:
                    stream.write(standard_input)
            except BrokenPipeError:
                pass
        status = wait(process)
        output.seek(0)
        error.seek(0)
        result = Run(status, output.read(), error.read(),
                     read_record(record) if library is not None else None)
    # Undisturbed, every program looks at some file and has memory.
    if library is not None and fault is None:
        for kind in ("fstat", "read", "write", "allocation"):
            if result.record.calls[kind] == 0:
                raise NotInjected(f"the library has counted no calls of the kind {kind}")
    return result


def wait(process):
    """The status of `process`; None when it had to be killed."""
    descriptor = os.pidfd_open(process.pid)
    try:
        has_ended, _, _ = select.select([descriptor], [], [], TIME_LIMIT)
    finally:
        os.close(descriptor)
    if not has_ended:
        process.kill()
    process.wait()
    return process.returncode if has_ended else None


def message_pattern():
    """An expression for each text that users may see, names and numbers filled in."""
    patterns = []
    for text in messages.every_text():
        pattern = re.sub(r"%ld|%d|%s", ".+", re.escape(text))
        patterns.append(pattern + ".*" if text.endswith(" ") else pattern)
    return re.compile("(?:" + "|".join(patterns) + ")")
