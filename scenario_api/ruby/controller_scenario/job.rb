# frozen_string_literal: true

require "json"

module ControllerScenario
  # The job that the scenario runs for. All paths are absolute and in the system's own spelling.
  class Job
    PROGRESS_FILE_NAME = "progress_info_list.json"

    # The Result that will be written when the scenario ends.
    attr_reader :result

    # The UsedTools that will be written with it.
    attr_reader :used_tools

    def initialize(info, stop_request)
      @info = info
      @stop_request = stop_request
      @result = Result.new(info.job_id, info.work_dir)
      @used_tools = UsedTools.new(info.work_dir)
      @progress_path = File.join(info.work_dir, PROGRESS_FILE_NAME)
      @last_percent = nil
    end

    # The job's identifier.
    def id
      @info.job_id
    end

    # Paths of the input files, in the order in which they were asked for.
    def inputs
      @info.input_files
    end

    # The directory for output files. That of a job without inputs is as the user named it: it may not exist yet
    # (#output_path creates it), or contain other files.
    def output_directory
      @info.output_directory
    end

    # The free text that came with the request; see also #parameters.
    def run_argument
      @info.run_argument
    end

    # The job's own directory for the controller's files and temporary ones; also the current directory at the start.
    def work_dir
      @info.work_dir
    end

    # The scenario file (for a packaged scenario: the package) that was asked for.
    def scenario_path
      @info.scenario_path
    end

    # The chosen parameters by name, from the run argument and the scenario's parameter sets; see Parameters.
    # `description` is the JSON file with the parameter sets; nil: the one beside the script.
    def parameters(description = nil)
      Parameters.choose(run_argument, description || Parameters.file_beside($PROGRAM_NAME))
    end

    # Reports how far the job is: 0 to 100, with a message for the user. Raises Cancelled when the job is to stop.
    # Only a new percentage is written, so it may be called as often as is handy.
    def progress(percent, message = "")
      stop_if_cancelled
      percent = percent.to_i.clamp(0, 100)
      return if percent == @last_percent

      @last_percent = percent
      write_progress(percent, message)
    end

    # True once the job has been asked to stop. Costs one look at the file system.
    def cancelled?
      @stop_request.raised?
    end

    # Ends the scenario quietly, by raising Cancelled, when the job has been asked to stop.
    def stop_if_cancelled
      raise Cancelled if cancelled?
    end

    # Adds a message to the result: at most 200, of 2000 characters each. Code 0 is information; its other codes
    # (32 bits) a scenario chooses itself.
    def message(text, code: 0)
      result.add_message(text, code)
    end

    # Records the version of a tool that the results depend on, such as a mesher. Ruby's own is recorded always.
    def report_tool_version(name, version)
      used_tools.add_version(name, version)
    end

    # Records a file that the results depend on beside the inputs, such as a table of materials. The Ruby files that
    # the scenario has loaded are recorded always.
    def report_used_file(path)
      used_tools.add_file(path)
    end

    # Ends the job as failed with this message, which says what is wrong and what the user can do.
    def fail!(text, code: EXIT_FAILED)
      raise Failure.new(text, code: code)
    end

    # The path of an output file, whose directory is created. `name` is relative and stays inside the output directory.
    def output_path(name)
      parts = name.split(%r{[/\\]}, -1)
      if name.empty? || name.include?(":") || parts.any? { |part| ["", ".", ".."].include?(part) }
        raise ArgumentError, "an output file needs a relative name inside the output directory, not \"#{name}\""
      end

      File.join(output_directory, *parts).tap { |path| make_directory(File.dirname(path)) }
    end

    # Writes a whole output file atomically and lists it in the result; returns its path.
    def write_output(name, content)
      path = output_path(name)
      AtomicFile.write(path, content)
      add_output(path)
    end

    # Lists a file that the scenario has written by other means in the result; returns its path.
    def add_output(path)
      raise ArgumentError, "the output file #{path} does not exist" unless File.file?(path)

      result.add_output_file(path)
      path
    end

    private

    def make_directory(directory)
      return if Dir.exist?(directory)

      require "fileutils"
      FileUtils.mkdir_p(directory)
    end

    # Progress is a courtesy: a full disk must not end a job whose own output may still succeed.
    def write_progress(percent, message)
      AtomicFile.write(@progress_path, JSON.generate(progress_list(percent, message)))
    rescue SystemCallError => e
      warn "controller_scenario: progress could not be written: #{Text.of_system_error(e)}"
    end

    def progress_list(percent, message)
      { "version" => LAYOUT_VERSION, "jobId" => Text.clean(id),
        "progressInfoList" => [{ "progress" => percent, "message" => Text.clean(message) }] }
    end
  end
end
