# frozen_string_literal: true

require "fileutils"
require_relative "brep_file"
require_relative "iges_file"
require_relative "step_file"

# A STEP, IGES or BREP file. The CAD programs take what is left of a damaged file for the whole, so that it is checked
# before they see it: whether it is complete, and how many faces it announces.
class PartFile
  # The file is damaged or of another kind. The message names the file and says what is wrong with it.
  class Unusable < StandardError; end

  FORMATS = { ".step" => StepFile, ".stp" => StepFile, ".iges" => IgesFile, ".igs" => IgesFile,
              ".brep" => BrepFile, ".brp" => BrepFile }.freeze

  SIZE_LIMIT = 512 * 1024 * 1024

  attr_reader :path, :face_count

  # Raises Unusable.
  def initialize(path)
    @path = path
    @format = FORMATS[extension] || raise(Unusable, "#{name} is refused: STEP, IGES and BREP files are taken")
    @face_count = check
  end

  # Fit to be shown: a name on Linux may hold any bytes.
  def name
    File.basename(path).scrub("?")
  end

  def extension
    File.extname(path).scrub("?").downcase
  end

  # Copies the file under a plain name, for programs that stumble over blanks, brackets and other letters. Returns the
  # new name.
  def stage(directory, plain_name)
    (plain_name + extension).tap { |staged| FileUtils.cp(path, File.join(directory, staged)) }
  end

  private

  def check
    size = File.size(path)
    raise Unusable, "#{name} is empty" if size.zero?
    raise Unusable, "#{name} has #{size} bytes; at most #{SIZE_LIMIT} are read" if size > SIZE_LIMIT

    problem, faces = @format.examine(File.binread(path))
    raise Unusable, "#{name} #{problem}" if problem

    faces
  rescue SystemCallError => e
    raise Unusable, "#{name} cannot be read: #{e.class.new.message}"
  end
end
