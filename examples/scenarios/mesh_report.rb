# frozen_string_literal: true

# Measures STL files (text or binary) and draws them.
#
# One input: report.json and picture.png. Several inputs: <name>_report.json and <name>_picture.png for each,
# where files of the same name get a number: <name>_2_report.json.
#
# Parameter "size": width of the pictures in pixels. mesh_report.scenario.json offers the choices.

require "controller_scenario"
require "json"
require_relative "../lib/mesh/mesh_summary"
require_relative "../lib/output_names"

class MeshReport
  # What part of the time for one input goes into measuring; the rest goes into drawing.
  MEASURING = 0.3

  WARNING = 1

  def initialize(job)
    @job = job
    @size = job.parameters.fetch("size")
  end

  def run
    @job.fail!("No input file was given; choose one STL file or more.") if @job.inputs.empty?

    @job.inputs.zip(output_names).each_with_index do |(path, names), index|
      report(path, *names) { |done, message| @job.progress(100 * (index + done) / @job.inputs.size, message) }
    end
  rescue StlReader::Unusable => e
    @job.fail!(e.message)
  end

  private

  # The report's and the picture's name for every input.
  def output_names
    OutputNames.prefixes(@job.inputs).map { |prefix| ["#{prefix}report.json", "#{prefix}picture.png"] }
  end

  def report(path, report_name, picture_name)
    summary = MeshSummary.new(path) { |done, message| yield done * MEASURING, message }
    picture = draw(summary) { |done, message| yield MEASURING + (done * (1 - MEASURING)), message }
    @job.write_output(picture_name, picture)
    content = summary.to_h.merge(picture: picture_name)
    @job.write_output(report_name, "#{JSON.pretty_generate(content)}\n")
    tell(content, summary)
  end

  def draw(summary)
    require_relative "../lib/drawing/part_picture"
    PartPicture.new(summary.topology, @size).to_png { |done| yield done, "Drawing #{summary.name}" }
  end

  def tell(content, summary)
    size = content[:boundingBox][:size].join(" x ")
    @job.message("#{content[:file]}: #{content[:triangles]} triangles, #{size}")
    return if content[:closed]

    volume = summary.topology.touching? ? "the sum of their volumes" : "not reliable"
    @job.message("#{summary.name} #{summary.defect}: its volume is #{volume}", code: WARNING)
  end
end

ControllerScenario.run { |job| MeshReport.new(job).run }
