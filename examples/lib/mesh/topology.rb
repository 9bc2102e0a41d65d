# frozen_string_literal: true

# How the triangles of a mesh hang together. Corners with equal coordinates are one vertex.
class Topology
  TRIANGLES_AT_ONCE = 4096

  # Three vertex numbers per triangle, flat, in the order of the mesh.
  attr_reader :corners

  attr_reader :vertex_count

  # By edge (see #edge_vertices): the first and the second triangle that has it.
  attr_reader :first_triangle, :second_triangle

  # Yields how much of the work is done, from 0 to 1.
  def initialize(mesh, &progress)
    @mesh = mesh
    @first_triangle = {}
    @second_triangle = {}
    @surplus_edges = {}
    @inconsistent_edges = {}
    weld { |done| progress&.call(done / 2) }
    join { |done| progress&.call(0.5 + (done / 2)) }
  end

  # Edges with a triangle on one side only: the rims of holes.
  def open_edges
    first_triangle.each_key.reject { |edge| second_triangle.key?(edge) }
  end

  # Edges on which more than two triangles meet.
  def non_manifold_edge_count
    @surplus_edges.size
  end

  # The least and the greatest number of triangles on such an edge.
  def surplus_range
    @surplus_edges.each_value.map(&:size).minmax
  end

  # Whether the mesh would be closed if it were cut apart along its non-manifold edges: as many triangles pass each of
  # them in one direction as in the other.
  def touching?
    complete? && @surplus_edges.any? && @surplus_edges.each_value.all? { |directions| directions.sum.zero? }
  end

  # Edges whose two triangles disagree on which side is outside.
  def inconsistent_edge_count
    @inconsistent_edges.size
  end

  # Whether the mesh encloses a volume: no hole, no branching, all triangles facing the same way.
  def closed?
    complete? && @surplus_edges.empty?
  end

  # The place of every vertex as [x, y, z].
  def vertices
    places = Array.new(vertex_count)
    corners.each_with_index { |vertex, corner| places[vertex] ||= @mesh.coordinates[3 * corner, 3] }
    places
  end

  # The two vertex numbers of an edge.
  def edge_vertices(edge)
    edge.divmod(vertex_count)
  end

  # Whether two corners of the triangle are the same vertex, so that it is an edge or a point.
  def collapsed?(triangle)
    a, b, c = corners[3 * triangle, 3]
    a == b || b == c || c == a
  end

  # The triangles of each connected piece, as lists of triangle numbers; collapsed ones belong to none.
  def shells
    parents = Array.new(vertex_count) { |vertex| vertex }
    first_triangle.each_key { |edge| unite(parents, *edge_vertices(edge)) }
    triangles = (0...@mesh.triangle_count).reject { |triangle| collapsed?(triangle) }
    triangles.group_by { |triangle| root(parents, corners[3 * triangle]) }.values
  end

  private

  def complete?
    first_triangle.size == second_triangle.size && @inconsistent_edges.empty?
  end

  def weld
    numbers = {}
    bytes = @mesh.coordinates.pack("e*")
    count = @mesh.triangle_count * 3
    @corners = Array.new(count) do |corner|
      yield corner.fdiv(count) if (corner % (3 * TRIANGLES_AT_ONCE)).zero?
      numbers[bytes.byteslice(12 * corner, 12)] ||= numbers.size
    end
    @vertex_count = numbers.size
  end

  def join
    @mesh.triangle_count.times do |triangle|
      yield triangle.fdiv(@mesh.triangle_count) if (triangle % TRIANGLES_AT_ONCE).zero?
      next if collapsed?(triangle)

      a, b, c = corners[3 * triangle, 3]
      add_edge(a, b, triangle)
      add_edge(b, c, triangle)
      add_edge(c, a, triangle)
    end
  end

  def add_edge(from, to, triangle)
    edge = from < to ? (from * vertex_count) + to : (to * vertex_count) + from
    first = first_triangle[edge]
    if first.nil?
      first_triangle[edge] = triangle
    elsif second_triangle.key?(edge)
      add_surplus(edge, from)
    else
      second_triangle[edge] = triangle
      @inconsistent_edges[edge] = true if runs?(first, from, to)
    end
  end

  # By surplus edge: the direction of each of its triangles, 1 or -1. The first two may agree there.
  def add_surplus(edge, from)
    one, other = edge_vertices(edge)
    directions = @surplus_edges[edge] ||= [first_triangle, second_triangle].map do |triangles|
      runs?(triangles[edge], one, other) ? 1 : -1
    end
    directions << (from == one ? 1 : -1)
    @inconsistent_edges.delete(edge)
  end

  # Whether the triangle passes from one vertex to the other in this direction.
  def runs?(triangle, from, to)
    a, b, c = corners[3 * triangle, 3]
    (a == from && b == to) || (b == from && c == to) || (c == from && a == to)
  end

  def unite(parents, one, other)
    parents[root(parents, one)] = root(parents, other)
  end

  def root(parents, vertex)
    while parents[vertex] != vertex
      parents[vertex] = parents[parents[vertex]]
      vertex = parents[vertex]
    end
    vertex
  end
end
