# frozen_string_literal: true

require_relative "defects"
require_relative "measures"
require_relative "stl_reader"
require_relative "topology"

# One STL file, read and measured: what the scenarios report about it.
class MeshSummary
  # Figures are rounded to this many significant digits: the files hold 32-bit values.
  DIGITS = 9

  attr_reader :path, :mesh, :topology, :measures

  def self.round(value)
    format("%.#{DIGITS}g", value).to_f
  end

  # `step` is called with how much is done, from 0 to 1, and what is being done.
  # Raises StlReader::Unusable.
  def initialize(path, &step)
    @path = path
    @mesh = StlReader.read(path) { |done| step&.call(done * 0.3, "Reading #{name}") }
    @topology = Topology.new(mesh) { |done| step&.call(0.3 + (done * 0.5), "Joining the triangles of #{name}") }
    @measures = Measures.new(mesh) { |done| step&.call(0.8 + (done * 0.2), "Measuring #{name}") }
  end

  # Fit to be shown: a name on Linux may hold any bytes.
  def name
    File.basename(path).scrub("?")
  end

  def to_h
    { file: name, format: mesh.format, triangles: mesh.triangle_count, vertices: topology.vertex_count,
      boundingBox: { min: rounded(measures.minimum), max: rounded(measures.maximum), size: rounded(measures.size) },
      surface: self.class.round(measures.surface), volume: self.class.round(measures.volume) }.merge(defects)
  end

  # Why the mesh is not closed, as the end of a sentence that begins with its name.
  def defect
    Defects.new(topology).to_s
  end

  private

  def rounded(values)
    values.map { |value| self.class.round(value) }
  end

  def defects
    { closed: topology.closed?, openEdges: topology.open_edges.size,
      nonManifoldEdges: topology.non_manifold_edge_count, inconsistentEdges: topology.inconsistent_edge_count,
      degenerateTriangles: measures.degenerate_count }
  end
end
