# frozen_string_literal: true

require_relative "mesh_fixtures"

class LayerContoursTest < Minitest::Test
  include MeshFixtures

  def cut(content, argument)
    run_script(File.join(EXAMPLES_FOLDER, "scenarios/layer_contours.rb"),
               inputFiles: [write_file("part.stl", content)], runArgument: argument)
  end

  def test_every_layer_of_a_box_has_the_contour_of_its_base
    assert_equal 0, cut(binary_stl(box([0, 0, 0], [10, 20, 5])), "coarse layers=10"), @stderr
    assert_equal [60.0] * 10, read_json("output/contours.json")["lengths"]
    assert_equal ["part.stl: 10 layers, the longest contour 60.0"], result_texts
  end

  def test_every_hundredth_layer_is_drawn
    assert_equal 0, cut(binary_stl(cube), "coarse"), @stderr
    assert_equal ["contour_00000.svg", "contours.json"], Dir.children(@output_folder).sort
  end

  def test_what_is_no_stl_fails_with_the_words_of_the_reader
    assert_equal 1, cut("", "coarse")
    assert_equal ["part.stl is empty"], result_texts
  end
end
