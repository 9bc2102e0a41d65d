# frozen_string_literal: true

require_relative "../test_helper"
require File.join(INPUTS_FOLDER, "make_parts")

# Runs the scenarios for CAD parts; tests that need a program are skipped where it is not installed.
module CadFixtures
  include JobFolders

  def self.need(test, key)
    kind = ToolPlaces::KINDS.fetch(key)
    test.skip ToolPlaces.advice(kind) unless ToolPlaces.find(kind)
    parts if key == :draw # before a test puts a stand-in into the program's place
  end

  # The directory with the parts of the examples, which are made once.
  def self.parts
    @parts ||= Dir.mktmpdir("scenario-test-parts-").tap do |folder|
      Minitest.after_run { FileUtils.remove_entry(folder) }
      log = $stdout
      $stdout = File.open(File::NULL, "w")
      make_parts(folder)
    ensure
      $stdout = log
    end
  end

  def part(name)
    File.join(CadFixtures.parts, name)
  end

  def run_example(name, *paths, run_argument: "")
    run_script(File.join(EXAMPLES_FOLDER, "scenarios/#{name}.rb"), inputFiles: paths, runArgument: run_argument)
  end

  def assert_refused(text)
    assert_equal [false, [text]], [result["succeeded"], result_texts], @stdout[0, 10_000]
    assert_empty Dir.children(@output_folder)
  end

  def output(name)
    File.join(@output_folder, name)
  end

  # A program that stands in for a CAD tool while the block runs: a script for the Ruby that runs the tests.
  def with_tool(variable, script)
    path = write_file("tool", "#!#{RbConfig.ruby}\n#{script}")
    File.chmod(0o755, path)
    with_variable(variable, path) { yield path }
  end

  def with_variable(variable, value)
    earlier = ENV.fetch(variable, nil)
    ENV[variable] = value
    yield
  ensure
    ENV[variable] = earlier
  end
end
