"""Completion of cadjobs in bash. Usage: bash_test.py CADJOBS"""

from __future__ import annotations

import shlex

from shell_test import ShellTest, run_tests_with


class BashTest(ShellTest):
    def complete(self, *words: str) -> list[str]:
        """The candidates for the last word. Words are as bash splits them, with their quotes."""
        line = (
            f"source {shlex.quote(str(self.script('bash')))}; COMP_WORDS=({shlex.join(['cadjobs', *words])}); "
            f"COMP_CWORD={len(words)}; _cadjobs; printf '%s\\n' \"${{COMPREPLY[@]}}\""
        )
        return self.output_of("bash", "--norc", "-c", line).split("\n")[:-1]

    def test_subcommands(self) -> None:
        self.assertEqual(self.complete("wa"), ["watch", "wait"])
        self.assertEqual(self.complete("host", "sto"), ["stop"])

    def test_a_value_follows_an_equals_sign_as_bash_splits_it(self) -> None:
        self.assertEqual(self.complete("list", "--state", "=", "Fa"), ["Failed"])
        self.assertEqual(self.complete("list", "--color", "="), ["auto", "always", "never"])

    def test_file_names_come_from_the_shell(self) -> None:
        self.make_file("jobs of today.json")
        self.assertEqual(self.complete("add", "jo"), ["jobs of today.json"])
        self.assertEqual(self.complete("add", "'jobs of"), ["jobs of today.json"])
        self.assertEqual(self.complete("run", "a.rb", "--output", "jo"), [""])

    def test_without_a_host_there_are_no_jobs(self) -> None:
        self.assertEqual(self.complete("show", ""), [""])

    def test_the_function_belongs_to_the_program(self) -> None:
        line = f"source {shlex.quote(str(self.script('bash')))}; complete -p cadjobs"
        self.assertEqual(self.output_of("bash", "--norc", "-c", line), "complete -F _cadjobs cadjobs\n")


if __name__ == "__main__":
    run_tests_with("bash")
