# frozen_string_literal: true

require_relative "../mesh/stl_reader"
require_relative "part_file"

# A file that a tool has written, of which it says that all went well: whether it is there and is what it should be.
module MadeFile
  # The file is missing, empty or of another kind.
  class Unusable < StandardError; end

  GLB = "glTF\x02\x00\x00\x00".b
  HEAD_SIZE = 12

  # Raises Unusable.
  def self.check(path, format)
    problem = File.file?(path) ? problem_of(path, format) : "was not written"
    raise Unusable, "the #{format.upcase} file #{problem}" if problem
  end

  def self.problem_of(path, format)
    case format
    when "stl" then problem_raised { StlReader.read(path) }
    when "step", "iges", "brep" then problem_raised { PartFile.new(path) }
    when "glb" then "is no complete binary glTF" unless glb?(path)
    when "obj" then "holds no faces" unless File.foreach(path, mode: "rb").any?(/\Af /n)
    when "wrl" then "is no VRML" unless File.binread(path, HEAD_SIZE)&.start_with?("#VRML V2.0")
    end
  end
  private_class_method :problem_of

  def self.problem_raised
    yield
    nil
  rescue StlReader::Unusable, PartFile::Unusable => e
    "is not usable: #{e.message}"
  end
  private_class_method :problem_raised

  # Its header holds the size of the whole file.
  def self.glb?(path)
    head = File.binread(path, HEAD_SIZE)
    head&.size == HEAD_SIZE && head.start_with?(GLB) && head.unpack1("V", offset: 8) == File.size(path)
  end
  private_class_method :glb?
end
