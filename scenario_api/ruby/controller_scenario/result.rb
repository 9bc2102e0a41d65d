# frozen_string_literal: true

require "json"

module ControllerScenario
  # The verdict of a job, for run_scenario_result.json.
  class Result
    FILE_NAME = "run_scenario_result.json"

    # Messages beyond this many are counted, not kept.
    MESSAGE_LIMIT = 1000

    attr_reader :messages, :output_files

    def initialize(job_id, work_dir)
      @job_id = job_id
      @path = File.join(work_dir, FILE_NAME)
      @succeeded = true
      @messages = []
      @left_out = 0
      @output_files = []
    end

    def succeeded?
      @succeeded
    end

    def add_message(text, code)
      return @left_out += 1 if @messages.size >= MESSAGE_LIMIT

      @messages << { "code" => Integer(code), "text" => Text.clean(text) }
    end

    # The reason goes in front of all other messages: a list of jobs has room for one.
    def fail(text, code)
      @succeeded = false
      @messages.unshift("code" => Integer(code), "text" => Text.clean(text))
    end

    def add_output_file(path)
      @output_files << path unless @output_files.include?(path)
    end

    # Writes the file, flushed to disk. Raises SystemCallError.
    def write
      AtomicFile.write(@path, JSON.generate(to_h), durable: true)
    end

    def to_h
      { "version" => LAYOUT_VERSION, "jobId" => @job_id, "succeeded" => @succeeded,
        "messages" => @messages + left_out_note, "outputFiles" => @output_files.map { |path| Text.clean(path) } }
    end

    private

    def left_out_note
      @left_out.zero? ? [] : [{ "code" => 0, "text" => "#{@left_out} more messages were left out." }]
    end
  end
end
