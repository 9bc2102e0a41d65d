# frozen_string_literal: true

# Compares two STL files: the second input against the first. Writes comparison.json.

require "controller_scenario"
require "json"
require_relative "../lib/mesh/mesh_summary"

class MeshComparison
  # Relative to the first mesh; below it two figures count as equal.
  TOLERANCE = 1e-6

  def initialize(job)
    @job = job
  end

  def run
    unless @job.inputs.size == 2
      @job.fail!("Two input files are needed for a comparison, not #{@job.inputs.size}.")
    end

    first, second = @job.inputs.each_with_index.map { |path, index| summary(path, index) }
    write(first, second, differences(first, second))
  rescue StlReader::Unusable => e
    @job.fail!(e.message)
  end

  private

  def summary(path, index)
    MeshSummary.new(path) { |done, message| @job.progress(50 * (index + done), message) }
  end

  def differences(first, second)
    { triangles: second.mesh.triangle_count - first.mesh.triangle_count,
      size: offsets(first.measures.size, second.measures.size),
      center: offsets(first.measures.center, second.measures.center),
      surface: change(first.measures.surface, second.measures.surface),
      volume: change(first.measures.volume, second.measures.volume) }
  end

  def offsets(first, second)
    first.zip(second).map { |from, to| MeshSummary.round(to - from) }
  end

  # The percentage is null where the first value is 0.
  def change(from, to)
    { absolute: MeshSummary.round(to - from),
      percent: from.zero? ? nil : MeshSummary.round(100 * (to - from) / from) }
  end

  def same_size?(first, second)
    pairs = first.measures.size.zip(second.measures.size)
    pairs << [first.measures.surface, second.measures.surface] << [first.measures.volume, second.measures.volume]
    pairs.all? { |from, to| (to - from).abs <= TOLERANCE * from.abs }
  end

  def write(first, second, differences)
    same = same_size?(first, second)
    content = { first: first.to_h, second: second.to_h, sameSize: same, differences: differences }
    @job.write_output("comparison.json", "#{JSON.pretty_generate(content)}\n")
    @job.message(verdict(first, second, same, differences))
  end

  def verdict(first, second, same, differences)
    return "#{second.name} has the same size, surface and volume as #{first.name}" if same

    percent = differences[:volume][:percent]
    "#{second.name} differs from #{first.name}#{format('; its volume by %+.2f %%', percent) if percent}"
  end
end

ControllerScenario.run { |job| MeshComparison.new(job).run }
