# frozen_string_literal: true

# A mesh of tetrahedra of second order (C3D10), read from the Abaqus file that Gmsh writes.
class FemMesh
  # The message says what is wrong, as the end of a sentence that begins with the name of the part.
  class Unusable < StandardError; end

  NODES_OF_ELEMENT = 10
  ELEMENT_LIMIT = 400_000

  # The corners of the faces of a tetrahedron; they look outwards.
  FACES = [[0, 2, 1], [0, 1, 3], [1, 2, 3], [2, 0, 3]].freeze

  # The places of the used nodes, and the nodes of each element, by their numbers.
  attr_reader :nodes, :elements

  # Raises Unusable.
  def initialize(path)
    raise Unusable, "holds no geometry that can be meshed" unless File.file?(path)

    @nodes, numbers = read(path)
    @elements = numbers.each_slice(NODES_OF_ELEMENT + 1).to_h { |id, *nodes| [id, nodes] }
    raise Unusable, "holds no solid that could be filled with elements" if @elements.empty?
    raise Unusable, "needs more than #{ELEMENT_LIMIT} elements; choose larger ones" if @elements.size > ELEMENT_LIMIT

    used = @elements.values.flatten.uniq.to_h { |id| [id, true] }
    @nodes.select! { |id, _| used.key?(id) }
  end

  def volume
    elements.each_value.sum do |ids|
      a, b, c, d = nodes.values_at(*ids.take(4))
      (x1, y1, z1), (x2, y2, z2), (x3, y3, z3) = [b, c, d].map { |point| point.zip(a).map { |to, from| to - from } }
      ((x1 * ((y2 * z3) - (z2 * y3))) - (y1 * ((x2 * z3) - (z2 * x3))) + (z1 * ((x2 * y3) - (y2 * x3)))) / 6
    end
  end

  # The nodes in the lowest and in the highest part of the mesh; `part` is relative to its height.
  def ends(part)
    low, high = nodes.values.map(&:last).minmax
    border = part * (high - low)
    [nodes.keys.select { |id| nodes[id][2] <= low + border }, nodes.keys.select { |id| nodes[id][2] >= high - border }]
  end

  def diagonal
    low, high = nodes.values.transpose.map(&:minmax).transpose
    Math.sqrt(low.zip(high).sum { |from, to| (to - from)**2 })
  end

  # The faces with an element on one side only: [element, three nodes].
  def surface
    faces = Hash.new { |hash, key| hash[key] = [] }
    elements.each do |element, ids|
      FACES.each { |places| faces[ids.values_at(*places).sort] << [element, ids.values_at(*places)] }
    end
    faces.values.select(&:one?).map(&:first)
  end

  # Elements that share a corner belong to one body.
  def body_count
    parents = {}
    elements.each_value do |ids|
      first, *others = ids.take(4).map { |id| root(parents, id) }
      others.each { |other| parents[root(parents, other)] = root(parents, first) }
    end
    parents.keys.map { |id| root(parents, id) }.uniq.size
  end

  private

  def root(parents, id)
    parents[id] ||= id
    id = parents[id] = parents[parents[id]] while parents[id] != id
    id
  end

  def read(path)
    nodes, numbers, section = {}, [], nil
    File.foreach(path) do |line|
      if line.start_with?("*")
        section = line[/\A\*(NODE)\b/i, 1]&.upcase || line[/\A\*ELEMENT.*TYPE *= *(C3D10)\b/i, 1]
      elsif section == "NODE"
        id, *place = line.split(",")
        nodes[Integer(id)] = place.map { |value| Float(value) }
      elsif section
        numbers.concat(line.split(",").map(&:strip).reject(&:empty?).map { |value| Integer(value) })
      end
    end
    [nodes, numbers]
  rescue ArgumentError, TypeError => e
    raise Unusable, "has no usable mesh: #{e.message}"
  end
end
