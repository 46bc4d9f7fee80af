#!/usr/bin/env python3
"""Presses the completion key in each shell and looks at what it offers.

Needs bash, zsh and fish. The shells run without the user's own settings.
"""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

COMPLETIONS = pathlib.Path(__file__).resolve().parent.parent / "completions"
TIME_LIMIT = 60  # seconds for one shell

BASH = """
source "$1"; shift
COMP_WORDS=("$@") COMP_CWORD=$(($# - 1))
_quillet
printf '%s\\n' "${COMPREPLY[@]}"
"""

FISH = r"source $argv[1]; complete -C $argv[2] | string split -f1 \t"

# zsh completes inside its line editor alone. The functions of its completion system that ours
# calls are therefore replaced: these show what they are asked for.
ZSH = r"""
script=$1; shift
words=("$@") CURRENT=$#
_files() { print -rl -- ${~:-${words[CURRENT]}*}(N) }
_alternative() {
    local group
    for group; do
        case $group in
            switches:*) [[ -b == ${words[CURRENT]}* ]] && print -r -- -b ;;
            files:*) _files ;;
        esac
    done
}
_message() { }
source $script
"""


class CompletionTest(unittest.TestCase):
    """Each test states the words in front of the cursor and what the shell offers then."""

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="quillet-completion-"))
        self.addCleanup(shutil.rmtree, self.folder)
        self.work = self.folder / "work"
        self.work.mkdir()
        for name in ("survey.syn", "survey two.syn", "results.txt"):
            (self.work / name).touch()

    def run_shell(self, *command):
        environment = {
            "PATH": os.environ["PATH"],
            "HOME": str(self.folder),
            "TERM": "dumb",
            "LC_ALL": "C.UTF-8",
        }
        run = subprocess.run(command, cwd=self.work, env=environment, timeout=TIME_LIMIT,
                             stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False)
        self.assertEqual(run.stderr, "")
        return run.stdout

    def bash(self, *words):
        script = str(COMPLETIONS / "quillet.bash")
        return self.run_shell("bash", "--norc", "-c", BASH, "bash", script, *words)

    def fish(self, *words):
        script = str(COMPLETIONS / "quillet.fish")
        return self.run_shell("fish", "--no-config", "-c", FISH, script, " ".join(words))

    def zsh(self, *words):
        return self.run_shell("zsh", "-f", "-c", ZSH, "zsh", str(COMPLETIONS / "_quillet"), *words)

    def check(self, *words, exactly):
        for shell in (self.bash, self.fish, self.zsh):
            with self.subTest(shell.__name__, words=words):
                offered = sorted(set(shell("quillet", *words).splitlines()) - {""})
                self.assertEqual(offered, exactly)

    def test_the_first_word_may_be_the_switch(self):
        self.check("-", exactly=["-b"])

    def test_the_first_word_may_be_a_file(self):
        self.check("survey.", exactly=["survey.syn"])

    def test_a_file_follows_the_switch(self):
        for switch in ("-b", "/b", "-batch"):
            self.check(switch, "survey.", exactly=["survey.syn"])

    def test_files_of_any_name(self):
        self.check("res", exactly=["results.txt"])
        self.check("survey.syn", "res", exactly=["results.txt"])
        self.check("-b", "survey.syn", "res", exactly=["results.txt"])

    def test_no_third_file(self):
        self.check("survey.syn", "a", "sur", exactly=[])
        self.check("-b", "survey.syn", "a", "sur", exactly=[])

    def test_only_the_first_word_is_the_switch(self):
        self.check("survey.syn", "-", exactly=[])


if __name__ == "__main__":
    unittest.main()
