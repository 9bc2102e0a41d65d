# frozen_string_literal: true

require_relative "mesh_fixtures"

class MeshSummaryTest < Minitest::Test
  include MeshFixtures

  def test_a_cube
    assert_equal({ file: "part.stl", format: :binary, triangles: 12, vertices: 8,
                   boundingBox: { min: [0, 0, 0], max: [10, 10, 10], size: [10, 10, 10] }, surface: 600, volume: 1000,
                   closed: true, openEdges: 0, nonManifoldEdges: 0, inconsistentEdges: 0, degenerateTriangles: 0 },
                 summary_of(binary_stl(cube)).to_h)
  end

  def test_an_open_box_has_the_four_edges_of_its_missing_lid
    figures = summary_of(binary_stl(open_box)).to_h
    assert_equal [10, 4, false, 500], figures.values_at(:triangles, :openEdges, :closed, :surface)
  end

  def test_text_and_binary_give_the_same_figures
    triangles = box([0.1, -0.2, 1e-7], [123.456, 7.89, 3.3333333])
    ascii, binary = [ascii_stl(triangles), binary_stl(triangles)].map { |bytes| summary_of(bytes).to_h }
    assert_equal binary.merge(format: :ascii), ascii
  end

  def test_the_volume_far_from_the_origin_is_right
    figures = summary_of(binary_stl(box([100_000, 100_000, 100_000], [100_010, 100_010, 100_010]))).to_h
    assert_in_delta 1000, figures[:volume], 1e-6
  end

  def test_a_mesh_turned_inside_out_has_a_negative_volume
    assert_equal(-1000, summary_of(binary_stl(cube.map(&:reverse))).to_h[:volume])
  end

  def test_degenerate_triangles_are_counted_and_open_no_edge
    point = [[1, 1, 1]] * 3
    collapsed = [[0, 0, 0], [10, 0, 0], [0, 0, 0]]
    figures = summary_of(binary_stl(cube + [point, collapsed])).to_h
    assert_equal [2, 0, true, 1000], figures.values_at(:degenerateTriangles, :openEdges, :closed, :volume)
  end

  def test_a_triangle_with_its_corners_in_one_line_is_degenerate
    figures = summary_of(binary_stl([[[0, 0, 0], [5, 5, 5], [10, 10, 10]]])).to_h
    assert_equal [1, 0], figures.values_at(:degenerateTriangles, :surface)
  end

  def test_a_third_triangle_on_an_edge_is_told
    figures = summary_of(binary_stl(cube + [[[0, 0, 0], [10, 0, 0], [0, -5, -5]]])).to_h
    assert_equal [1, 2, false], figures.values_at(:nonManifoldEdges, :openEdges, :closed)
  end

  def test_a_turned_triangle_is_told
    triangles = cube
    triangles[0] = triangles[0].reverse
    assert_equal [3, 0, false],
                 summary_of(binary_stl(triangles)).to_h.values_at(:inconsistentEdges, :openEdges, :closed)
  end

  def test_minus_zero_is_zero
    triangles = cube.map { |points| points.map { |point| point.map(&:to_f) } }
    triangles[0] = triangles[0].map { |point| point.map { |value| value.zero? ? -0.0 : value } }
    assert summary_of(binary_stl(triangles)).to_h[:closed]
  end

  def test_shells_are_the_connected_pieces
    mesh = summary_of(binary_stl(cube + box([20, 0, 0], [21, 1, 1])))
    assert_equal [12, 12], mesh.topology.shells.map(&:size)
  end
end
