# frozen_string_literal: true

# Makes the CAD inputs of the examples:
#
#   ruby make_inputs.rb OUTPUT_FOLDER
#
# bracket.stl            text
# bracket_revision.stl   binary: the bracket with a larger hole
# housing.stl            binary, with a closed cavity inside
# torn_flange.stl        binary, with holes in its mesh
# helical_gear.stl       binary, more than 100,000 triangles
# not_an_stl.stl         no STL file at all: an OBJ file under a wrong name
#
# The same content every time. All but the large one also stand beside this script.

require "fileutils"
require_relative "../lib/modelling/parts"

NOT_AN_STL = <<~OBJ
  # A tetrahedron
  v 0 0 0
  v 10 0 0
  v 0 10 0
  v 0 0 10
  f 1 3 2
  f 1 2 4
  f 1 4 3
  f 2 3 4
OBJ

def make_inputs(folder)
  FileUtils.mkdir_p(folder)
  Parts.bracket.write_ascii(File.join(folder, "bracket.stl"), "bracket")
  Parts.bracket_revision.write_binary(File.join(folder, "bracket_revision.stl"))
  Parts.housing.write_binary(File.join(folder, "housing.stl"))
  Parts.torn_flange.write_binary(File.join(folder, "torn_flange.stl"))
  Parts.gear.write_binary(File.join(folder, "helical_gear.stl"))
  File.binwrite(File.join(folder, "not_an_stl.stl"), NOT_AN_STL)
end

if $PROGRAM_NAME == __FILE__
  abort "usage: ruby make_inputs.rb OUTPUT_FOLDER" unless ARGV.size == 1
  make_inputs(ARGV.first)
end
