# frozen_string_literal: true

# Draws a STEP, IGES or BREP part from the front, the top, the left and aslant, hidden edges dashed, with Open CASCADE
# (DRAWEXE): drawing.svg and drawing.dxf, in third-angle projection, 1:1 in the DXF file.
#
# Parameter "timeLimit" for the tool in seconds; drawing_sheet.scenario.json offers it.

require "controller_scenario"
require_relative "../lib/cad/part_scenario"
require_relative "../lib/drawing/drawing_sheet"
require_relative "../lib/drawing/sheet_dxf"
require_relative "../lib/drawing/sheet_svg"

class PartDrawing
  # How far the size of a view may lie beside that of the part, relative to its largest side.
  EXACT = 1e-2

  def initialize(job)
    @job = job
  end

  def run
    @job.fail!("One input file is needed, not #{@job.inputs.size}.") unless @job.inputs.size == 1

    draw, settings = PartScenario.prepare(@job, @job.inputs.first, @job.parameters["timeLimit"])
    draw.run("drawing.tcl", settings)
    name = File.basename(@job.inputs.first).scrub("?")
    sheet = sheet(name, draw.numbers("box_part"))
    @job.write_output("drawing.svg", SheetSvg.encode(sheet))
    @job.write_output("drawing.dxf", SheetDxf.encode(sheet))
    hidden, visible = sheet.lines.partition { |line| !line.visible }.map(&:size)
    @job.message("#{name}: four views with #{visible} visible and #{hidden} hidden edges")
    PartScenario.warn(@job, draw)
  end

  private

  # The tool does not say when it leaves out edges, so that the views must have the size of the part.
  def sheet(name, box)
    sheet = DrawingSheet.read(File.join(@job.work_dir, "edges.txt"), name)
    low, high = box.each_slice(3).to_a
    size = high.zip(low).map { |to, from| to - from }
    return sheet if sheet.part_size.zip(size).all? { |drawn, real| (drawn - real).abs <= EXACT * size.max }

    raise Tool::Failed, "#{name} could not be drawn: the views do not show all of it"
  rescue KeyError, ArgumentError, NoMethodError, SystemCallError => e
    raise Tool::Failed, "#{name} could not be drawn: #{e.message}"
  end
end

ControllerScenario.run { |job| PartScenario.run(job) { PartDrawing.new(job).run } }
