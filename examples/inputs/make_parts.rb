# frozen_string_literal: true

# Makes the CAD parts of the examples with Open CASCADE (DRAWEXE), which must be installed:
#
#   ruby make_parts.rb OUTPUT_FOLDER
#
# box.step              40 x 30 x 20
# bar.step              10 x 10 x 100
# cylinder.step         diameter 20, height 30
# plate.step            80 x 50 x 10 with four holes of 8 and one of 20; also .iges and .brep
# plate_b.step          its revision: the larger hole 24 wide, a pad of 10 x 10 x 5 on top
# bearing_block.step    a bearing block with ribs; also .iges and .brep
# bearing_block_b.step  its revision: a wider bore, a thicker rib, one more hole for grease
# shaft_unit.step       an assembly: two blocks, a shaft and two collars
# cover_unclosed.step   a cover that lacks a face
# cut_off.step          the first half of bearing_block.step: no usable file

require "fileutils"
require "tmpdir"
require_relative "../lib/cad/draw"

# Stands in for a job: there is no controller when the examples are set up.
SetUpJob = Struct.new(:work_dir) do
  def progress(_percent, _message); end
  def stop_if_cancelled; end
  def report_tool_version(_name, _version); end
  def report_used_file(_path); end
end

# Raises Tool::Missing and Tool::Failed.
def make_parts(folder)
  FileUtils.mkdir_p(folder)
  Dir.mktmpdir("make-parts-") do |work_dir|
    Draw.new(SetUpJob.new(work_dir), 120).run("make_parts.tcl", {})
    FileUtils.mv(Dir.glob(File.join(work_dir, "*.{step,iges,brep}")), folder)
  end
  whole = File.binread(File.join(folder, "bearing_block.step"))
  File.binwrite(File.join(folder, "cut_off.step"), whole[0, whole.size / 2])
end

if $PROGRAM_NAME == __FILE__
  abort "usage: ruby make_parts.rb OUTPUT_FOLDER" unless ARGV.size == 1
  begin
    make_parts(ARGV.first)
  rescue Tool::Missing, Tool::Failed => e
    abort e.message
  end
end
