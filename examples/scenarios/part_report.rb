# frozen_string_literal: true

# Checks, measures and draws STEP, IGES and BREP parts with Open CASCADE (DRAWEXE): report.json and picture.png, or
# <name>_report.json and <name>_picture.png for each of several inputs. Lengths in mm.
#
# Parameters, of which part_report.scenario.json offers the choices: "density" in g/cm3 for the mass, "size" of the
# picture in pixels, "deflection": how far its triangles may lie beside the part, relative to the part's diagonal,
# "timeLimit" for the tool in seconds.

require "controller_scenario"
require "json"
require_relative "../lib/cad/part_scenario"
require_relative "../lib/drawing/part_picture"
require_relative "../lib/mesh/mesh_summary"
require_relative "../lib/output_names"

class PartReport
  # What part of the time for one input goes into the tool; the rest goes into the picture.
  MEASURING = 0.6

  ANGLE = 20 # degrees between neighbouring triangles of a curved face

  def initialize(job)
    @job = job
    @parameters = job.parameters
  end

  def run
    @job.fail!("No input file was given; choose STEP, IGES or BREP files.") if @job.inputs.empty?

    share = 100.0 / @job.inputs.size
    @job.inputs.zip(OutputNames.prefixes(@job.inputs)).each_with_index do |(path, prefix), index|
      report(path, prefix, index * share, share)
    end
  end

  private

  def report(path, prefix, start, share)
    name = File.basename(path).scrub("?")
    draw, settings = PartScenario.prepare(@job, path, @parameters["timeLimit"])
    settings.update(deflection: @parameters["deflection"], angle: ANGLE)
    draw.run("report.tcl", settings, start..(start + (share * MEASURING)))
    content = { file: name }.merge(figures(draw), picture: "#{prefix}picture.png")
    picture = picture(name, start + (share * MEASURING), share * (1 - MEASURING))
    @job.write_output("#{prefix}picture.png", picture)
    @job.write_output("#{prefix}report.json", "#{JSON.pretty_generate(content)}\n")
    tell(content, draw)
  end

  # Of the mesh that the tool has really written.
  def picture(name, start, share)
    summary = MeshSummary.new(File.join(@job.work_dir, "part.stl"))
    PartPicture.new(summary.topology, @parameters["size"]).to_png do |done|
      @job.progress(start + (share * done), "Drawing #{name}")
    end
  rescue StlReader::Unusable => e
    raise Tool::Failed, "#{name} has no usable mesh: #{e.message}"
  end

  # A part without solids has a volume when its faces close.
  def figures(draw)
    low, high = draw.numbers("box_part").each_slice(3).to_a
    free_edges = draw.values["free_edges"]&.to_i
    volume = draw.number("volume").abs if free_edges.nil? || free_edges.zero?
    { valid: draw.values["valid_part"] == "1", solids: draw.number("SOLID").to_i, faces: draw.number("FACE").to_i,
      edges: draw.number("EDGE").to_i, freeEdges: free_edges,
      boundingBox: { min: low, max: high, size: high.zip(low).map { |to, from| MeshSummary.round(to - from) } },
      volume: volume, area: draw.number("area"), center: (draw.numbers("center") if volume),
      massInGrams: volume && MeshSummary.round(volume * @parameters["density"] / 1000),
      greatestTolerance: draw.number("tolerance_part"), triangles: draw.number("triangles_part").to_i }
  end

  def tell(content, draw)
    size = content[:boundingBox][:size].map { |length| format("%.6g", length) }.join(" x ")
    @job.message("#{content[:file]}: #{size} mm, #{contents(content)}")
    PartScenario.warn(@job, draw)
    return unless content[:freeEdges]&.positive?

    @job.message("#{content[:file]}: its faces do not close (#{content[:freeEdges]} free edges), so that it has no volume",
                 code: PartScenario::WARNING)
  end

  def contents(content)
    solids = content[:solids]
    kind = solids.zero? ? "#{content[:faces]} faces" : "#{solids} #{solids == 1 ? "solid" : "solids"}"
    return "#{kind}, no volume" unless content[:volume]

    format("%s, %.6g mm3, %.4g g", kind, content[:volume], content[:massInGrams])
  end
end

ControllerScenario.run { |job| PartScenario.run(job) { PartReport.new(job).run } }
