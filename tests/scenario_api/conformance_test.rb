# frozen_string_literal: true

require_relative "test_helper"
require_relative "conformance_row"

# Each row of the tables in conformance/*.json holds for both scenario APIs.
class ConformanceTest < Minitest::Test
  include JobFolders
  parallelize_me!

  FOLDER = File.join(__dir__, "conformance")

  # How the scenarios of a language are run, and what they report about themselves.
  Language = Struct.new(:name, :command, :script, :environment, :version, :api_file, :own_library, keyword_init: true)

  RUBY = Language.new(name: "ruby", command: [RbConfig.ruby, "--disable=gems", "-w"], script: "scenario.rb",
                      environment: { "RUBYLIB" => API_FOLDER }, version: RUBY_VERSION,
                      api_file: File.join(API_FOLDER, "controller_scenario.rb"), own_library: "/json.rb")
  PYTHON = Language.new(name: "python", command: [PYTHON_PROGRAM], script: "scenario.py",
                        environment: { "PYTHONPATH" => PYTHON_API_FOLDER, "PYTHONDONTWRITEBYTECODE" => "1" },
                        version: `#{PYTHON_PROGRAM} --version`.split.last,
                        api_file: File.join(PYTHON_API_FOLDER, "controller_scenario/__init__.py"),
                        own_library: "/json/__init__.py")

  [RUBY, PYTHON].each do |language|
    ConformanceRow.all.each do |row|
      define_method("test_#{language.name}: #{row.name}") { check(language, row.within(directories)) }
    end
  end

  private

  def directories
    { "root" => @root, "work" => @work_dir, "output" => @output_folder }
  end

  def check(language, row)
    prepare(language, row)
    run_row(language, row)
    assert_text(language, row["stderr"] || "", @stderr, "standard error")
    assert_text(language, row["stdout"] || "", @stdout, "standard output")
    assert_equal row["exitCode"] || 0, @exit_code, @stderr
    check_result(language, row)
    check_shown(row)
    check_progress(row)
    check_used_tools(language, row)
    check_files(row)
  end

  # What the scenario gets.

  def prepare(language, row)
    make_folder("scripts")
    @script = File.join(@root, "scripts", language.script)
    FileUtils.cp(File.join(FOLDER, language.script), @script)
    File.binwrite(File.join(@work_dir, "run_scenario_info.json"), request_of(row))
    write_file("steps.json", JSON.generate(row["steps"] || []))
    (row["files"] || {}).each { |name, content| write_file(unescape(name), text_of(content)) }
    (row["directories"] || []).each { |name| Dir.mkdir(File.join(@root, name)) }
  end

  def unescape(name)
    name.b.gsub(/%(\h\h)/) { [$1].pack("H2") }
  end

  def text_of(content)
    content.is_a?(String) ? content : JSON.generate(content)
  end

  def request_of(row)
    return row["runInfo"] if row["runInfo"]
    return row["runInfoBase64"].unpack1("m") if row["runInfoBase64"]

    request = JSON.generate(run_info(scenarioPath: "/s/test.script", **(row["request"] || {}).transform_keys(&:to_sym)))
    nesting = row["runInfoNesting"]
    nesting ? request.sub("{", "{\"other\":#{'[' * nesting}#{']' * nesting},") : request
  end

  def run_row(language, row)
    environment = { "CONTROLLER_RUN_INFO" => nil, "CONFORMANCE_STEPS" => File.join(@root, "steps.json") }
    environment = environment.merge(language.environment, row["environment"] || {})
    arguments = row["arguments"] || [File.join(@work_dir, "run_scenario_info.json")]
    command = [environment, *language.command, @script, *arguments]
    Open3.popen3(*command, chdir: @work_dir) do |input, output, errors, process|
      input.close
      readers = [output, errors].map { |stream| Thread.new { stream.read.force_encoding(Encoding::UTF_8) } }
      send_stop(row["stop"], process.pid)
      @stdout, @stderr = readers.map(&:value)
      @exit_code = process.value.exitstatus
    end
  end

  def send_stop(request, pid)
    return if request.nil?

    Timeout.timeout(DEADLINE_SECONDS) { wait_for_file("work/progress_info_list.json") }
    request == "sigterm" ? Process.kill("TERM", pid) : write_file("work/killprocess", "")
  rescue Timeout::Error
    Process.kill("KILL", pid)
    raise
  end

  # What it leaves.

  def check_result(language, row)
    return refute_result if row.key?("result") && row["result"].nil?

    check_messages(row)
    return unless row.key?("result")

    expected = { "version" => 1, "jobId" => "3f9a0c1", "succeeded" => nil, "messages" => [], "outputFiles" => [] }
               .merge(row["result"])
    found = result
    expected["messages"].zip(found["messages"]).each do |message, other|
      assert_text(language, message["text"], other["text"], "message") if other
      message["text"] = other["text"] if other
    end
    assert_equal expected, found
  end

  def check_messages(row)
    assert_equal row["messageCount"], result_texts.size if row.key?("messageCount")
    assert_equal row["firstMessage"], result_texts.first if row.key?("firstMessage")
    assert_equal row["lastMessage"], result_texts.last if row.key?("lastMessage")
    return unless row.key?("resultBytesBelow")

    assert_operator File.size(File.join(@work_dir, "run_scenario_result.json")), :<, row["resultBytesBelow"]
  end

  # As JSON, which tells 2 from 2.0.
  def check_shown(row)
    return unless row.key?("shown")

    shown = result_texts.map { |text| JSON.parse(text, quirks_mode: true) }
    assert_equal JSON.generate(row["shown"]), JSON.generate(shown)
  end

  def check_progress(row)
    return unless row.key?("progress")
    return refute_path_exists(File.join(@work_dir, "progress_info_list.json")) if row["progress"].nil?

    assert_equal({ "version" => 1, "jobId" => "3f9a0c1", "progressInfoList" => [row["progress"]] }, progress)
  end

  def check_used_tools(language, row)
    return unless row.key?("usedTools")

    report = read_json("work/used_tools.json")
    own = { "name" => language.name, "version" => language.version }
    assert_equal [1, [own, *row["usedTools"]]], [report["version"], report["tools"]]
    [language.api_file, *row["usedFiles"]].each { |path| assert_includes report["files"], path }
    assert_empty(report["files"].select { |path| path.end_with?(language.own_library) || path == @script })
  end

  def check_files(row)
    (row["bytes"] || {}).each { |name, base64| assert_equal base64, [File.binread(File.join(@root, name))].pack("m0") }
    (row["listings"] || {}).each { |name, names| assert_equal names, Dir.children(File.join(@root, name)).sort }
  end

  def assert_text(language, expected, found, what)
    expected = expected.fetch(language.name) if expected.is_a?(Hash) && expected.key?(language.name)
    return assert_equal(expected, found, what) unless expected.is_a?(Hash)

    assert_match Regexp.new(expected.fetch("match")), found, what
  end
end
