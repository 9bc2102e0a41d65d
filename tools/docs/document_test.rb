# frozen_string_literal: true

require "minitest/autorun"
require "tmpdir"
require_relative "document"

# What a document says about its commands, and what becomes of it.
class DocumentTest < Minitest::Test
  def document(text)
    Dir.mktmpdir do |directory|
      path = File.join(directory, "a.md")
      File.write(path, text)
      return Document.new(path)
    end
  end

  def problems(text)
    document(text).problems.map { |problem| problem[/\.md: (.*)/, 1] }
  end

  def test_a_command_must_say_whether_it_is_run
    assert_equal(['line 3: ls: the block says neither "run" nor "not run"'], problems("Text\n\n```sh\nls\n```\n"))
    assert_equal(['line 1: $ ls: the block says neither "run" nor "not run"'], problems("```console\n$ ls\n```\n"))
    ["run", "run, exit code 3", "run by #{__FILE__}", "not run: it deletes everything", "file a.sh"].each do |mark|
      assert_empty(problems("<!-- #{mark} -->\n```sh\nls\n```\n"))
    end
    assert_equal(1, problems("<!-- not run -->\n```sh\nls\n```\n").size)
    assert_equal(1, problems("<!-- run -->\n\n```sh\nls\n```\n").size)
  end

  def test_a_file_that_runs_a_command_must_exist
    assert_equal(["line 2: ls: there is no file tools/none"], problems("<!-- run by tools/none -->\n```sh\nls\n```\n"))
    Dir.chdir(File.expand_path("../..", __dir__)) do
      assert_empty(problems("<!-- run by .ci/run -->\n```sh\n./run bench\n```\n"))
      assert_equal(["line 2: ./run nothing: .ci/run does not run ./run nothing"],
                   problems("<!-- run by .ci/run -->\n```sh\n./run nothing\n```\n"))
    end
  end

  def test_a_block_by_indentation_or_without_a_language_is_refused
    assert_equal(["fence this block, with a language: cadjobs list"], problems("Text:\n\n    cadjobs list\n\nText\n"))
    assert_match(/the language of the block is none of/, problems("```\nls\n```\n").first)
    assert_empty(problems("- a list\n\n    - in a list\n\nText\n    continued\n"))
    assert_empty(problems("```text\n\n    indented\n```\n"))
  end

  def test_marked_commands_are_run_in_their_order
    text = "<!-- run -->\n```sh\none\n```\n<!-- not run: no -->\n```sh\ntwo\n```\n<!-- prepare\nthree\n-->\n" \
           "<!-- run -->\n```console\n$ four \\\n    five\noutput\n$ six\n```\n"
    assert_equal("one\nthree\nfour \\\n    five\nsix\n", document(text).script)
    assert_equal(2, document(text).run_count)
    assert_equal(1, document("<!-- file a -->\n```text\na\n```\n").run_count)
  end

  def test_a_document_without_marked_commands_runs_nothing
    assert_equal("", document("<!-- prepare\none\n-->\n```json\n{}\n```\n").script)
  end

  def test_a_shown_file_is_written
    script = document("<!-- file a.txt -->\n```text\n$HOME\n```\n<!-- run -->\n```sh\ncat a.txt\n```\n").script
    assert_equal("$HOME\n", IO.popen(["bash", "-euc", script], chdir: Dir.mktmpdir, &:read))
  end

  def test_another_exit_code_than_the_said_one_ends_the_commands
    text = "<!-- run, exit code 3 -->\n```sh\ntrue\n(exit %d)\n```\n"
    assert(system("bash", "-euc", document(format(text, 3)).script))
    refute(system("bash", "-euc", document(format(text, 0)).script))
    refute(system("bash", "-euc", document(format(text, 2)).script))
  end
end
