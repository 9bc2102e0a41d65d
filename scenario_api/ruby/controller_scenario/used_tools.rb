# frozen_string_literal: true

require "json"
require "rbconfig"

module ControllerScenario
  # The tools and files that the results depend on beside the inputs, for used_tools.json.
  class UsedTools
    FILE_NAME = "used_tools.json"

    # The controller refuses a longer list.
    LIMIT = 1000

    def initialize(work_dir)
      @work_dir = work_dir
      @versions = { "ruby" => RUBY_VERSION }
      @files = {}
    end

    # Notes the version of a tool; the last one of a name counts.
    def add_version(name, version)
      raise ArgumentError, "more than #{LIMIT} tools" if @versions.size == LIMIT && !@versions.key?(name.to_s)

      @versions[name.to_s] = version.to_s
    end

    # Notes a file that the results depend on and that is no input.
    def add_file(path)
      @files[File.expand_path(path)] = true
    end

    # Writes the file. A report is a courtesy to later jobs: without it the result of this one stands.
    def write
      AtomicFile.write(File.join(@work_dir, FILE_NAME), JSON.generate(content))
    rescue SystemCallError => e
      warn "controller_scenario: the used tools could not be written: #{Text.of_system_error(e)}"
    end

    private

    def content
      { "version" => LAYOUT_VERSION,
        "tools" => @versions.map { |name, version| { "name" => Text.clean(name), "version" => Text.clean(version) } },
        "files" => (@files.keys | loaded_files).map { |path| Text.clean(path) } }
    end

    # The Ruby files that the script has loaded, without those of Ruby itself and of its own package.
    def loaded_files
      passed_over = [RbConfig::CONFIG["rubylibprefix"], @work_dir].map { |directory| "#{File.expand_path(directory)}/" }
      $LOADED_FEATURES.select { |path| File.file?(path) && !path.start_with?(*passed_over) }
    end
  end
end
