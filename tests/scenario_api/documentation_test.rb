# frozen_string_literal: true

require_relative "test_helper"

# The programs in docs/writing-scenarios.md work as described.
class DocumentationTest < Minitest::Test
  include JobFolders

  GUIDE = File.read(File.join(PROJECT_FOLDER, "docs/writing-scenarios.md"), encoding: "UTF-8")

  # The first program in this language that contains the text.
  def program(language, text)
    GUIDE.scan(/^```#{language}\n(.*?)^```/m).flatten.find { |program| program.include?(text) }
  end

  def inputs(*contents)
    contents.each_with_index.map { |content, index| write_file("#{index}.txt", content) }
  end

  # Runs a scenario in Python in a separate process; returns its exit code.
  def run_python(script, **changes)
    environment = { "PYTHONPATH" => PYTHON_API_FOLDER, "PYTHONDONTWRITEBYTECODE" => "1" }
    path = write_run_info(**changes)
    @stdout, @stderr, status = Open3.capture3(environment, PYTHON_PROGRAM, script, path, chdir: @work_dir)
    status.exitstatus
  end

  def check_first_scenario
    assert_equal 0, yield(inputFiles: inputs("a\nb\n", "c")), @stderr
    assert_equal "0.txt: 2\n1.txt: 1", File.read(File.join(@output_folder, "lines.txt"))
    assert_equal ["Counted 2 files"], result_texts
    assert_equal 1, yield(inputFiles: inputs("a", ""))
    assert_equal ["1.txt is empty."], result_texts
    assert_equal 1, yield(inputFiles: [])
    assert_equal ["No input file was given; choose one file or more."], result_texts
  end

  def test_the_first_scenario_in_ruby_counts_lines
    script = write_file("count_lines.rb", program("ruby", "Counting the lines"))
    check_first_scenario { |changes| run_script(script, **changes) }
  end

  def test_the_first_scenario_in_python_counts_lines
    script = write_file("count_lines.py", program("python", "Counting the lines"))
    check_first_scenario { |changes| run_python(script, **changes) }
  end

  def test_the_scenario_of_the_readme_in_python
    readme = File.read(File.join(PROJECT_FOLDER, "README.md"), encoding: "UTF-8")
    script = write_file("sizes.py", readme[/^```python\n(import os\n.*?)^```/m, 1])
    assert_equal 0, run_python(script, inputFiles: inputs("abc")), @stderr
    assert_equal "3\n", File.read(File.join(@output_folder, "0.txt.size"))
  end

  def test_the_protocol_in_python
    script = write_file("protocol.py", program("python", "run_scenario_result.json"))
    info = write_run_info(inputFiles: inputs("a", "b"))
    _, stderr, status = Open3.capture3(PYTHON_PROGRAM, script, info)
    assert_predicate status, :success?, stderr
    assert_equal [{ "progress" => 50, "message" => "1.txt" }], progress["progressInfoList"]
    assert_equal [true, ["All done"]], [result["succeeded"], result_texts]
  end

  # The commands of the trial, with directories of the test.
  def trial_commands
    commands = GUIDE[/^```sh\n(mkdir .*?)^```/m, 1]
    commands.gsub("$PWD/try", File.join(@root, "try")).gsub(" try/", " #{@root}/try/")
            .sub(/^ruby /, "#{ruby.join(' ')} ").sub(" python3 ", " #{PYTHON_PROGRAM} -B ")
  end

  def test_a_trial_by_hand_works_again_after_a_request_to_stop
    2.times do
      output, status = Open3.capture2e("sh", "-e", stdin_data: trial_commands, chdir: PROJECT_FOLDER)
      assert_predicate status, :success?, output
      assert_equal true, read_json("try/run_scenario_result.json")["succeeded"], output
      write_file("try/killprocess", "")
    end
  end

  def test_the_documented_layouts_are_those_that_are_written
    layouts = File.read(File.join(PROJECT_FOLDER, "docs/work-directory-files.md"), encoding: "UTF-8")
                  .scan(/^```json\n(.*?)^```/m).flatten.map { |text| JSON.parse(text) }
                  .reject { |layout| layout.key?("candidates") } # written by the host
    run_scenario do |job|
      job.message("text")
      job.progress(5)
    end
    assert_equal layouts.map(&:keys), [run_info.keys.map(&:to_s), progress.keys, result.keys,
                                        read_json("work/used_tools.json").keys]
    assert_equal layouts[1]["progressInfoList"].first.keys, progress["progressInfoList"].first.keys
    assert_equal layouts[2]["messages"].first.keys, result["messages"].first.keys
  end
end
