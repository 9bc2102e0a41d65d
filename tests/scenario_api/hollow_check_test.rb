# frozen_string_literal: true

require_relative "mesh_fixtures"

class HollowCheckTest < Minitest::Test
  include MeshFixtures

  FOLDER = File.join(EXAMPLES_FOLDER, "packaged/hollow_check")

  # Path in the package => path of the file.
  def listed_files
    lines = File.readlines(File.join(FOLDER, "package_files.txt"), chomp: true).reject { |line| line.start_with?("#") }
    lines.to_h(&:split).transform_values { |source| File.expand_path(source, FOLDER) }
  end

  # Unpacked below the work directory, as by the controller.
  def unpacked
    @unpacked ||= File.join(@work_dir, "package").tap do |folder|
      listed_files.each do |target, source|
        FileUtils.mkdir_p(File.dirname(File.join(folder, target)))
        FileUtils.cp(source, File.join(folder, target))
      end
    end
  end

  def check(bytes, run_argument = "")
    path = bytes.is_a?(Array) ? write_file("part.stl", binary_stl(bytes)) : bytes
    run_script(File.join(unpacked, "main.rb"), inputFiles: [path], runArgument: run_argument)
  end

  def report
    read_json("output/hollow_check.json")
  end

  def cavity
    box([2, 2, 2], [4, 4, 4]).map(&:reverse)
  end

  def test_a_full_part_is_not_hollow
    assert_equal 0, check(cube), @stderr
    refute report["hollow"]
    assert_equal ["part.stl has no closed cavity"], result_texts
  end

  def test_a_cavity_is_found_and_measured
    assert_equal 0, check(cube + cavity)
    assert report["hollow"]
    assert_equal({ "kind" => "cavity", "triangles" => 12, "volume" => 8, "center" => [3, 3, 3] }, report["shells"][1])
    assert_equal [{ "code" => 1, "text" => "part.stl has 1 closed cavity with a volume of 8.0" }], result["messages"]
  end

  def test_cavities_below_the_chosen_size_do_not_count
    check(cube + cavity, "all smallestCavity=8.5")
    refute report["hollow"]
    assert_equal 2, report["shells"].size
  end

  def test_the_housing_of_the_examples_is_hollow
    assert_equal 0, check(File.join(INPUTS_FOLDER, "housing.stl"))
    assert_equal(%w[body cavity], report["shells"].map { |shell| shell["kind"] })
  end

  def test_an_open_part_is_refused
    assert_equal 1, check(open_box)
    assert_equal ["part.stl is not closed (4 open edges), so that it has no inside; repair the mesh first."],
                 result_texts
  end

  def test_a_part_that_touches_another_is_refused_for_what_it_is
    assert_equal 1, check(cube + box([10, 10, 0], [20, 20, 10]))
    assert_equal ["part.stl consists of parts that touch (1 edge with 4 triangles instead of 2); check each of them on its " \
                  "own."], result_texts
  end

  def test_the_package_list_names_every_library_file_that_is_required
    main_and_library = unpacked && Dir.glob("**/*.rb", base: unpacked)
    required = main_and_library.flat_map do |path|
      File.read(File.join(unpacked, path)).scan(/^\s*require_relative "(.*)"/).flatten.map do |name|
        File.join(File.dirname(path), "#{name}.rb").delete_prefix("./")
      end
    end
    assert_equal (main_and_library - ["main.rb"]).sort, required.uniq.sort
  end
end
