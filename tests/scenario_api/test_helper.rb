# frozen_string_literal: true

require "minitest/autorun"
require "minitest/mock"
require "fileutils"
require "json"
require "open3"
require "rbconfig"
require "timeout"
require "tmpdir"

PROJECT_FOLDER = File.expand_path("../..", __dir__)
API_FOLDER = File.join(PROJECT_FOLDER, "scenario_api/ruby")
PYTHON_API_FOLDER = File.join(PROJECT_FOLDER, "scenario_api/python")
# Named, because another Python may come first in PATH.
PYTHON_PROGRAM = ENV.fetch("CONTROLLER_PYTHON", "/usr/bin/python3")
EXAMPLES_FOLDER = File.join(PROJECT_FOLDER, "examples")
INPUTS_FOLDER = File.join(EXAMPLES_FOLDER, "inputs")
$LOAD_PATH.unshift(API_FOLDER)

require "controller_scenario"

# A job's directories and files as created by the controller, in a temporary directory of the test.
module JobFolders
  # Bounds the wait for other processes; the tests wait for events.
  DEADLINE_SECONDS = 60

  def setup
    super
    @root = Dir.mktmpdir("scenario-test-")
    @work_dir = make_folder("work")
    @output_folder = make_folder("output")
  end

  def teardown
    FileUtils.remove_entry(@root)
    super
  end

  def make_folder(name)
    File.join(@root, name).tap { |path| Dir.mkdir(path) }
  end

  def write_file(name, content)
    File.join(@root, name).tap { |path| File.binwrite(path, content) }
  end

  def run_info(**changes)
    { version: 1, jobId: "3f9a0c1", scenarioPath: "/s/test.rb", inputFiles: [], outputFolder: @output_folder,
      workDir: @work_dir, runArgument: "" }.merge(changes)
  end

  def write_run_info(**changes)
    write_file("work/run_scenario_info.json", JSON.generate(run_info(**changes)))
  end

  # Runs the block as a scenario in this process; returns its exit code. Its output to stderr is in @stderr.
  def run_scenario(**changes, &scenario)
    path = write_run_info(**changes)
    exit_code = nil
    _, @stderr = capture_io { exit_code = ControllerScenario.execute([path], &scenario) }
    exit_code
  end

  # Runs a scenario file in a separate process; returns its exit code.
  def run_script(script, **changes)
    path = write_run_info(**changes)
    @stdout, @stderr, status = Open3.capture3({ "RUBYLIB" => API_FOLDER }, *ruby, script, path, chdir: @work_dir)
    status.exitstatus
  end

  def ruby
    [RbConfig.ruby, "--disable=gems", "-w"]
  end

  # Starts a scenario file, yields its process id once it has reported progress, and returns its exit code.
  def interrupt_script(script, **changes)
    path = write_run_info(**changes)
    log = write_file("log.txt", "")
    pid = Process.spawn({ "RUBYLIB" => API_FOLDER }, *ruby, script, path, chdir: @work_dir, %i[out err] => log)
    Timeout.timeout(DEADLINE_SECONDS) do
      wait_for_file("work/progress_info_list.json")
      yield pid
      Process.wait2(pid).last.exitstatus
    end
  rescue Timeout::Error
    Process.kill("KILL", pid)
    Process.wait(pid)
    raise
  ensure
    @stderr = File.read(log)
  end

  def wait_for_file(name)
    Thread.pass until File.exist?(File.join(@root, name))
  end

  def read_json(name)
    JSON.parse(File.read(File.join(@root, name), encoding: "UTF-8"))
  end

  def result
    read_json("work/run_scenario_result.json")
  end

  def result_texts
    result["messages"].map { |message| message["text"] }
  end

  def progress
    read_json("work/progress_info_list.json")
  end

  def refute_result
    refute_path_exists(File.join(@work_dir, "run_scenario_result.json"))
  end
end
