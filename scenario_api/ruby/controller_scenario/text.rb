# frozen_string_literal: true

module ControllerScenario
  # Makes any text fit for the files that the controller reads.
  module Text
    # Characters of one message; the rest is cut off.
    LIMIT = 4000

    # Valid UTF-8 of limited length, whatever encoding or bytes the text came with.
    def self.clean(text)
      text = text.to_s
      utf8 = text.encoding == Encoding::BINARY ? text.dup.force_encoding(Encoding::UTF_8) : text
      utf8 = utf8.encode(Encoding::UTF_8, invalid: :replace, undef: :replace).scrub
      utf8.length > LIMIT ? "#{utf8[0, LIMIT - 1]}…" : utf8
    end

    # One line for a person who does not know Ruby; the class only where the message alone would not be understood.
    def self.describe(error)
      message = clean(error.message).strip
      return error.class.name if message.empty?

      plain = error.instance_of?(RuntimeError) || error.is_a?(SystemCallError) || message.include?(error.class.name)
      plain ? message : "#{message} (#{error.class.name})"
    end
  end
end
