# frozen_string_literal: true

# What keeps a mesh from being closed, in words: "is not closed (2 open edges, 1 edge with 4 triangles instead of 2)".
class Defects
  def initialize(topology)
    @topology = topology
  end

  def to_s
    "#{@topology.touching? ? "consists of parts that touch" : "is not closed"} (#{kinds.compact.join(", ")})"
  end

  private

  def kinds
    open = @topology.open_edges.size
    turned = @topology.inconsistent_edge_count
    [(edges(open, "open ") if open.positive?), surplus,
     ("#{edges(turned)} whose triangles face opposite ways" if turned.positive?)]
  end

  def surplus
    count = @topology.non_manifold_edge_count
    "#{edges(count)} with #{@topology.surplus_range.uniq.join(" to ")} triangles instead of 2" if count.positive?
  end

  def edges(count, kind = "")
    "#{count} #{kind}#{count == 1 ? "edge" : "edges"}"
  end
end
