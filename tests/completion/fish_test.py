"""Completion of cadjobs in fish. Usage: fish_test.py CADJOBS"""

from __future__ import annotations

import shlex

from shell_test import ShellTest, run_tests_with


class FishTest(ShellTest):
    def complete(self, line: str) -> list[str]:
        """The candidates for the end of a command line, each with a tab and its description."""
        command = f"source {shlex.quote(str(self.script('fish')))}; complete --do-complete {shlex.quote(line)}"
        return self.output_of("fish", "--no-config", "-c", command).splitlines()

    def test_candidates_have_descriptions_and_keep_their_order(self) -> None:
        self.assertEqual(
            self.complete("cadjobs wa"),
            ["watch\tthe jobs live; Ctrl-C ends only the watching", "wait\tshow these jobs until all have ended"],
        )

    def test_a_value_is_attached_or_follows(self) -> None:
        self.assertEqual(self.complete("cadjobs list --state=Fa"), ["--state=Failed\tFailed"])
        self.assertEqual(self.complete("cadjobs list --state Fa"), ["Failed\tFailed"])

    def test_file_names_come_from_the_shell(self) -> None:
        self.make_file("jobs.json")
        self.assertEqual([line.split("\t")[0] for line in self.complete("cadjobs add jo")], ["jobs.json"])
        self.assertEqual(self.complete("cadjobs show jo"), [])


if __name__ == "__main__":
    run_tests_with("fish")
