"""Completion of cadjobs in zsh, typed into a terminal. Usage: zsh_test.py CADJOBS"""

from __future__ import annotations

import sys

from shell_test import SKIPPED, ShellTest, run_tests_with

try:
    import pexpect  # type: ignore
except ImportError:
    print("python3-pexpect is not installed.")
    sys.exit(SKIPPED)

PROMPT = "ready>"


class ZshTest(ShellTest):
    def start(self) -> pexpect.spawn:
        """A shell that has read the script."""
        path = self.script("zsh")
        self.environment.update(PS1=PROMPT, COLUMNS="120")
        shell = pexpect.spawn(
            "zsh", ["-f"], env=self.environment, cwd=str(self.directory / "cwd"), timeout=60, dimensions=(50, 120)
        )
        self.addCleanup(shell.close, force=True)
        shell.expect_exact(PROMPT)
        # The end of the output differs from the line that is typed.
        shell.sendline(f"autoload -U compinit; compinit -u -D; source {path}; echo com''pletes")
        shell.expect_exact("\ncompletes")
        shell.expect_exact(PROMPT)
        return shell

    def test_the_script_has_no_errors_of_syntax(self) -> None:
        self.assertEqual(self.output_of("zsh", "-f", "-n", str(self.script("zsh"))), "")

    def test_a_single_candidate_is_inserted(self) -> None:
        shell = self.start()
        shell.send("cadjobs list --state=Fai\t")
        shell.expect_exact("--state=Failed")
        shell.send("\x15cadjobs host sto\t")
        shell.expect_exact("host stop")

    def test_several_candidates_are_listed_with_descriptions(self) -> None:
        shell = self.start()
        shell.send("cadjobs wa\t\t")
        shell.expect(r"watch +-- the jobs live; Ctrl-C ends only the watching")
        shell.expect(r"wait +-- show these jobs until all have ended")

    def test_file_names_come_from_the_shell(self) -> None:
        self.make_file("jobs of today.json")
        shell = self.start()
        shell.send("cadjobs add jo\t")
        shell.expect_exact("jobs\\ of\\ today.json")


if __name__ == "__main__":
    run_tests_with("zsh")
