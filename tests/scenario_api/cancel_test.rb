# frozen_string_literal: true

require_relative "test_helper"

class CancelTest < Minitest::Test
  include JobFolders

  ENDLESS = <<~SCRIPT
    require "controller_scenario"
    ControllerScenario.run do |job|
      job.progress(1, "started")
      Thread.pass until job.cancelled?
      job.progress(2, "never seen")
    end
  SCRIPT

  def ask_to_stop
    write_file("work/killprocess", "")
  end

  def test_is_not_cancelled_at_first_and_stays_cancelled_once_it_was
    run_scenario do |job|
      refute_predicate job, :cancelled?
      path = ask_to_stop
      assert_predicate job, :cancelled?
      File.unlink(path)
      assert_predicate job, :cancelled?
    end
  end

  def test_a_request_that_is_there_at_the_start_is_named_and_no_earlier_result_stays
    path = ask_to_stop
    write_file("work/run_scenario_result.json", '{"succeeded":true}')
    exit_code = run_scenario { |job| job.progress(50) }
    assert_equal 3, exit_code
    assert_equal "controller_scenario: #{path} was there at the start and asks the scenario to stop; remove it to run " \
                 "the scenario.\n", @stderr
    refute_result
  end

  def test_progress_ends_a_cancelled_job_without_a_result
    exit_code = run_scenario do |job|
      ask_to_stop
      job.progress(50)
      flunk
    end
    assert_equal 3, exit_code
    assert_empty @stderr
    refute_result
  end

  def test_a_scenario_cleans_up_and_its_own_rescue_does_not_hold_it
    cleaned = false
    exit_code = run_scenario do |job|
      ask_to_stop
      job.stop_if_cancelled
    rescue StandardError
      flunk
    ensure
      cleaned = true
    end
    assert_equal [3, true], [exit_code, cleaned]
  end

  def test_a_failure_after_the_request_to_stop_is_no_failure
    exit_code = run_scenario do |job|
      ask_to_stop
      job.fail!("the tool was ended")
    end
    assert_equal 3, exit_code
    refute_result
  end

  def test_a_job_that_finished_all_the_same_is_a_success
    assert_equal(0, run_scenario { ask_to_stop })
    assert result["succeeded"]
  end

  def test_killprocess_ends_a_running_scenario
    exit_code = interrupt_script(write_file("endless.rb", ENDLESS)) { ask_to_stop }
    assert_equal [3, ""], [exit_code, @stderr]
    refute_result
  end

  def test_sigterm_ends_a_running_scenario
    skip "Windows has no SIGTERM between processes" if Gem.win_platform?
    exit_code = interrupt_script(write_file("endless.rb", ENDLESS)) { |pid| Process.kill("TERM", pid) }
    assert_equal [3, ""], [exit_code, @stderr]
    refute_result
  end
end
