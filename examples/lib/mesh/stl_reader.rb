# frozen_string_literal: true

require_relative "ascii_stl"
require_relative "binary_stl"
require_relative "mesh"

# Reads STL files, text and binary, from sources that may be broken.
module StlReader
  # The file is no usable STL file. The message names the file and says what is wrong with it.
  class Unusable < StandardError; end

  TRIANGLE_LIMIT = 2_000_000

  # How other files begin that are taken for STL files by their extension.
  OTHER_FORMATS = {
    /\AISO-10303-21/ => "a STEP file", /\APK\x03\x04/n => "a ZIP archive", /\A%PDF/ => "a PDF file",
    /\A\x89PNG/n => "a PNG picture", /\Aply\s/ => "a PLY file", /\A\s*<(\?xml|!DOCTYPE|html)/i => "XML or HTML",
    /\AglTF/ => "a glTF file", /\A\s*\{/ => "JSON", /^(v|vn|f|mtllib|usemtl) \S/ => "an OBJ file"
  }.freeze

  # Returns the Mesh of the file; yields how much of it has been read, from 0 to 1.
  # Raises Unusable, also when the file cannot be opened.
  def self.read(path, &progress)
    File.open(path, "rb") { |file| read_file(file, &progress) }
  rescue Unusable => e
    raise Unusable, "#{File.basename(path)} #{e.message}"
  rescue SystemCallError => e
    raise Unusable, "#{File.basename(path)} cannot be read: #{e.class.new.message}"
  end

  def self.read_file(file, &progress)
    start = file.read(1024) || ""
    file.rewind
    raise Unusable, "is empty" if start.empty?

    mesh = parser(file, start).read(&progress)
    raise Unusable, "holds no triangle" if mesh.triangle_count.zero?

    mesh
  end
  private_class_method :read_file

  # Some programs begin binary files with "solid" too, so the size decides first and then the kind of the bytes.
  def self.parser(file, start)
    text = text?(start)
    return BinaryStl.new(file) if BinaryStl.exact_size?(file, start)
    return AsciiStl.new(file) if text && start.match?(/\A(\xEF\xBB\xBF)?\s*solid\b/ni)

    guess = OTHER_FORMATS.find { |pattern, _| start.match?(pattern) }&.last
    raise Unusable, "is not an STL file: it looks like #{guess}" if guess
    raise Unusable, "is not an STL file: it is text that does not begin with \"solid\"" if text

    BinaryStl.new(file)
  end
  private_class_method :parser

  def self.text?(bytes)
    !bytes.match?(/[\x00-\x08\x0E-\x1F]/n)
  end
  private_class_method :text?
end
