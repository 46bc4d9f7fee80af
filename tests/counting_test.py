#!/usr/bin/env python3
"""Whether scripts/count-tests reads what CTest writes, and takes no failure for a success.

usage: pytest-3 tests/counting_test.py
"""

import subprocess

import pytest

from support.foldercase import TOP, FolderCase, row_name

PASSED = '<testcase name="good" classname="good" time="1.5" status="run"/>'
FAILED = '<testcase name="bad" time="0.25" status="fail"><failure message=""/></testcase>'
SKIPPED = ('<testcase name="left" time="0.1" status="notrun">'
           '<skipped message="SKIP_REGULAR_EXPRESSION_MATCHED"/>'
           "<system-out>wine: SKIPPED, there is none\n</system-out></testcase>")
DISABLED = '<testcase name="off" time="0" status="disabled"/>'
UNSTARTED = ('<testcase name="gone" time="0" status="notrun">'
             '<skipped message="Unable to find executable"/></testcase>')


class TestCounting(FolderCase):
    def count(self, content, *arguments):
        if content is not None:
            self.create("results.xml", content.encode())
        return subprocess.run([TOP / "scripts" / "count-tests", self.folder / "results.xml",
                               *arguments], capture_output=True, text=True, check=False)

    @pytest.mark.parametrize("cases, counted", (
        ([PASSED], "1 0 0 2"),
        ([PASSED, PASSED, FAILED], "2 1 0 3"),
        ([PASSED, SKIPPED], "1 0 1 2"),
        ([PASSED, DISABLED], "1 0 1 2"),
        # A test that cannot be started has failed.
        ([PASSED, UNSTARTED], "1 1 0 2"),
    ), ids=lambda value: value if isinstance(value, str) else "")
    def test_counts(self, cases, counted):
        run = self.count(f"<testsuite>{''.join(cases)}</testsuite>")
        assert (run.returncode, run.stdout.splitlines()[0]) == (0, counted)

    def test_names_what_did_not_pass(self):
        run = self.count(f"<testsuite>{PASSED}{FAILED}{SKIPPED}{UNSTARTED}</testsuite>", "1")
        assert run.stdout.splitlines()[1:] == [
            "FAILED bad",
            "FAILED gone",
            "SKIPPED left: wine: SKIPPED, there is none",
            "   1.5 s good",
        ]

    @pytest.mark.parametrize(
        "content",
        (None, "", "<testsuite>", "<testsuite></testsuite>", f"<testsuite>{PASSED}"),
        ids=row_name)
    def test_a_run_that_broke_off_is_no_success(self, content):
        run = self.count(content)
        assert (run.returncode, run.stdout) == (1, "")
        assert "results.xml" in run.stderr
