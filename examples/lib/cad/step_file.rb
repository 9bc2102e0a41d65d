# frozen_string_literal: true

# Whether the bytes of a STEP file (ISO 10303-21) are complete.
module StepFile
  START = "ISO-10303-21;"
  FINISH = "END-ISO-10303-21;"
  STRING = /'[^']*'/n
  COMMENT = %r{/\*.*?\*/}mn
  DEFINITION = /#(\d+)\s*=/n
  REFERENCE = /#(\d+)/n
  FACE = /=\s*(?:ADVANCED_FACE|FACE_SURFACE)\s*\(/n

  # Returns what is wrong, or nil, and how many faces the file holds.
  def self.examine(bytes)
    text = bytes.gsub(COMMENT, "")
    return "is not a STEP file: it does not begin with #{START}" unless text.lstrip.start_with?(START)
    return "is cut off: its last line, #{FINISH}, is missing" unless text.rstrip.end_with?(FINISH)

    position = text.index(/[^\t\n\r\x20-\xFF]/n)
    return "is damaged: it holds bytes that are no text, at byte #{position}" if position

    examine_data(text.gsub(STRING, "''"))
  end

  def self.examine_data(text)
    defined = text.scan(DEFINITION).flatten
    return "holds no data" if defined.empty?

    twice = defined.tally.find { |_, count| count > 1 }&.first
    return "is damaged: it defines ##{twice} twice" if twice

    missing = (text.scan(REFERENCE).flatten.uniq - defined).first
    return "is damaged: it refers to ##{missing}, which it does not define" if missing

    faces = text.scan(FACE).size
    faces.zero? ? "holds no faces" : [nil, faces]
  end
  private_class_method :examine_data
end
