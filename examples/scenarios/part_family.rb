# frozen_string_literal: true

# Makes a family of parts with OpenSCAD: the script of the first input with each row of the table of the second one (CSV).
# The first column names the part, the others are variables of the script. Writes <part>.stl (or .3mf) and <part>.png for
# each row, and family.csv with sizes and volumes. A row that cannot be made is a warning; the others are made.
#
# Parameters, of which part_family.scenario.json offers the choices: "format", "size" of the pictures in pixels,
# "timeLimit" for each part in seconds.

require "controller_scenario"
require "fileutils"
require_relative "../lib/cad/family_table"
require_relative "../lib/cad/three_mf"
require_relative "../lib/cad/tool"
require_relative "../lib/drawing/part_picture"
require_relative "../lib/mesh/mesh_summary"

class PartFamily
  WARNING = 1
  COLUMNS = %w[name triangles x y z volume].freeze

  def initialize(job)
    @job = job
    @parameters = job.parameters
  end

  def run
    @job.fail!("An OpenSCAD script and a table (CSV) are needed, in this order.") unless @job.inputs.size == 2

    @openscad = Tool.new(@job, :openscad, @parameters["timeLimit"])
    table = FamilyTable.read(@job.inputs[1])
    FileUtils.cp(@job.inputs[0], File.join(@job.work_dir, "part.scad"))
    made = table.rows.each_with_index.filter_map { |row, index| make(row, 100 * index / table.rows.size) }
    @job.fail!("None of the #{table.rows.size} parts could be made.") if made.empty?

    @job.write_output("family.csv", "#{[COLUMNS, *made].map { |values| values.join(",") }.join("\n")}\n")
    @job.message("#{made.size} of #{table.rows.size} parts made")
  rescue FamilyTable::Unusable, Tool::Missing => e
    @job.fail!(e.message)
  end

  private

  # The part's row of family.csv, or nil.
  def make(row, percent)
    @job.progress(percent, "Making #{row.name}")
    FileUtils.rm_f(stl)
    @error = nil
    @openscad.run("-o", "part.stl", *row.definitions, "part.scad") { |line| hear(line) }
    publish(row.name, MeshSummary.new(stl))
  rescue Tool::Failed, StlReader::Unusable => e
    @job.message("#{row.name} could not be made: #{@error || e.message}", code: WARNING)
    nil
  end

  def stl
    File.join(@job.work_dir, "part.stl")
  end

  # Of a failed assert the words of the script are what helps.
  def hear(line)
    error = line[/\AERROR: (.*)/, 1] or return

    @error ||= error[/\AAssertion .* failed: "(.*)" in file/, 1] || error
  end

  def publish(name, summary)
    content = @parameters["format"] == "3mf" ? ThreeMf.encode(summary.topology) : File.binread(summary.path)
    @job.write_output("#{name}.#{@parameters["format"]}", content)
    picture = PartPicture.new(summary.topology, @parameters["size"]).to_png { @job.stop_if_cancelled }
    @job.write_output("#{name}.png", picture)
    @job.message("#{name} #{summary.defect}", code: WARNING) unless summary.topology.closed?
    figures = [*summary.measures.size, summary.measures.volume].map { |value| MeshSummary.round(value) }
    [name, summary.mesh.triangle_count, *figures]
  end
end

ControllerScenario.run { |job| PartFamily.new(job).run }
