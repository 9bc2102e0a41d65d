# frozen_string_literal: true

require_relative "test_helper"

# The templates of new scenarios: what is made from them passes its own tests, and these fail where the scenario does.
class TemplatesTest < Minitest::Test
  TEMPLATES = File.join(PROJECT_FOLDER, "scenario_api/templates")
  COMMANDS = { "ruby" => [{ "RUBYLIB" => API_FOLDER }, RbConfig.ruby, "tests/main_test.rb"],
               "python" => [{ "PYTHONPATH" => PYTHON_API_FOLDER, "PYTHONDONTWRITEBYTECODE" => "1" },
                            PYTHON_PROGRAM, "-m", "unittest", "discover", "tests"] }.freeze

  def setup
    @root = Dir.mktmpdir("template-test-")
  end

  def teardown
    FileUtils.remove_entry(@root)
  end

  # Makes a scenario as a program for users does: a copy, with the name in place of @NAME@.
  def make(language)
    FileUtils.cp_r(File.join(TEMPLATES, language), File.join(@root, "Größen"))
    Dir.chdir(File.join(@root, "Größen")) do
      Dir.glob("**/*").select { |path| File.file?(path) }.each do |path|
        File.write(path, File.read(path, encoding: "UTF-8").gsub("@NAME@", "Größen"))
      end
      yield
    end
  end

  def test_what_is_made_passes_its_own_tests
    COMMANDS.each do |language, command|
      make(language) do
        output, status = Open3.capture2e(*command)
        assert_predicate status, :success?, output
        assert_match(/3 runs|Ran 3 tests/, output)
        assert_equal "Größen", JSON.parse(File.read("manifest.json", encoding: "UTF-8"))["displayName"]
      end
      FileUtils.remove_entry(File.join(@root, "Größen"))
    end
  end

  def test_a_program_is_built_passes_its_own_test_and_names_itself_in_its_manifest
    make("native") do
      # The name of a target in CMake has fewer characters; cadjobs allows these only.
      Dir.glob("**/*").select { |path| File.file?(path) }.each do |path|
        File.write(path, File.read(path, encoding: "UTF-8").gsub("Größen", "sizes"))
      end
      [%w[cmake -S . -B build], %w[cmake --build build], %w[ctest --test-dir build --output-on-failure],
       %w[cmake --install build --prefix package]].each do |command|
        output, status = Open3.capture2e(*command)
        assert_predicate status, :success?, output
      end
      assert_path_exists "package/#{JSON.parse(File.read("package/manifest.json"))["executable"]}"
    end
  end

  def test_its_tests_fail_where_the_scenario_does
    COMMANDS.each do |language, command|
      make(language) do
        main = Dir.glob("main.*").first
        File.write(main, File.read(main).sub("smallestSize", "another"))
        refute_predicate Open3.capture2e(*command).last, :success?
      end
      FileUtils.remove_entry(File.join(@root, "Größen"))
    end
  end
end
