# frozen_string_literal: true

# Compares two revisions of a STEP, IGES or BREP part as solids with Open CASCADE (DRAWEXE): what the second takes away
# and what it adds. comparison.json holds the figures; removed.stl and added.stl the bodies, and .png their pictures,
# unless there is nothing. Lengths in mm.
#
# Parameters, of which compare_parts.scenario.json offers the choices: "size" of the pictures in pixels, "deflection": how
# far their triangles may lie beside the bodies, relative to the part's diagonal, "timeLimit" for the tool in seconds.

require "controller_scenario"
require "fileutils"
require "json"
require_relative "../lib/cad/part_scenario"
require_relative "../lib/drawing/part_picture"
require_relative "../lib/mesh/mesh_summary"

class PartComparison
  # Relative to the first part's volume: what differs less is the same.
  SAME = 1e-6

  # Relative likewise: how far the four volumes may contradict one another.
  CONTRADICTION = 1e-3

  KINDS = %w[removed added].freeze

  def initialize(job)
    @job = job
    @parameters = job.parameters
    @names = job.inputs.map { |path| File.basename(path).scrub("?") }
  end

  def run
    @job.fail!("Two input files are needed for a comparison, not #{@job.inputs.size}.") unless @job.inputs.size == 2

    draw = compare
    volumes = %w[first second removed added].to_h { |shape| [shape.to_sym, draw.number("volume_#{shape}")] }
    refuse_contradiction(volumes)
    KINDS.each { |kind| publish(kind) if draw.values.key?("box_#{kind}") }
    content = { first: @names[0], second: @names[1], same: same?(volumes), volumes: volumes,
                boxes: KINDS.to_h { |kind| [kind, (draw.numbers("box_#{kind}") if draw.values.key?("box_#{kind}"))] } }
    @job.write_output("comparison.json", "#{JSON.pretty_generate(content)}\n")
    @job.message(verdict(volumes))
    PartScenario.warn(@job, draw)
  end

  private

  def compare
    draw = Draw.new(@job, @parameters["timeLimit"])
    parts = @job.inputs.map { |path| PartFile.new(path) }
    draw.run("compare.tcl", { first: draw.stage(parts[0], "first"), first_faces: parts[0].face_count,
                              second: draw.stage(parts[1], "second"), second_faces: parts[1].face_count,
                              deflection: @parameters["deflection"] }, 0..80)
    draw
  end

  # An intersection that went wrong leaves bodies out without a word.
  def refuse_contradiction(volumes)
    first, second, removed, added = volumes.values
    return if (first - removed + added - second).abs <= CONTRADICTION * [first, second].max

    raise Tool::Failed, format("%s and %s could not be compared: their volumes differ by %.6g mm3, but the bodies " \
                               "removed and added do by %.6g mm3", *@names, second - first, added - removed)
  end

  def publish(kind)
    summary = MeshSummary.new(File.join(@job.work_dir, "#{kind}.stl"))
    @job.progress(kind == "removed" ? 80 : 90, "Drawing what was #{kind}")
    picture = PartPicture.new(summary.topology, @parameters["size"]).to_png { @job.stop_if_cancelled }
    @job.write_output("#{kind}.png", picture)
    FileUtils.mv(summary.path, @job.output_path("#{kind}.stl"))
    @job.add_output(@job.output_path("#{kind}.stl"))
  rescue StlReader::Unusable => e
    raise Tool::Failed, "what was #{kind} has no usable mesh: #{e.message}"
  end

  def same?(volumes)
    volumes[:removed] + volumes[:added] <= SAME * volumes[:first]
  end

  def verdict(volumes)
    return "#{@names[1]} is the same body as #{@names[0]}" if same?(volumes)

    format("%s takes %.6g mm3 away from %s and adds %.6g mm3", @names[1], volumes[:removed], @names[0], volumes[:added])
  end
end

ControllerScenario.run { |job| PartScenario.run(job) { PartComparison.new(job).run } }
