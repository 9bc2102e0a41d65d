# frozen_string_literal: true

# Runs the commands of the README's section "Use the command line" one after another, as a reader would after ./run demo.
# Usage, in the project's directory: check_readme.rb

SECTION = /^## Use the command line\n(.*?)^## /m
# Ctrl-C after a moment.
WATCHING = "timeout --preserve-status --signal=INT 2 "

# 1: a job has failed, or was over before it could be cancelled.
SCRIPT_HEAD = <<~'SHELL'
  try() {
      printf '$ %s\n' "$*"
      "$@" </dev/null || [ $? -eq 1 ] || { echo "README.md: this command does not work."; exit 1; }
  }
  set -u
SHELL

def tried(command)
  return command if command.start_with?("export ", "cd ")

  "try #{WATCHING if command.end_with?(" watch")}#{command}"
end

blocks = File.read("README.md", encoding: "UTF-8")[SECTION, 1].scan(/^```sh\n(.*?)^```$/m).join
commands = blocks.scan(/^(\S.*?)(?:\s+#.*)?$/).flatten
abort("README.md: the section has no commands") if commands.size < 10
script = [SCRIPT_HEAD, *commands.map { |command| tried(command) }, "try ./cadjobs host stop"].join("\n")
exit(system("bash", "-c", script))
