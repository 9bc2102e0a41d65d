# frozen_string_literal: true

require "json"

module ControllerScenario
  # Reads the user's choice out of a run argument such as
  #
  #   fine                      the parameter set "fine" with its default values
  #   fine size=320             the same with another value for "size"
  #   size=320                  the first parameter set with another value
  #   title="Left bracket"      values with blanks stand in double quotes
  #   title="3"" pipe"          a double quote between them is written twice
  #
  # Parameter sets stand in "<script>.scenario.json" beside a script or in a package's "manifest.json".
  # Without such a file every name=value is taken as text.
  class Parameters
    SIZE_LIMIT = 4 * 1024 * 1024

    QUOTED = /"(?:[^"]|"")*"/
    INTEGER = /\A[+-]?[0-9]+\z/
    NUMBER = /\A[+-]?(?:[0-9]+(?:\.[0-9]+)?|\.[0-9]+)(?:[eE][+-]?[0-9]+)?\z/
    WORD = /(?:[^\s"]|#{QUOTED})+/

    # The values by name, each in its parameter's type: "integer", "number" and "boolean" become Integer, Float and
    # true or false, every other type stays a String. Raises Failure with a text for the user when the choice is wrong.
    def self.choose(run_argument, description_path)
      new(read_sets(description_path)).choose(run_argument)
    end

    # The file with the parameter sets of `script`, or nil.
    def self.file_beside(script)
      directory = File.dirname(File.expand_path(script))
      names = ["#{File.basename(script, '.*')}.scenario.json", "manifest.json"]
      names.map { |name| File.join(directory, name) }.find { |path| File.file?(path) }
    end

    def self.read_sets(path)
      return [] if path.nil?
      raise Failure, "#{path} is larger than #{SIZE_LIMIT} bytes." if File.size(path) > SIZE_LIMIT

      sets_of(JsonFile.read(path))
    rescue SystemCallError => e
      raise Failure, "The parameter sets in #{path} cannot be read: #{Text.of_system_error(e)}"
    rescue JSON::ParserError, ArgumentError => e
      raise Failure, "The parameter sets in #{path} cannot be read: #{Text.clean(e.message)}"
    end
    private_class_method :read_sets

    def self.sets_of(description)
      raise ArgumentError, "expected an object" unless description.is_a?(Hash)

      sets = description.fetch("parameterSets", [])
      refuse_other_than_objects("parameterSets", sets)
      sets.each { |set| refuse_other_than_objects("parameters", set["parameters"] ||= []) }
    end
    private_class_method :sets_of

    def self.refuse_other_than_objects(name, value)
      return if value.is_a?(Array) && value.all?(Hash)

      raise ArgumentError, "#{name}: expected a list of objects"
    end
    private_class_method :refuse_other_than_objects

    def initialize(sets)
      @sets = sets
    end

    def choose(run_argument)
      words = split_words(run_argument.scrub)
      set = words.empty? || words.first.include?("=") ? @sets.first : find_set(words.shift)
      given = to_values(words.map { |word| split_pair(word) })
      set ? complete(set, given) : given
    end

    private

    def split_words(run_argument)
      return run_argument.scan(WORD) unless run_argument.gsub(WORD, "").include?('"')

      raise Failure, "The run argument #{run_argument} has a double quote that is not closed; " \
                     "inside of quotes one is written twice."
    end

    def to_values(pairs)
      pairs.map(&:first).tally.each do |name, count|
        raise Failure, "The run argument names the parameter \"#{name}\" #{count} times." if count > 1
      end
      pairs.to_h
    end

    def find_set(id)
      @sets.find { |set| set["id"] == id } ||
        raise(Failure, "The run argument names the parameter set \"#{id}\"; known are: #{list(@sets, 'id')}.")
    end

    def split_pair(word)
      name, separator, value = word.partition("=")
      raise Failure, "The run argument holds \"#{word}\"; expected name=value." if separator.empty? || name.empty?

      [name, value.gsub(QUOTED) { |quoted| quoted[1..-2].gsub('""', '"') }]
    end

    def complete(set, given)
      parameters = set["parameters"]
      refuse_unknown(given.keys, parameters)
      parameters.to_h { |parameter| [parameter["name"], value_of(parameter, given[parameter["name"]])] }
    end

    def refuse_unknown(names, parameters)
      unknown = (names - parameters.map { |parameter| parameter["name"] }).first
      return if unknown.nil?

      raise Failure, "The run argument names the parameter \"#{unknown}\"; known are: #{list(parameters, 'name')}."
    end

    def value_of(parameter, given)
      text = (given || parameter["defaultValue"]).to_s
      allowed = parameter["allowedValues"].to_a
      return convert(parameter, text) if allowed.empty? || allowed.include?(text)

      raise Failure, "The parameter \"#{parameter['name']}\" is \"#{text}\"; allowed are: #{allowed.join(', ')}."
    end

    def convert(parameter, text)
      type = parameter["type"]
      return text unless %w[integer number boolean].include?(type)
      return Integer(text, 10) if type == "integer" && text.match?(INTEGER)
      return Float(text) if type == "number" && text.match?(NUMBER)
      return text == "true" if type == "boolean" && %w[true false].include?(text)

      raise Failure, "The parameter \"#{parameter['name']}\" is \"#{text}\"; expected type #{type}."
    end

    def list(elements, member)
      elements.empty? ? "none" : elements.map { |element| element[member] }.join(", ")
    end
  end
end
