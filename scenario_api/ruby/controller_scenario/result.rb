# frozen_string_literal: true

require "json"

module ControllerScenario
  # The verdict of a job, for run_scenario_result.json.
  class Result
    FILE_NAME = "run_scenario_result.json"

    # The controller reads no larger file.
    SIZE_LIMIT = 4 * 1024 * 1024

    # Messages beyond this many are counted, not kept. So many of the longest texts stay below the size limit.
    MESSAGE_LIMIT = 200

    # Codes are 32-bit integers.
    CODES = (-(2**31)..((2**31) - 1)).freeze

    def initialize(job_id, work_dir)
      @job_id = job_id
      @path = File.join(work_dir, FILE_NAME)
      @succeeded = true
      @messages = []
      @left_out = 0
      @output_files = {} # as keys: each once, in the order in which they came
    end

    # Removes what an earlier run in the same directory has left: it must not pass for the verdict of this one.
    def discard_earlier
      File.unlink(@path)
    rescue SystemCallError
      nil # there is none, or the later write will tell what is wrong
    end

    def add_message(text, code)
      return @left_out += 1 if @messages.size >= MESSAGE_LIMIT

      @messages << entry(text, code)
    end

    # The reason goes in front of all other messages: a list of jobs has room for one.
    def fail(text, code)
      @succeeded = false
      @messages.unshift(entry(text, code))
    end

    def add_output_file(path)
      @output_files[path] = true
    end

    # Writes the file, flushed to disk. Raises SystemCallError.
    def write
      notes = @left_out.zero? ? [] : ["#{@left_out} more messages were left out."]
      content = generate(notes, @output_files.keys)
      if content.bytesize > SIZE_LIMIT
        content = generate(notes + ["The list of #{@output_files.size} output files was too long and left out."], [])
      end
      AtomicFile.write(@path, content, durable: true)
    end

    private

    def entry(text, code)
      { "code" => Integer(code).clamp(CODES), "text" => Text.clean(text) }
    end

    def generate(notes, output_files)
      JSON.generate("version" => LAYOUT_VERSION, "jobId" => Text.clean(@job_id), "succeeded" => @succeeded,
                    "messages" => @messages + notes.map { |note| entry(note, 0) },
                    "outputFiles" => output_files.map { |path| Text.clean(path) })
    end
  end
end
