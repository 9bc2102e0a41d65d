# frozen_string_literal: true

# Whether the bytes of an IGES file are complete: lines of 80 columns with a letter for the section and a number, and a
# last line that says how many lines each section has.
module IgesFile
  SECTIONS = %w[S G D P].freeze
  LINE = /\A.{72}([SGDPT])([ \d]{7})\z/n

  # Types of entities that are faces: a trimmed surface, a bounded surface, a face of a solid.
  FACES = [143, 144, 510].freeze

  # Returns what is wrong, or nil, and how many faces the file holds.
  def self.examine(bytes)
    lines = bytes.split(/\r?\n/n).reject { |line| line.strip.empty? }.map { |line| line.sub(/\s+\z/n) { "" } }
    return "is not an IGES file: its first line has no S in column 73" unless lines.first&.match?(/\A.{72}S/n)

    counts = Hash.new(0)
    lines.each_with_index do |line, index|
      section, number = line.match(LINE)&.captures
      return "is damaged in line #{index + 1}: it has no section and number in columns 73 to 80" if section.nil?

      counts[section] += 1
      return "is damaged in line #{index + 1}: its number is not #{counts[section]}" if number.to_i != counts[section]
    end
    examine_sections(lines, counts)
  end

  def self.examine_sections(lines, counts)
    return "is cut off: its last line (section T) is missing" unless counts["T"] == 1

    announced = lines.last[0, 32].scan(/([SGDP])([ \d]{7})/n).to_h.transform_values(&:to_i)
    wrong = SECTIONS.find { |section| announced[section] != counts[section] }
    if wrong
      return "is damaged: section #{wrong} has #{counts[wrong]} lines, but the last line says #{announced[wrong].to_i}"
    end

    faces = lines.grep(/\A.{72}D/n).each_slice(2).count { |first, _| FACES.include?(first[0, 8].to_i) }
    faces.zero? ? "holds no faces" : [nil, faces]
  end
  private_class_method :examine_sections
end
