# frozen_string_literal: true

require_relative "test_helper"
require File.join(EXAMPLES_FOLDER, "lib/mesh/mesh_summary")

# Small meshes with known figures, and STL files of them.
module MeshFixtures
  include JobFolders

  # The six sides of a box as squares, counter-clockwise from outside; the top is last.
  SIDES = [[0, 2, 3, 1], [0, 1, 5, 4], [1, 3, 7, 5], [3, 2, 6, 7], [2, 0, 4, 6], [4, 5, 7, 6]].freeze

  # Triangles of a box from `low` to `high`, each a list of three points.
  def box(low, high, sides = SIDES)
    corners = (0...8).map { |bits| (0...3).map { |axis| (bits >> axis).odd? ? high[axis] : low[axis] } }
    sides.flat_map { |a, b, c, d| [[a, b, c], [a, c, d]].map { |triangle| corners.values_at(*triangle) } }
  end

  # Edge length 10: surface 600, volume 1000.
  def cube
    box([0, 0, 0], [10, 10, 10])
  end

  def open_box
    box([0, 0, 0], [10, 10, 10], SIDES.take(5))
  end

  def binary_stl(triangles, header: "made by a test", count: triangles.size)
    [header, count].pack("a80V") << triangles.map { |points| [0, 0, 0, *points.flatten, 0].pack("e12v") }.join
  end

  def ascii_stl(triangles)
    facets = triangles.map do |points|
      vertices = points.map { |point| "vertex #{point.join(' ')}\n" }.join
      "facet normal 0 0 0\nouter loop\n#{vertices}endloop\nendfacet\n"
    end
    "solid part\n#{facets.join}endsolid part\n"
  end

  def summary_of(bytes)
    MeshSummary.new(write_file("part.stl", bytes))
  end
end
