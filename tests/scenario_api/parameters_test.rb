# frozen_string_literal: true

require_relative "test_helper"

class ParametersTest < Minitest::Test
  include JobFolders

  SETS = [
    { id: "fine", parameters: [
      { name: "size", type: "integer", defaultValue: "640", allowedValues: %w[320 640] },
      { name: "title", type: "text", defaultValue: "" },
      { name: "scale", type: "number", defaultValue: "1.5" },
      { name: "edges", type: "boolean", defaultValue: "true" }
    ] },
    { id: "quick", parameters: [{ name: "size", type: "integer", defaultValue: "320" }] },
    { id: "bare" }
  ].freeze

  def choose(run_argument, sets = SETS)
    path = write_file("test.scenario.json", JSON.generate(version: 1, parameterSets: sets))
    ControllerScenario::Parameters.choose(run_argument, path)
  end

  def test_chosen
    defaults = { "size" => 640, "title" => "", "scale" => 1.5, "edges" => true }
    { "" => defaults,
      "fine" => defaults,
      "size=320" => defaults.merge("size" => 320),
      "fine size=320 edges=false" => defaults.merge("size" => 320, "edges" => false),
      'fine title="Left bracket" scale=2' => defaults.merge("title" => "Left bracket", "scale" => 2.0),
      "  title==  " => defaults.merge("title" => "="),
      'title="3"" pipe" size=320' => defaults.merge("title" => '3" pipe', "size" => 320),
      'title="""" size=320' => defaults.merge("title" => '"', "size" => 320),
      'title="" size=320' => defaults.merge("size" => 320),
      'title=a"b c"d' => defaults.merge("title" => "ab cd"),
      'title="C:\\a b\\"' => defaults.merge("title" => 'C:\\a b\\'),
      "quick" => { "size" => 320 },
      "quick size=-12" => { "size" => -12 },
      "bare" => {} }.each { |argument, expected| assert_equal expected, choose(argument), argument }
  end

  def test_refused
    { "coarse" => 'names the parameter set "coarse"; known are: fine, quick, bare.',
      "fine sise=3" => 'names the parameter "sise"; known are: size, title, scale, edges.',
      "bare size=3" => 'names the parameter "size"; known are: none.',
      "fine size" => 'holds "size"; expected name=value.',
      "fine =3" => 'holds "=3"; expected name=value.',
      "size=320 size=640" => 'names the parameter "size" 2 times.',
      "fine edges=true edges=true edges=true" => 'names the parameter "edges" 3 times.',
      'title="3" pipe"' => 'has a double quote that is not closed',
      'size=320"' => 'has a double quote that is not closed',
      '"' => 'has a double quote that is not closed',
      "fine size=321" => 'The parameter "size" is "321"; allowed are: 320, 640.',
      "quick size=0x10" => 'The parameter "size" is "0x10"; expected type integer.',
      "fine scale=wide" => 'The parameter "scale" is "wide"; expected type number.',
      "fine edges=1" => 'The parameter "edges" is "1"; expected type boolean.' }.each do |argument, problem|
      error = assert_raises(ControllerScenario::Failure) { choose(argument) }
      assert_includes error.message, problem
    end
  end

  def test_without_a_description_every_pair_is_text
    assert_equal({ "a" => "1", "b" => "x y" }, ControllerScenario::Parameters.choose('a=1 b="x y"', nil))
  end

  def test_without_a_description_a_name_is_given_once_too
    error = assert_raises(ControllerScenario::Failure) { ControllerScenario::Parameters.choose("a=1 a=2", nil) }
    assert_includes error.message, 'names the parameter "a" 2 times.'
  end

  def test_a_broken_description_is_named
    ["{", "[]", '{"parameterSets":7}', '{"parameterSets":[7]}'].each do |content|
      path = write_file("broken.json", content)
      error = assert_raises(ControllerScenario::Failure) { ControllerScenario::Parameters.choose("", path) }
      assert_includes error.message, "The parameter sets in #{path} cannot be read"
    end
  end

  def test_finds_the_file_beside_a_script_or_in_its_package
    assert_nil ControllerScenario::Parameters.file_beside(File.join(@root, "mesh.rb"))
    manifest = write_file("manifest.json", "{}")
    assert_equal manifest, ControllerScenario::Parameters.file_beside(File.join(@root, "mesh.rb"))
    beside = write_file("mesh.scenario.json", "{}")
    assert_equal beside, ControllerScenario::Parameters.file_beside(File.join(@root, "mesh.rb"))
  end
end
