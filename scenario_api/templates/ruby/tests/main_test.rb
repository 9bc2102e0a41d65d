# frozen_string_literal: true

# Runs main.rb as the controller does: in a process of its own, with a run request in a file.
#
# RUBYLIB must name the directory of the scenario API: RUBYLIB=.../scenario_api/ruby ruby tests/main_test.rb
require "minitest/autorun"
require "fileutils"
require "json"
require "rbconfig"
require "tmpdir"

class MainTest < Minitest::Test
  MAIN = File.expand_path("../main.rb", __dir__)
  INPUT = File.join(__dir__, "input.txt")

  def setup
    @work_dir = Dir.mktmpdir("scenario-")
  end

  def teardown
    FileUtils.remove_entry(@work_dir)
  end

  # Returns the exit code of the scenario.
  def run_main(argument, *inputs)
    request = { version: 1, jobId: "1", scenarioPath: MAIN, inputFiles: inputs,
                outputFolder: File.join(@work_dir, "output"), workDir: @work_dir, runArgument: argument }
    info = File.join(@work_dir, "run_scenario_info.json")
    File.write(info, JSON.generate(request))
    system(RbConfig.ruby, MAIN, info, chdir: @work_dir)
    $?.exitstatus
  end

  def messages
    result = JSON.parse(File.read(File.join(@work_dir, "run_scenario_result.json"), encoding: "UTF-8"))
    result["messages"].map { |message| message["text"] }
  end

  def test_the_report_names_each_file
    assert_equal 0, run_main("", INPUT)
    assert_equal "input.txt: 15 bytes\n", File.read(File.join(@work_dir, "output/report.txt"))
    assert_equal ["Files: 1"], messages
  end

  def test_a_small_file_is_refused
    assert_equal 1, run_main("smallestSize=100", INPUT)
    assert_equal ["input.txt has 15 bytes; 100 or more are needed."], messages
  end

  def test_a_request_to_stop_ends_it
    FileUtils.touch(File.join(@work_dir, "killprocess"))
    assert_equal 3, run_main("", INPUT)
  end
end
