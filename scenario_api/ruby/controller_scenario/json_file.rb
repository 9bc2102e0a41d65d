# frozen_string_literal: true

require "json"

module ControllerScenario
  # Reads strict JSON in UTF-8, with or without a byte order mark.
  module JsonFile
    # Returns the value. Raises SystemCallError if the file cannot be read, and ParserError with the reason if it is
    # not such a file.
    def self.read(path)
      text = File.read(path, encoding: "BOM|UTF-8")
      raise JSON::ParserError, "it is not valid UTF-8" unless text.valid_encoding?

      JSON.parse(text, max_nesting: NESTING_LIMIT)
    end
  end
end
