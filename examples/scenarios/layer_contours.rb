# frozen_string_literal: true

# Cuts a part into layers, as for printing it: contours.json holds the length of the contour in every layer, and
# contour_<layer>.svg shows every hundredth one. Fine layers of a large part take minutes: made to be watched and cancelled.
#
# Parameter "layers": into how many layers the part is cut. layer_contours.scenario.json offers the choices.

require "controller_scenario"
require "json"
require_relative "../lib/mesh/layer_cut"
require_relative "../lib/mesh/mesh_summary"

class LayerContours
  # Each layer of which a picture is drawn.
  PICTURE_STEP = 100

  def initialize(job)
    @job = job
    @layers = job.parameters.fetch("layers")
  end

  def run
    @job.fail!("One input file is needed, not #{@job.inputs.size}.") unless @job.inputs.size == 1

    summary = MeshSummary.new(@job.inputs.first) { |done, message| @job.progress(10 * done, message) }
    cut = LayerCut.new(summary.mesh)
    lengths = Array.new(@layers) { |layer| contour(cut, summary, layer) }
    @job.write_output("contours.json", "#{JSON.generate(file: summary.name, layers: @layers, lengths: lengths)}\n")
    @job.message("#{summary.name}: #{@layers} layers, the longest contour #{lengths.max}")
  rescue StlReader::Unusable => e
    @job.fail!(e.message)
  end

  private

  # The length of the contour half way up the layer.
  def contour(cut, summary, layer)
    @job.stop_if_cancelled
    @job.progress(10 + (90 * layer / @layers), "Layer #{layer + 1} of #{@layers} of #{summary.name}")
    low, high = summary.measures.minimum[2], summary.measures.maximum[2]
    segments = cut.at(low + ((high - low) * (layer + 0.5) / @layers))
    draw(segments, summary.measures, layer) if (layer % PICTURE_STEP).zero?
    MeshSummary.round(segments.sum { |x1, y1, x2, y2| Math.hypot(x2 - x1, y2 - y1) })
  end

  def draw(segments, measures, layer)
    x, y = measures.minimum
    width, height = measures.size
    path = segments.map { |x1, y1, x2, y2| format("M%.4f %.4fL%.4f %.4f", x1, -y1, x2, -y2) }.join
    @job.write_output(format("contour_%05d.svg", layer), <<~SVG)
      <svg xmlns="http://www.w3.org/2000/svg" viewBox="#{x} #{-y - height} #{width} #{height}">
      <path d="#{path}" fill="none" stroke="#1a2a3a" stroke-width="1" vector-effect="non-scaling-stroke"/>
      </svg>
    SVG
  end
end

ControllerScenario.run { |job| LayerContours.new(job).run }
