# frozen_string_literal: true

require_relative "test_helper"

class RunInfoTest < Minitest::Test
  include JobFolders

  SCRIPT = 'require "controller_scenario"; ControllerScenario.run { |job| job.message(job.id) }'

  def refuse(content, problem)
    path = write_file("info.json", content)
    exit_code = nil
    _, stderr = capture_io { exit_code = ControllerScenario.execute([path]) { flunk } }
    assert_equal 2, exit_code
    assert_match problem, stderr
  end

  def refuse_member(problem, **change)
    refuse(JSON.generate(run_info(**change)), problem)
  end

  def test_refused
    refuse("", /info\.json is not valid JSON/)
    refuse('{"version":1', /info\.json is not valid JSON/)
    refuse("[]", /info\.json: expected an object/)
    refuse("#{'[' * 200}#{']' * 200}", /info\.json is not valid JSON/)
    refuse_member(/version: expected 1, found 2/, version: 2)
    refuse_member(/jobId: expected a text/, jobId: 5)
    refuse_member(/inputFiles: expected a list of texts/, inputFiles: "a.stl")
    refuse_member(/inputFiles: expected a list of texts/, inputFiles: [1])
    refuse_member(/workDir: "" is not a folder/, workDir: "")
  end

  def test_a_missing_file_is_named
    _, stderr = capture_io { assert_equal 2, ControllerScenario.execute(["/no/such/file.json"]) { flunk } }
    assert_match(%r{cannot be read: .*/no/such/file\.json}, stderr)
  end

  def test_a_byte_order_mark_is_accepted
    path = write_file("info.json", "\uFEFF#{JSON.generate(run_info)}")
    assert_equal(0, ControllerScenario.execute([path]) { nil })
  end

  def test_missing_members_are_empty
    path = write_file("info.json", JSON.generate(workDir: @work_dir))
    assert_equal(0, ControllerScenario.execute([path]) { |job| assert_equal ["", []], [job.id, job.inputs] })
  end

  def run_with(environment, *arguments)
    _, @stderr, status = Open3.capture3(environment.merge("RUBYLIB" => API_FOLDER), *ruby, "-e", SCRIPT, *arguments)
    status.exitstatus
  end

  def test_the_environment_names_the_file_where_no_argument_does
    assert_equal 0, run_with({ "CONTROLLER_RUN_INFO" => write_run_info }), @stderr
    assert_equal ["3f9a0c1"], result_texts
  end

  def test_an_argument_that_names_no_file_gives_way_to_the_environment
    assert_equal 0, run_with({ "CONTROLLER_RUN_INFO" => write_run_info }, "/garbled/path.json"), @stderr
  end

  def test_without_either_it_says_what_is_missing
    assert_equal 2, run_with({ "CONTROLLER_RUN_INFO" => nil })
    assert_match(/give the path of run_scenario_info\.json/, @stderr)
  end
end
