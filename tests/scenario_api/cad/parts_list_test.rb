# frozen_string_literal: true

require_relative "cad_fixtures"

class PartsListTest < Minitest::Test
  include CadFixtures

  def setup
    super
    CadFixtures.need(self, :draw)
  end

  def list(path)
    assert_equal 0, run_example("parts_list", path), "#{@stdout}#{@stderr}"
    read_json("output/parts_list.json")["parts"]
  end

  def test_an_assembly_with_parts_that_occur_twice
    parts = list(part("shaft_unit.step")).to_h { |part| [part["name"], part] }
    assert_equal({ "bearing_block" => 2, "shaft" => 1, "collar" => 2 }, parts.transform_values { |part| part["count"] })
    shaft, collar = parts.values_at("shaft", "collar")
    assert_in_epsilon Math::PI * (17.9**2) * 260, shaft["volume"], 1e-8
    assert_in_epsilon Math::PI * ((26**2) - (18**2)) * 12, collar["volume"], 1e-8
    assert_in_epsilon Math::PI * (17.9**2) * 260 * 7.85 / 1000, shaft["massInGrams"], 1e-8
    assert_match(/\Ashaft_unit.step: 5 parts, 3 of them different, 59\d\d g\z/, result_texts.first)
  end

  def test_the_table_has_a_row_for_each_part
    list(part("shaft_unit.step"))
    rows = File.readlines(output("parts_list.csv"), chomp: true).map { |line| line.split(",") }
    assert_equal %w[name count x y z volume area massInGrams], rows.first
    assert_equal [["bearing_block", "2"], ["shaft", "1"], ["collar", "2"]], rows.drop(1).map { |row| row.take(2) }
    assert_equal [8], rows.map(&:size).uniq
  end

  # Names come from strangers, and a spreadsheet calculates what begins like a formula.
  def test_odd_names_of_parts
    step = File.read(part("box.step")).sub(/PRODUCT\('box','box'/, "PRODUCT('a','=1+\"2\",b'")
    list(write_file("odd.step", step))
    assert_equal "\"'=1+\"\"2\"\",b\"", File.readlines(output("parts_list.csv"))[1][/\A".*?"(?=,1,)/]
  end

  def test_a_single_part_is_a_list_of_one
    assert_equal [["cylinder", 1]], list(part("cylinder.step")).map { |part| part.values_at("name", "count") }
  end

  def test_a_brep_file_holds_no_assembly
    run_example("parts_list", part("plate.brep"))
    assert_refused "plate.brep holds no assembly"
  end
end
