# frozen_string_literal: true

module ControllerScenario
  # Texts between Ruby and the controller's files.
  module Text
    # Characters of one message; the rest is cut off.
    LIMIT = 2000

    # Valid UTF-8 of limited length, whatever encoding or bytes the text came with.
    def self.clean(text)
      text = text.to_s
      utf8 = text.encoding == Encoding::BINARY ? text.dup.force_encoding(Encoding::UTF_8) : text
      utf8 = utf8.encode(Encoding::UTF_8, invalid: :replace, undef: :replace).scrub
      utf8.length > LIMIT ? "#{utf8[0, LIMIT - 1]}…" : utf8
    end

    # The path that a text of the controller's stands for. On Linux a name may be no valid UTF-8; its odd bytes are
    # then carried as the characters U+DC80 to U+DCFF, one each.
    def self.path(text)
      return text if text.valid_encoding?

      bytes = text.b.gsub(/\xED([\xB2\xB3])([\x80-\xBF])/n) do
        [(($1.ord & 0x03) << 6) | ($2.ord & 0x3F)].pack("C")
      end
      bytes.force_encoding(Encoding::UTF_8)
    end

    # What the system says, and about which file, without the name of a function of Ruby's.
    def self.of_system_error(error)
      clean(error.message.sub(/ @ \w+ - /, ": "))
    end

    # One line for a person who does not know Ruby; the class only where the message alone would not be understood.
    def self.describe(error)
      message = (error.is_a?(SystemCallError) ? of_system_error(error) : clean(error.message)).strip
      return error.class.name if message.empty?

      plain = error.instance_of?(RuntimeError) || error.is_a?(SystemCallError) || message.include?(error.class.name)
      plain ? message : "#{message} (#{error.class.name})"
    end
  end
end
