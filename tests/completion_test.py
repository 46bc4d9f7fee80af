#!/usr/bin/env python3
"""Presses the completion key in each shell and looks at what it offers.

Needs bash, zsh and fish. The shells run without the user's own settings.
"""

import os
import subprocess

import pytest

from support.foldercase import TIME_LIMIT, TOP, FolderCase

COMPLETIONS = TOP / "completions"

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


class TestCompletion(FolderCase):
    """Each test states the words in front of the cursor and what the shell offers then."""

    def setup_method(self):
        super().setup_method()
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
        assert run.stderr == ""
        return run.stdout

    def bash(self, *words):
        script = str(COMPLETIONS / "quillet.bash")
        return self.run_shell("bash", "--norc", "-c", BASH, "bash", script, *words)

    def fish(self, *words):
        script = str(COMPLETIONS / "quillet.fish")
        return self.run_shell("fish", "--no-config", "-c", FISH, script, " ".join(words))

    def zsh(self, *words):
        return self.run_shell("zsh", "-f", "-c", ZSH, "zsh", str(COMPLETIONS / "_quillet"), *words)

    @pytest.mark.parametrize("words, offered", (
        # The first word may be the switch, or a file.
        (("-",), ["-b"]),
        (("survey.",), ["survey.syn"]),
        # A file follows the switch.
        (("-b", "survey."), ["survey.syn"]),
        (("/b", "survey."), ["survey.syn"]),
        (("-batch", "survey."), ["survey.syn"]),
        # Files may have any name.
        (("res",), ["results.txt"]),
        (("survey.syn", "res"), ["results.txt"]),
        (("-b", "survey.syn", "res"), ["results.txt"]),
        # There is no third file.
        (("survey.syn", "a", "sur"), []),
        (("-b", "survey.syn", "a", "sur"), []),
        # Only the first word is the switch.
        (("survey.syn", "-"), []),
    ), ids=" ".join)
    @pytest.mark.parametrize("shell", ("bash", "fish", "zsh"))
    def test_what_is_offered(self, shell, words, offered):
        said = getattr(self, shell)("quillet", *words)
        assert sorted(set(said.splitlines()) - {""}) == offered
