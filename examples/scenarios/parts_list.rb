# frozen_string_literal: true

# Lists the parts of a STEP or IGES assembly with Open CASCADE (DRAWEXE): how often each occurs, its size, volume and mass.
# Writes parts_list.json and parts_list.csv. Lengths in mm.
#
# Parameters, of which parts_list.scenario.json offers the choices: "density" in g/cm3 for the mass, "timeLimit" for the
# tool in seconds.

require "controller_scenario"
require "json"
require_relative "../lib/cad/part_scenario"
require_relative "../lib/mesh/mesh_summary"

class PartsList
  COLUMNS = %i[name count x y z volume area massInGrams].freeze

  def initialize(job)
    @job = job
    @parameters = job.parameters
  end

  def run
    @job.fail!("One input file is needed, not #{@job.inputs.size}.") unless @job.inputs.size == 1

    draw, settings = PartScenario.prepare(@job, @job.inputs.first, @parameters["timeLimit"])
    draw.run("parts_list.tcl", settings)
    write(File.basename(@job.inputs.first).scrub("?"), draw.rows.map { |row| part(row) })
    PartScenario.warn(@job, draw)
  end

  private

  def part(row)
    count, *numbers, name = row.split(" ", 7)
    volume, area, *size = numbers.map { |number| MeshSummary.round(Float(number)) }
    mass = MeshSummary.round(volume * @parameters["density"] / 1000)
    COLUMNS.zip([name, Integer(count), *size, volume, area, mass]).to_h
  end

  def write(name, parts)
    raise Tool::Failed, "#{name} holds no parts" if parts.empty?

    content = { file: name, parts: parts }
    @job.write_output("parts_list.json", "#{JSON.pretty_generate(content)}\n")
    lines = [COLUMNS, *parts.map(&:values)].map { |values| values.map { |value| field(value) }.join(",") }
    @job.write_output("parts_list.csv", "#{lines.join("\n")}\n")
    count = parts.sum { |part| part[:count] }
    mass = parts.sum { |part| part[:count] * part[:massInGrams] }
    @job.message(format("%s: %d parts, %d of them different, %.4g g", name, count, parts.size, mass))
  end

  # A field of a CSV file. A spreadsheet would calculate a name that begins like a formula.
  def field(value)
    text = value.to_s
    text = "'#{text}" if value.is_a?(String) && text.match?(/\A[=+\-@]/)
    text.match?(/[",\n]/) ? "\"#{text.gsub('"', '""')}\"" : text
  end
end

ControllerScenario.run { |job| PartScenario.run(job) { PartsList.new(job).run } }
