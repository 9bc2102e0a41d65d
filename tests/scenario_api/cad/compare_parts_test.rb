# frozen_string_literal: true

require_relative "cad_fixtures"

class ComparePartsTest < Minitest::Test
  include CadFixtures

  EXACT = 1e-9

  def setup
    super
    CadFixtures.need(self, :draw)
  end

  def compare(first, second)
    run_example("compare_parts", part(first), part(second), run_argument: "size=400")
  end

  def comparison
    read_json("output/comparison.json")
  end

  # The bore grows from a diameter of 20 to 24, and a pad of 10 x 10 x 5 comes on top.
  def test_what_a_revision_removes_and_adds
    assert_equal 0, compare("plate.step", "plate_b.step"), "#{@stdout}#{@stderr}"
    ring = Math::PI * ((12**2) - (10**2)) * 10
    assert_in_epsilon ring, comparison["volumes"]["removed"], EXACT
    assert_in_epsilon 500, comparison["volumes"]["added"], EXACT
    comparison["boxes"]["removed"].zip([28, 13, 0, 52, 37, 10]) { |found, real| assert_in_delta real, found, 1e-6 }
    comparison["boxes"]["added"].zip([15, 15, 10, 25, 25, 15]) { |found, real| assert_in_delta real, found, 1e-6 }
    assert_equal %w[added.png added.stl comparison.json removed.png removed.stl], Dir.children(@output_folder).sort
    assert_equal ["plate_b.step takes 1382.3 mm3 away from plate.step and adds 500 mm3"], result_texts
  end

  def test_the_other_way_round_removed_and_added_change_places
    assert_equal 0, compare("plate_b.step", "plate.step"), @stdout
    assert_in_epsilon 500, comparison["volumes"]["removed"], EXACT
  end

  def test_a_part_is_the_same_body_in_another_format
    assert_equal 0, compare("bearing_block.step", "bearing_block.brep"), @stdout
    assert_equal ["bearing_block.brep is the same body as bearing_block.step"], result_texts
    assert_equal [true, %w[comparison.json]], [comparison["same"], Dir.children(@output_folder)]
  end

  def test_a_part_without_a_solid_is_refused
    assert_equal 1, compare("plate.step", "plate.iges")
    assert_refused "plate.iges holds no solid, so that it cannot be compared"
  end

  # An intersection that fails leaves bodies out without a word.
  def test_volumes_that_contradict_one_another_are_no_success
    lines = { first: 1000, second: 900, removed: 0, added: 0 }.map { |name, value| "VALUE volume_#{name} #{value}" }
    script = "puts #{[*lines, "DONE "].inspect}.map { |line| ENV['SETTING_TOKEN'] + ' ' + line }"
    with_tool("CAD_DRAW", script) { compare("plate.step", "plate_b.step") }
    assert_refused "plate.step and plate_b.step could not be compared: their volumes differ by -100 mm3, but the bodies " \
                   "removed and added do by 0 mm3"
  end

  def test_it_takes_two_inputs
    run_example("compare_parts", part("box.step"))
    assert_refused "Two input files are needed for a comparison, not 1."
  end
end
