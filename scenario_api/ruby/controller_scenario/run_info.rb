# frozen_string_literal: true

require "json"

module ControllerScenario
  # What the controller asks of this run: the content of run_scenario_info.json.
  class RunInfo
    # The run information is missing or not as it should be: this process was not started as a scenario.
    class Unusable < StandardError; end

    ENVIRONMENT_VARIABLE = "CONTROLLER_RUN_INFO"
    SIZE_LIMIT = 256 * 1024 * 1024

    attr_reader :job_id, :scenario_path, :input_files, :output_directory, :work_dir, :run_argument

    # The path of the run information: the first argument, else the environment variable.
    # Windows may spoil an argument that its code page cannot say, so an argument that names no file gives way.
    def self.locate(arguments)
      candidates = [arguments.first, ENV.fetch(ENVIRONMENT_VARIABLE, nil)].reject { |path| path.to_s.empty? }
      return candidates.find { |path| File.file?(path) } || candidates.first unless candidates.empty?

      raise Unusable, "no run information: give the path of run_scenario_info.json as the first argument " \
                      "or in the environment variable #{ENVIRONMENT_VARIABLE}"
    end

    # Reads and checks the file; raises Unusable with file, member and what was expected.
    def self.read(path)
      raise Unusable, "#{path} is larger than #{SIZE_LIMIT} bytes" if File.size(path) > SIZE_LIMIT

      new(path, JsonFile.read(path))
    rescue SystemCallError => e
      raise Unusable, "the run information cannot be read: #{Text.of_system_error(e)}"
    rescue JSON::ParserError => e
      raise Unusable, "#{path} is not valid JSON: #{Text.clean(e.message)}"
    end

    def initialize(path, members)
      @path = path
      @members = members
      check(members.is_a?(Hash), "expected an object")
      version = members.fetch("version", LAYOUT_VERSION)
      check(version == LAYOUT_VERSION, "version: expected #{LAYOUT_VERSION}, found #{JSON.generate(version)}")
      read_members
      check(File.directory?(work_dir), "workDir: \"#{work_dir}\" is not a directory")
    end

    private

    def read_members
      @job_id = text("jobId")
      @scenario_path = Text.path(text("scenarioPath")).freeze
      @input_files = texts("inputFiles").map { |path| Text.path(path).freeze }.freeze
      @output_directory = Text.path(text("outputFolder")).freeze
      @work_dir = Text.path(text("workDir")).freeze
      @run_argument = text("runArgument")
    end

    def text(name)
      value = @members.fetch(name, "")
      check(value.is_a?(String), "#{name}: expected a text")
      value.freeze
    end

    def texts(name)
      value = @members.fetch(name, [])
      check(value.is_a?(Array) && value.all?(String), "#{name}: expected a list of texts")
      value
    end

    def check(condition, problem)
      raise Unusable, "#{@path}: #{problem}" unless condition
    end
  end
end
