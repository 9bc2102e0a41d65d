# frozen_string_literal: true

require_relative "cad_fixtures"
require_relative "../mesh_fixtures"

class MeshRepairTest < Minitest::Test
  include MeshFixtures
  include CadFixtures

  def setup
    super
    CadFixtures.need(self, :admesh)
  end

  def repair(triangles)
    run_example("mesh_repair", write_file("part.stl", binary_stl(triangles)), run_argument: "timeLimit=60")
  end

  def after
    MeshSummary.new(output("part_repaired.stl")).to_h
  end

  def test_a_hole_is_filled
    assert_equal 0, repair(open_box), "#{@stdout}#{@stderr}"
    assert_equal [true, 12, 1000, 600], after.values_at(:closed, :triangles, :volume, :surface)
    assert_equal ["part.stl is not closed (4 open edges)", "part.stl: repaired with +2 triangles; volume 1000"],
                 result_texts.take(2)
    assert_equal [4, 0], read_json("output/part_repair.json").values_at("before", "after").map { |mesh| mesh["openEdges"] }
  end

  def test_a_turned_triangle_is_turned_back
    triangles = cube
    triangles[0] = triangles[0].reverse
    assert_equal 0, repair(triangles), @stdout
    assert_equal [true, 1000], after.values_at(:closed, :volume)
  end

  def test_the_torn_flange_of_the_examples
    assert_equal 0, run_example("mesh_repair", File.join(INPUTS_FOLDER, "torn_flange.stl")), @stdout
    assert_includes result_texts, "torn_flange.stl is not closed (13 open edges)"
    assert MeshSummary.new(output("torn_flange_repaired.stl")).topology.closed?
  end

  def test_a_closed_mesh_needs_no_repair
    assert_equal 0, repair(cube), @stdout
    assert_equal ["part.stl is closed; there was nothing to repair"], result_texts
  end

  def test_a_repair_that_makes_much_of_little_is_a_warning
    assert_equal 0, repair(open_box), @stdout
    assert_includes result["messages"], { "code" => 1, "text" => "part.stl: the repair changes the surface by 20 %; " \
                                                                 "compare the meshes before you use it" }
  end

  def test_unusable_files_never_reach_the_tool
    run_example("mesh_repair", write_file("part.stl", "solid of the wrong kind"))
    refute result["succeeded"]
    assert_match(/\Apart\.stl /, result_texts.first)
  end

  def test_a_tool_that_writes_nothing_has_not_succeeded
    with_tool("CAD_ADMESH", "puts 'Writing binary file'") { repair(open_box) }
    assert_refused "part.stl could not be repaired: repaired.stl cannot be read: No such file or directory"
  end
end
