# frozen_string_literal: true

# Repairs STL meshes with ADMesh: joins edges that nearly meet, fills holes, turns triangles that face the wrong way.
# Writes <name>_repaired.stl and <name>_repair.json for each input; what counts is the mesh measured before and after, not
# the program's word.
#
# Parameter "timeLimit" for the tool in seconds; mesh_repair.scenario.json offers it.

require "controller_scenario"
require "fileutils"
require "json"
require_relative "../lib/cad/tool"
require_relative "../lib/mesh/mesh_summary"
require_relative "../lib/output_names"

class MeshRepair
  WARNING = 1

  # Plain names in the work directory.
  DAMAGED = "damaged.stl"
  REPAIRED = "repaired.stl"

  # A repair that changes the surface by more than this part of it is no repair of small faults.
  GREAT_CHANGE = 0.05

  def initialize(job)
    @job = job
    @time_limit = job.parameters["timeLimit"]
  end

  def run
    @job.fail!("No input file was given; choose one STL file or more.") if @job.inputs.empty?

    @job.inputs.zip(OutputNames.prefixes(@job.inputs)).each_with_index do |(path, prefix), index|
      prefix = "#{File.basename(path, ".*").scrub("_")}_" if prefix.empty?
      repair(path, prefix) { |done, text| @job.progress(100 * (index + done) / @job.inputs.size, text) }
    end
  rescue StlReader::Unusable, Tool::Missing, Tool::Failed => e
    @job.fail!(e.message)
  end

  private

  def repair(path, prefix)
    before = MeshSummary.new(path) { |done, text| yield done * 0.4, text }
    yield 0.4, "Repairing #{before.name}"
    run_tool(before)
    after = repaired(before.name) { |done, text| yield 0.5 + (done * 0.5), text }
    target = @job.output_path("#{prefix}repaired.stl")
    FileUtils.mv(File.join(@job.work_dir, REPAIRED), target)
    @job.add_output(target)
    content = { before: before.to_h, after: after.to_h.merge(file: File.basename(target)) }
    @job.write_output("#{prefix}repair.json", "#{JSON.pretty_generate(content)}\n")
    tell(before, after)
  end

  def run_tool(mesh)
    FileUtils.rm_f(File.join(@job.work_dir, REPAIRED))
    File.binwrite(File.join(@job.work_dir, DAMAGED), binary(mesh.mesh.coordinates))
    version = nil
    Tool.new(@job, :admesh, @time_limit).run("--write-binary-stl=#{REPAIRED}", DAMAGED) do |line|
      version ||= line[/\AADMesh version ([\d.]+)/, 1]
    end
    @job.report_tool_version("ADMesh", version) if version
  rescue Tool::Failed => e
    raise Tool::Failed, "#{mesh.name} could not be repaired: #{e.message}"
  end

  # ADMesh takes a binary file for text when none of the bytes after its header is above 127: the attribute of each
  # triangle is.
  def binary(coordinates)
    triangles = coordinates.each_slice(9).map { |corners| [0, 0, 0, *corners, 0xFFFF].pack("e12v") }
    [" " * 80, triangles.size].pack("a80V") << triangles.join
  end

  def repaired(name, &step)
    MeshSummary.new(File.join(@job.work_dir, REPAIRED), &step)
  rescue StlReader::Unusable => e
    raise Tool::Failed, "#{name} could not be repaired: #{e.message}"
  end

  def tell(before, after)
    name = before.name
    return @job.message("#{name} is closed; there was nothing to repair") if before.topology.closed?

    @job.message("#{name} #{before.defect}") # what was wrong with it
    unless after.topology.closed?
      @job.message("#{name} could not be repaired in full: the result #{after.defect}", code: WARNING)
    end
    tell_size(name, before, after)
  end

  def tell_size(name, before, after)
    triangles = after.mesh.triangle_count - before.mesh.triangle_count
    @job.message(format("%s: repaired with %+d triangles; volume %.6g", name, triangles, after.measures.volume))
    change = (after.measures.surface - before.measures.surface).abs / before.measures.surface
    return if change <= GREAT_CHANGE

    @job.message(format("%s: the repair changes the surface by %.0f %%; compare the meshes before you use it", name,
                        100 * change), code: WARNING)
  end
end

ControllerScenario.run { |job| MeshRepair.new(job).run }
