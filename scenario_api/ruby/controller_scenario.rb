# frozen_string_literal: true

# The job controller's API for scenarios written in Ruby.
#
#   require "controller_scenario"
#
#   ControllerScenario.run do |job|
#     job.inputs.each_with_index do |path, index|
#       job.progress(100 * index / job.inputs.size, "Reading #{File.basename(path)}")
#       job.fail!("#{File.basename(path)} is empty") if File.empty?(path)
#     end
#     job.write_output("report.txt", "#{job.inputs.size} files\n")
#   end
#
# Needs nothing beyond Ruby's standard library and also runs under "ruby --disable=gems".
# docs/writing-scenarios.md describes it for scenario authors, docs/work-directory-files.md the files behind it.
module ControllerScenario
  # Version of the layout of every file in a job's work directory.
  LAYOUT_VERSION = 1

  # A file with more levels of nesting is refused.
  NESTING_LIMIT = 64

  # What the scenario's process ends with.
  EXIT_SUCCESS = 0
  EXIT_FAILED = 1
  EXIT_NO_RUN_INFO = 2
  EXIT_CANCELLED = 3

  # Ends the job as failed, with this message and without a trace. Raised by Job#fail!.
  class Failure < StandardError
    attr_reader :code

    def initialize(message, code: EXIT_FAILED)
      super(message)
      @code = code
    end
  end

  # Unwinds a scenario that has been asked to stop.
  # Not a StandardError, so that a scenario's own "rescue" lets it pass.
  class Cancelled < Exception
    def initialize(message = "The job was cancelled.")
      super
    end
  end

  # Loaded when first used: a scenario should start quickly.
  autoload :AtomicFile, File.join(__dir__, "controller_scenario/atomic_file.rb")
  autoload :Job, File.join(__dir__, "controller_scenario/job.rb")
  autoload :JsonFile, File.join(__dir__, "controller_scenario/json_file.rb")
  autoload :Parameters, File.join(__dir__, "controller_scenario/parameters.rb")
  autoload :Result, File.join(__dir__, "controller_scenario/result.rb")
  autoload :RunInfo, File.join(__dir__, "controller_scenario/run_info.rb")
  autoload :StopRequest, File.join(__dir__, "controller_scenario/stop_request.rb")
  autoload :Text, File.join(__dir__, "controller_scenario/text.rb")
  autoload :UsedTools, File.join(__dir__, "controller_scenario/used_tools.rb")

  # Runs the block with the job that this process was started for, and ends the process.
  #
  # The block's normal end is success; Job#fail! and exceptions end the job as failed; a request to stop ends it
  # quietly. Standard output is unbuffered: what was printed before a sudden end is in the log.
  # Exit code: 0 success, 1 failed, 2 the run information could not be read, 3 cancelled.
  def self.run(arguments = ARGV, &scenario)
    $stdout.sync = true
    exit(execute(arguments, &scenario))
  end

  # The same without ending the process: returns the exit code.
  def self.execute(arguments = ARGV, &scenario)
    info = RunInfo.read(RunInfo.locate(arguments))
    StopRequest.listen(info.work_dir) do |stop_request|
      stop_request.tell_when_early
      job = Job.new(info, stop_request)
      job.result.discard_earlier
      finish(job, &scenario)
    end
  rescue RunInfo::Unusable => e
    warn "controller_scenario: #{e.message}"
    EXIT_NO_RUN_INFO
  end

  def self.finish(job, &scenario)
    exit_code = attempt(job, &scenario)
    job.used_tools.write
    job.result.write unless exit_code == EXIT_CANCELLED
    exit_code
  rescue SystemCallError => e
    warn "controller_scenario: the result could not be written: #{Text.of_system_error(e)}"
    EXIT_FAILED
  end
  private_class_method :finish

  def self.attempt(job)
    yield job
    EXIT_SUCCESS
  rescue Cancelled, Interrupt
    EXIT_CANCELLED
  rescue Failure => e
    record_failure(job, e.message, e.code)
  rescue SystemExit => e
    e.success? ? EXIT_SUCCESS : record_failure(job, "The scenario ended with exit code #{e.status}.", e.status)
  rescue StandardError, ScriptError, NoMemoryError, SystemStackError => e
    warn e.full_message(highlight: false)
    record_failure(job, Text.describe(e), EXIT_FAILED)
  end
  private_class_method :attempt

  # A scenario that was asked to stop often fails of it (a closed pipe, a child that ended). That is no failure.
  def self.record_failure(job, text, code)
    return EXIT_CANCELLED if job.cancelled?

    job.result.fail(text, code)
    EXIT_FAILED
  end
  private_class_method :record_failure
end
