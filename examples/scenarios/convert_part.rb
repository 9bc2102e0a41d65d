# frozen_string_literal: true

# Converts STEP, IGES and BREP parts with Open CASCADE (DRAWEXE): <name>.<format> for each input and format.
# Lengths in mm; in GLB files, as that format demands, in m.
#
# Parameters, of which convert_part.scenario.json offers the choices: "formats", separated by commas; "deflection": how
# far the triangles may lie beside the part, relative to its diagonal; "angle" between neighbouring triangles of a
# curved face in degrees; "timeLimit" for the tool in seconds.

require "controller_scenario"
require "fileutils"
require_relative "../lib/cad/made_file"
require_relative "../lib/cad/part_scenario"
require_relative "../lib/cad/three_mf"
require_relative "../lib/mesh/topology"
require_relative "../lib/output_names"

class PartConversion
  FORMATS = %w[stl 3mf glb obj wrl step iges brep].freeze

  def initialize(job)
    @job = job
    @parameters = job.parameters
    @formats = @parameters["formats"].downcase.split(",").map(&:strip).uniq
  end

  def run
    @job.fail!("No input file was given; choose STEP, IGES or BREP files.") if @job.inputs.empty?
    unknown = @formats - FORMATS
    if unknown.any? || @formats.empty?
      @job.fail!("The formats are \"#{@parameters["formats"]}\"; possible are: #{FORMATS.join(", ")}.")
    end

    share = 100.0 / @job.inputs.size
    @job.inputs.zip(names).each_with_index do |(path, name), index|
      convert(path, name, (index * share)..((index + 1) * share))
    end
  end

  private

  # The name of every input's outputs, without extension.
  def names
    return [File.basename(@job.inputs.first, ".*").scrub("_")] if @job.inputs.one?

    OutputNames.prefixes(@job.inputs).map { |prefix| prefix.delete_suffix("_") }
  end

  def convert(path, name, span)
    draw, settings = PartScenario.prepare(@job, path, @parameters["timeLimit"])
    settings.update(deflection: @parameters["deflection"], angle: @parameters["angle"], formats: made.join(" "))
    draw.run("convert.tcl", settings, span)
    source = File.basename(path).scrub("?")
    check_made(source)
    sizes = @formats.map { |format| "#{name}.#{format} #{publish(name, format)}" }
    @job.message("#{source}: #{draw.number("triangles_part").to_i} triangles; #{sizes.join(", ")}")
    PartScenario.warn(@job, draw)
  end

  # The formats that the tool writes: 3MF is made from STL.
  def made
    (@formats - ["3mf"]) | (@formats.include?("3mf") ? ["stl"] : [])
  end

  def check_made(source)
    made.each { |format| MadeFile.check(made_path(format), format) }
    return unless @formats.include?("3mf")

    File.binwrite(made_path("3mf"), ThreeMf.encode(Topology.new(StlReader.read(made_path("stl")))))
  rescue MadeFile::Unusable => e
    raise Tool::Failed, "#{source} could not be converted: #{e.message}"
  end

  def made_path(format)
    File.join(@job.work_dir, "made.#{format}")
  end

  # Moves a file to the results; returns its size, as text.
  def publish(name, format)
    target = @job.output_path("#{name}.#{format}")
    FileUtils.mv(made_path(format), target)
    "#{(File.size(@job.add_output(target)) / 1024.0).ceil} KiB"
  end
end

ControllerScenario.run { |job| PartScenario.run(job) { PartConversion.new(job).run } }
