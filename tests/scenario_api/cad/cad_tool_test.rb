# frozen_string_literal: true

require_relative "cad_fixtures"

# How the scenarios find and run CAD programs, shown with stand-ins for them.
class CadToolTest < Minitest::Test
  include CadFixtures

  # Enough of a STEP file to pass for one before a program reads it.
  STEP = "ISO-10303-21;\nDATA;\n#1=ADVANCED_FACE('',(),$,.T.);\nENDSEC;\nEND-ISO-10303-21;\n"

  def report_with(script, run_argument: "")
    with_tool("CAD_DRAW", script) do
      run_example("part_report", write_file("my part.step", STEP), run_argument: run_argument)
    end
  end

  def test_a_missing_program_is_named_with_what_to_install
    with_variable("PATH", @root) { run_example("part_report", write_file("a.step", STEP)) }
    assert_refused "Open CASCADE's DRAWEXE is not installed. On Debian: apt-get install occt-draw; elsewhere: " \
                   "dev.opencascade.org. Or name its program in the environment variable CAD_DRAW."
  end

  def test_a_variable_that_names_no_program_is_told
    with_variable("CAD_DRAW", @root) { run_example("part_report", write_file("a.step", STEP)) }
    assert_refused "CAD_DRAW names #{@root}, which is no program; set it to the path of Open CASCADE's DRAWEXE, or unset it."
  end

  def test_a_program_is_found_in_path
    directory = make_folder("bin")
    FileUtils.cp(with_tool("CAD_CCX", "") { |path| path }, File.join(directory, "ccx_static"))
    kind = ToolPlaces::KINDS[:ccx]
    with_variable("PATH", [@root, directory].join(File::PATH_SEPARATOR)) do
      assert_equal File.join(directory, "ccx_static"), ToolPlaces.find(kind)
    end
  end

  def test_a_program_that_says_nothing_has_not_succeeded
    assert_equal 1, report_with("exit 0")
    assert_refused "my part.step: Open CASCADE's DRAWEXE stopped half way; the log says more"
  end

  def test_what_a_file_makes_a_program_print_does_not_pass_for_success
    report_with('puts "VALUE volume 5", "DONE", " DONE ", "0123456789abcdef DONE"')
    assert_refused "my part.step: Open CASCADE's DRAWEXE stopped half way; the log says more"
  end

  def test_a_program_that_crashes_is_told_with_its_last_line
    report_with('puts "Reading part.step", ""; $stdout.flush; Process.kill(:KILL, Process.pid); sleep')
    assert_refused "my part.step: Open CASCADE's DRAWEXE crashed (signal 9): Reading part.step"
  end

  def test_an_exit_code_is_told
    report_with('warn "no licence"; exit 7')
    assert_refused "my part.step: Open CASCADE's DRAWEXE ended with exit code 7: no licence"
  end

  def test_a_program_that_does_not_end_is_stopped_after_the_time_limit
    report_with("sleep", run_argument: "timeLimit=1")
    assert_refused "my part.step: Open CASCADE's DRAWEXE was stopped after 1 seconds"
  end

  # Whether it had begun its work by then or not.
  def test_a_stopped_program_is_gone
    original, pid = Process.method(:spawn), nil
    spawn = ->(*arguments, **options) { pid = original.call(*arguments, **options) }
    with_tool("CAD_DRAW", "sleep") do
      tool = Tool.new(SetUpJob.new(@work_dir), :draw, 0.1)
      Process.stub(:spawn, spawn) { assert_raises(Tool::Failed) { tool.run } }
    end
    assert_raises(Errno::ESRCH) { Process.kill(0, pid) }
  end

  def test_a_program_that_prints_without_end_is_stopped_after_the_time_limit
    report_with('loop { print "x" * 1000 }', run_argument: "timeLimit=1")
    assert_refused "my part.step: Open CASCADE's DRAWEXE was stopped after 1 seconds"
    assert_operator @stdout.size, :<, 2 * Tool::LOG_LIMIT
  end

  def test_a_script_that_says_done_without_its_values_has_not_succeeded
    report_with('puts ENV["SETTING_TOKEN"] + " DONE "')
    assert_refused "my part.step: Open CASCADE's DRAWEXE told no box_part; the log says more"
  end

  def test_what_a_program_says_names_the_users_file
    report_with('puts ENV["SETTING_TOKEN"] + " ERROR part.step holds no shape"')
    assert_refused "my part.step holds no shape"
  end

  def test_a_long_output_is_cut_in_the_log_but_heard_to_its_end
    report_with('puts "line" * 1000 while (@size = @size.to_i + 4001) < 10_000_000
                 puts ENV["SETTING_TOKEN"] + " ERROR part.step is no good"')
    assert_refused "my part.step is no good"
    assert_operator @stdout.size, :<, 2 * Tool::LOG_LIMIT
  end

  def test_a_running_program_ends_when_the_job_is_cancelled
    script = "File.write('#{@root}/pid', Process.pid); puts ENV['SETTING_TOKEN'] + ' STEP 10 20 working'; " \
             "$stdout.flush; sleep"
    exit_code = with_tool("CAD_DRAW", script) do
      interrupt_script(File.join(EXAMPLES_FOLDER, "scenarios/part_report.rb"),
                       inputFiles: [write_file("a.step", STEP)]) { write_file("work/killprocess", "") }
    end
    assert_equal 3, exit_code
    refute_result
    assert_raises(Errno::ESRCH) { Process.kill(0, File.read(File.join(@root, "pid")).to_i) }
  end
end
