# frozen_string_literal: true

# Checks, measures, draws and converts STEP, IGES and BREP parts with FreeCAD, for offices that have it rather than
# DRAWEXE: report.json, picture.png and <name>.<format> for each format. Lengths in mm.
#
# Parameters, of which freecad_part.scenario.json offers the choices: "formats", separated by commas; "density" in g/cm3;
# "deflection": how far the triangles may lie beside the part, relative to its diagonal; "size" of the picture in pixels;
# "timeLimit" for the tool in seconds.

require "controller_scenario"
require "fileutils"
require "json"
require_relative "../lib/cad/free_cad"
require_relative "../lib/cad/made_file"
require_relative "../lib/cad/part_scenario"
require_relative "../lib/drawing/part_picture"
require_relative "../lib/mesh/mesh_summary"

class FreeCadPart
  FORMATS = %w[stl obj step iges brep].freeze

  def initialize(job)
    @job = job
    @parameters = job.parameters
    @formats = @parameters["formats"].downcase.split(",").map(&:strip).uniq
  end

  def run
    @job.fail!("One input file is needed, not #{@job.inputs.size}.") unless @job.inputs.size == 1
    unless (@formats - FORMATS).empty?
      @job.fail!("The formats are \"#{@parameters["formats"]}\"; possible are: #{FORMATS.join(", ")}.")
    end

    tool = FreeCad.new(@job, @parameters["timeLimit"])
    part = PartFile.new(@job.inputs.first)
    tool.run("part.py", { input: tool.stage(part, "part"), faces: part.face_count, formats: @formats.join(" "),
                          deflection: @parameters["deflection"] }, 0..70)
    content = figures(part.name, tool)
    publish(part.name)
    @job.write_output("report.json", "#{JSON.pretty_generate(content)}\n")
    tell(content)
  end

  private

  def figures(name, tool)
    low, high = tool.numbers("box_part").each_slice(3).to_a
    solids = tool.number("SOLID").to_i
    volume = tool.number("volume") if solids.positive?
    { file: name, valid: tool.number("valid_part") == 1, solids: solids, faces: tool.number("FACE").to_i,
      edges: tool.number("EDGE").to_i, volume: volume, area: tool.number("area"),
      boundingBox: { min: low, max: high, size: high.zip(low).map { |to, from| MeshSummary.round(to - from) } },
      massInGrams: volume && MeshSummary.round(volume * @parameters["density"] / 1000) }
  end

  def publish(name)
    @formats.each { |format| MadeFile.check(made(format), format) }
    @job.progress(75, "Drawing #{name}")
    summary = MeshSummary.new(File.join(@job.work_dir, "part.stl"))
    picture = PartPicture.new(summary.topology, @parameters["size"]).to_png { @job.stop_if_cancelled }
    @job.write_output("picture.png", picture)
    @formats.each do |format|
      target = @job.output_path("#{File.basename(name, ".*")}.#{format}")
      FileUtils.mv(made(format), target)
      @job.add_output(target)
    end
  rescue MadeFile::Unusable, StlReader::Unusable => e
    raise Tool::Failed, "#{name} could not be converted: #{e.message}"
  end

  def made(format)
    File.join(@job.work_dir, "made.#{format}")
  end

  def tell(content)
    size = content[:boundingBox][:size].map { |length| format("%.6g", length) }.join(" x ")
    body = content[:volume] ? format("%.6g mm3, %.4g g", content[:volume], content[:massInGrams]) : "no solid, no volume"
    @job.message("#{content[:file]}: #{size} mm, #{body}")
    @job.message("#{content[:file]} is not valid", code: PartScenario::WARNING) unless content[:valid]
  end
end

ControllerScenario.run { |job| PartScenario.run(job) { FreeCadPart.new(job).run } }
