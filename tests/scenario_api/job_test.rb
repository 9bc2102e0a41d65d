# frozen_string_literal: true

require_relative "test_helper"

class JobTest < Minitest::Test
  include JobFolders

  def test_hands_the_request_to_the_scenario
    exit_code = run_scenario(inputFiles: ["/in/ä b.stl", "/in/c.stl"], runArgument: "fine size=3") do |job|
      assert_equal "3f9a0c1", job.id
      assert_equal ["/in/ä b.stl", "/in/c.stl"], job.inputs
      assert_equal @output_folder, job.output_folder
      assert_equal @work_dir, job.work_dir
      assert_equal "/s/test.rb", job.scenario_path
      assert_equal "fine size=3", job.run_argument
    end
    assert_equal 0, exit_code, @stderr
  end

  def test_normal_end_is_success_with_messages_and_output_files
    exit_code = run_scenario do |job|
      job.message("all well")
      job.message("a remark", code: 7)
      job.write_output("report.txt", "content")
    end
    assert_equal 0, exit_code
    assert_equal({ "version" => 1, "jobId" => "3f9a0c1", "succeeded" => true,
                   "messages" => [{ "code" => 0, "text" => "all well" }, { "code" => 7, "text" => "a remark" }],
                   "outputFiles" => [File.join(@output_folder, "report.txt")] }, result)
  end

  def test_the_used_tools_and_files_are_reported
    table = write_file("table.txt", "steel")
    run_scenario do |job|
      job.report_tool_version("mesher", "2.0")
      job.report_tool_version(:mesher, 2.1)
      job.report_used_file(table)
    end
    report = JSON.parse(File.read(File.join(@work_dir, "used_tools.json")))
    assert_equal [{ "name" => "ruby", "version" => RUBY_VERSION }, { "name" => "mesher", "version" => "2.1" }], report["tools"]
    assert_includes report["files"], table
    assert_includes report["files"], File.join(API_FOLDER, "controller_scenario.rb")
    assert_empty(report["files"].select { |path| path.end_with?("/json.rb") })
  end

  def test_a_report_that_cannot_be_written_does_not_fail_the_job
    Dir.mkdir(File.join(@work_dir, "used_tools.json"))
    assert_equal(0, run_scenario { |job| job.message("all well") })
    assert result["succeeded"]
    assert_match(/used tools could not be written/, @stderr)
  end

  def test_fail_ends_as_failed_with_this_message_first_and_no_trace
    exit_code = run_scenario do |job|
      job.message("before")
      job.fail!("part.stl is empty")
      flunk
    end
    assert_equal 1, exit_code
    assert_equal ["part.stl is empty", "before"], result_texts
    refute result["succeeded"]
    assert_empty @stderr
  end

  def test_an_exception_becomes_a_failed_result_and_a_trace
    assert_equal(1, run_scenario { raise "broken" })
    assert_equal ["broken"], result_texts
    assert_match(/job_test\.rb:\d+.*broken/, @stderr)
  end

  def test_an_exception_that_is_hard_to_understand_is_named
    assert_equal(1, run_scenario { [].fetch(3) })
    assert_match(/\Aindex 3 outside of array bounds: .* \(IndexError\)\z/, result_texts.first)
  end

  def test_a_script_that_cannot_be_loaded_fails_with_a_message
    assert_equal(1, run_scenario { require "no/such/library" })
    assert_match(/no such file to load|cannot load such file/, result_texts.first)
  end

  def test_exit_with_a_code_fails_and_exit_without_is_success
    assert_equal(1, run_scenario { exit(4) })
    assert_equal [{ "code" => 4, "text" => "The scenario ended with exit code 4." }], result["messages"]
    assert_equal(0, run_scenario { exit })
    assert result["succeeded"]
  end

  def test_messages_of_any_bytes_become_valid_utf8_of_limited_length
    run_scenario do |job|
      job.message("\xFF raw".b)
      job.message("gr\xFC\xDFe".dup.force_encoding("ISO-8859-1"))
      job.message("x" * 5000)
    end
    assert_equal ["\uFFFD raw", "grüße"], result_texts.first(2)
    assert_equal 2000, result_texts.last.length
  end

  def test_messages_beyond_the_limit_are_counted
    run_scenario { |job| 203.times { |number| job.message(number) } }
    assert_equal 201, result_texts.size
    assert_equal "3 more messages were left out.", result_texts.last
  end

  def test_codes_stay_within_32_bits
    run_scenario { |job| [2**40, -(2**40)].each { |code| job.message("", code: code) } }
    assert_equal([2_147_483_647, -2_147_483_648], result["messages"].map { |message| message["code"] })
  end

  def test_a_result_never_grows_beyond_what_the_controller_reads
    run_scenario do |job|
      200.times { job.message("\0" * 5000) }
      path = File.join(@output_folder, "x" * 200).tap { |name| File.write(name, "") }
      20_000.times { |number| job.result.add_output_file("#{path}/../#{number}") }
    end
    assert_operator File.size(File.join(@work_dir, "run_scenario_result.json")), :<, 4 * 1024 * 1024
    assert_equal "The list of 20000 output files was too long and left out.", result_texts.last
  end

  def test_names_that_are_no_valid_utf8_arrive_as_the_bytes_they_are
    skip "Windows has no such names" if Gem.win_platform?
    path = File.join(@root, "caf\xE9 \xFF\x80.stl")
    File.binwrite(path, "content")
    info = JSON.generate(run_info(inputFiles: [File.join(@root, "NAME")]))
    write_file("work/run_scenario_info.json", info.sub("NAME") { 'caf\udce9 \udcff\udc80.stl' })
    ControllerScenario.execute([File.join(@work_dir, "run_scenario_info.json")]) do |job|
      assert_equal [path], job.inputs
      job.fail!("#{File.basename(job.inputs.first)} holds #{File.read(job.inputs.first)}")
    end
    assert_equal ["caf\uFFFD \uFFFD\uFFFD.stl holds content"], result_texts
  end

  def test_progress_is_written_with_its_message
    run_scenario { |job| job.progress(30.9, "reading ä") }
    assert_equal({ "version" => 1, "jobId" => "3f9a0c1",
                   "progressInfoList" => [{ "progress" => 30, "message" => "reading ä" }] }, progress)
  end

  def test_progress_stays_between_0_and_100
    seen = []
    run_scenario do |job|
      [-5, 250].each do |percent|
        job.progress(percent)
        seen << progress["progressInfoList"].last["progress"]
      end
    end
    assert_equal [0, 100], seen
  end

  def test_progress_is_written_again_only_for_a_new_percentage
    run_scenario do |job|
      job.progress(30, "first")
      job.progress(30.7, "not written")
      assert_equal "first", progress["progressInfoList"].last["message"]
      job.progress(31, "second")
    end
    assert_equal "second", progress["progressInfoList"].last["message"]
  end

  def test_progress_that_cannot_be_written_does_not_end_the_job
    exit_code = run_scenario do |job|
      Dir.mkdir(File.join(@work_dir, "progress_info_list.json"))
      job.progress(10)
    end
    assert_equal 0, exit_code
    assert_match(/progress could not be written/, @stderr)
  end

  def test_output_files_may_stand_in_subfolders
    run_scenario { |job| job.write_output("images/front/a.png", "\x00\xFF".b) }
    path = File.join(@output_folder, "images/front/a.png")
    assert_equal [path], result["outputFiles"]
    assert_equal "\x00\xFF".b, File.binread(path)
  end

  def test_a_missing_output_folder_is_made
    folder = File.join(@root, "not/yet")
    run_scenario(outputFolder: folder) { |job| job.write_output("a.txt", "") }
    assert_equal [File.join(folder, "a.txt")], result["outputFiles"]
  end

  def test_output_names_that_leave_the_output_folder_are_refused
    ["", ".", "..", "../a", "a/../b", "/etc/a", "a/", "a//b", "C:a", "C:\\a", "a\\..\\b"].each do |name|
      assert_equal(1, run_scenario { |job| job.output_path(name) }, name)
      assert_match(/needs a relative name inside the output folder/, result_texts.first)
    end
  end

  def test_a_file_that_the_scenario_wrote_itself_can_be_listed_once_it_exists
    assert_equal(1, run_scenario { |job| job.add_output(File.join(@output_folder, "missing")) })
    run_scenario do |job|
      File.write(job.output_path("own.txt"), "")
      2.times { job.add_output(job.output_path("own.txt")) }
    end
    assert_equal [File.join(@output_folder, "own.txt")], result["outputFiles"]
  end

  def test_leaves_no_temporary_files
    run_scenario do |job|
      job.progress(1)
      job.write_output("a", "")
    end
    assert_equal %w[progress_info_list.json run_scenario_info.json run_scenario_result.json used_tools.json],
                 Dir.children(@work_dir).sort
    assert_equal ["a"], Dir.children(@output_folder)
  end

  def test_a_result_that_cannot_be_written_is_a_failure
    Dir.mkdir(File.join(@work_dir, "run_scenario_result.json"))
    assert_equal(1, run_scenario { nil })
    assert_match(/the result could not be written/, @stderr)
  end
end
