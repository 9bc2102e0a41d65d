# frozen_string_literal: true

# Finds closed cavities inside of a part: they cannot be cleaned, drained or freed of powder.
# Writes hollow_check.json. Parameter "smallestCavity": cavities of a smaller volume do not count.

require "controller_scenario"
require "json"
require_relative "lib/mesh/mesh_summary"

class HollowCheck
  WARNING = 1

  def initialize(job)
    @job = job
    @smallest_cavity = job.parameters.fetch("smallestCavity")
  end

  def run
    @job.fail!("One input file is needed, not #{@job.inputs.size}.") unless @job.inputs.size == 1

    summary = MeshSummary.new(@job.inputs.first) { |done, message| @job.progress(80 * done, message) }
    refuse_open(summary)
    @job.progress(85, "Looking for cavities in #{summary.name}")
    write(summary.name, summary.topology.shells.map { |triangles| shell(summary.mesh, triangles) })
  rescue StlReader::Unusable => e
    @job.fail!(e.message)
  end

  private

  def refuse_open(summary)
    return if summary.topology.closed?

    advice = if summary.topology.touching?
               "; check each of them on its own."
             else
               ", so that it has no inside; repair the mesh first."
             end
    @job.fail!("#{summary.name} #{summary.defect}#{advice}")
  end

  # The surface of a cavity looks into the cavity, so that its volume comes out negative.
  def shell(mesh, triangles)
    measures = Measures.new(mesh, triangles)
    { kind: measures.volume.negative? ? "cavity" : "body", triangles: triangles.size,
      volume: MeshSummary.round(measures.volume.abs), center: measures.center.map { |value| MeshSummary.round(value) } }
  end

  def write(name, shells)
    cavities = shells.select { |shell| shell[:kind] == "cavity" && shell[:volume] >= @smallest_cavity }
    content = { file: name, hollow: cavities.any?, smallestCavity: @smallest_cavity, shells: shells }
    @job.write_output("hollow_check.json", "#{JSON.pretty_generate(content)}\n")
    return @job.message("#{name} has no closed cavity") if cavities.empty?

    count = cavities.one? ? "1 closed cavity" : "#{cavities.size} closed cavities"
    volume = cavities.sum { |cavity| cavity[:volume] }
    @job.message("#{name} has #{count} with a volume of #{volume.round(1)}", code: WARNING)
  end
end

ControllerScenario.run { |job| HollowCheck.new(job).run }
