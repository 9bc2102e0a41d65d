# frozen_string_literal: true

require_relative "mesh_fixtures"

class CompareMeshesTest < Minitest::Test
  include MeshFixtures

  def compare(*contents)
    paths = contents.each_with_index.map { |bytes, index| write_file("part_#{index}.stl", bytes) }
    run_script(File.join(EXAMPLES_FOLDER, "scenarios/compare_meshes.rb"), inputFiles: paths)
  end

  def comparison
    read_json("output/comparison.json")
  end

  def test_a_mesh_has_the_same_size_as_itself_in_the_other_format
    assert_equal 0, compare(binary_stl(cube), ascii_stl(cube)), @stderr
    assert comparison["sameSize"]
    assert_equal ["part_1.stl has the same size, surface and volume as part_0.stl"], result_texts
  end

  def test_differences_are_the_second_against_the_first
    assert_equal 0, compare(binary_stl(cube), binary_stl(box([0, 0, 0], [10, 10, 20])))
    assert_equal({ "triangles" => 0, "size" => [0, 0, 10], "center" => [0, 0, 5],
                   "surface" => { "absolute" => 400, "percent" => 66.6666667 },
                   "volume" => { "absolute" => 1000, "percent" => 100 } }, comparison["differences"])
    assert_equal ["part_1.stl differs from part_0.stl; its volume by +100.00 %"], result_texts
  end

  def test_a_first_mesh_without_volume_gives_no_percentage
    assert_equal 0, compare(binary_stl([[[0, 0, 0], [1, 0, 0], [0, 1, 0]]]), binary_stl(cube)), @stderr
    assert_nil comparison.dig("differences", "volume", "percent")
  end

  def test_it_takes_two_usable_inputs
    assert_equal 1, compare(binary_stl(cube))
    assert_equal ["Two input files are needed for a comparison, not 1."], result_texts
    assert_equal 1, compare(binary_stl(cube), "")
    assert_equal ["part_1.stl is empty"], result_texts
  end
end
