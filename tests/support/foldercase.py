"""What the tests that run programs share."""

import contextlib
import os
import pathlib
import shutil
import subprocess
import tempfile

TOP = pathlib.Path(__file__).resolve().parent.parent.parent

TIME_LIMIT = 900  # seconds for one run; only one that hangs takes them
MEBIBYTE = 1 << 20


def program(name, variable):
    """A program's path: what the environment says, or where the release build puts it."""
    return os.path.abspath(os.environ.get(variable) or TOP / "build" / "release" / name)


def is_sanitized(path):
    """True when a program was built with a sanitizer of memory or threads."""
    content = pathlib.Path(path).read_bytes()
    return b"__asan_init" in content or b"__tsan_init" in content


def row_name(value):
    """What a row of parameters is called: short, whatever the value is."""
    text = ascii(value)
    return text if len(text) <= 40 else f"{text[:30]}...({len(value)})"


class FolderCase:
    """Gives each test a folder of its own, which goes away with it."""

    def setup_method(self):
        self.cleanups = contextlib.ExitStack()
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="quillet-test-"))
        self.add_cleanup(self.remove_folder)

    def teardown_method(self):
        self.cleanups.close()

    def add_cleanup(self, function, *arguments, **options):
        """Has `function` called when the test is over; the last one first."""
        self.cleanups.callback(function, *arguments, **options)

    def remove_folder(self):
        # Whatever rights the test has taken away.
        subprocess.run(["chmod", "-R", "u+rwx", str(self.folder)], check=False,
                       stderr=subprocess.DEVNULL)
        shutil.rmtree(self.folder)

    def create(self, name, text):
        path = self.folder / name
        path.write_bytes(text)
        return path

    def contents(self, name):
        return (self.folder / name).read_bytes()
