# frozen_string_literal: true

require "fileutils"
require "securerandom"
require_relative "part_file"
require_relative "tool"

# Runs our scripts in a CAD program for one or several files; what differs between the programs is in subclasses.
#
# The exit code of such a program says little. A script prints lines that begin with a word nobody else knows, so that
# nothing in a CAD file can pass for them: STEP (what it does, and which part of the progress this is), VALUE, NOTE (a
# warning), ROW (one of a list), ERROR and, when all is done, DONE.
class ScriptedTool

  attr_reader :values, :notes, :rows

  # Raises Tool::Missing.
  def initialize(job, key, time_limit)
    @job = job
    @tool = Tool.new(job, key, time_limit)
    @values = {}
    @notes = []
    @rows = []
    @names = {}
    @token = SecureRandom.hex(8)
  end

  # Copies a part into the work directory; its messages will name the user's file. Returns the copy's name.
  def stage(part, plain_name)
    part.stage(@job.work_dir, plain_name).tap { |staged| @names[staged] = part.name }
  end

  # Runs a script; it finds `settings` in its environment. `span` is the progress at its beginning and at its end.
  # Raises Tool::Failed.
  def run(script, settings, span = 0..100)
    @step, @span, @done, @error = [0, 100, ""], span, false, nil
    files(script).each { |path| FileUtils.cp(path, @job.work_dir) }
    run_tool(script, settings)
    raise Tool::Failed, @error if @error
    raise Tool::Failed, "#{subject}: #{@tool.title} stopped half way; the log says more" unless @done

    report_tools(script)
  end

  # A number of the script, which must have told it.
  def number(name)
    numbers(name).first
  end

  # A list of numbers of the script, likewise.
  def numbers(name)
    list = values.fetch(name).split.map { |text| Float(text) }
    raise KeyError if list.empty?

    list
  rescue KeyError, ArgumentError
    raise Tool::Failed, "#{subject}: #{@tool.title} told no #{name}; the log says more"
  end

  private

  # The error that the script has told says more than how the program ended.
  def run_tool(script, settings)
    @tool.run(*arguments(script), environment: environment(settings)) { |line| hear(line) }
  rescue Tool::Failed => e
    raise Tool::Failed, "#{subject}: #{e.message}" unless @error
  end

  def subject
    @names.values.join(" and ")
  end

  def hear(line)
    return hear_program(line) unless line =~ /^#{@token} (\w+) ?(.*)/

    hear_script(Regexp.last_match(1), with_names(Regexp.last_match(2)))
  end

  def hear_script(kind, text)
    case kind
    when "STEP" then start_step(text)
    when "VALUE" then @values.store(*text.split(" ", 2))
    when "NOTE" then @notes << text
    when "ROW" then @rows << text
    when "ERROR" then @error ||= text
    when "DONE" then @done = true
    end
    puts "#{kind} #{text}"
    :quiet
  end

  def start_step(text)
    from, to, what = text.split(" ", 3)
    @step = [from.to_i, to.to_i, what]
    move(0)
  end

  # `percent` is the program's own, within the step. A step ends just before the next one begins: a text is shown only with a
  # new percentage.
  def move(percent)
    from, to, what = @step
    within = from + ([to - from - 1, 0].max * percent / 100.0)
    @job.progress(@span.begin + ((@span.end - @span.begin) * within / 100), what)
  end

  def with_names(text)
    @names.reduce(text) { |result, (staged, name)| result.gsub(staged) { name } }
  end

  def report_tools(script)
    @job.report_tool_version(tool_name, values["version"]) if values["version"]
    files(script).each { |path| @job.report_used_file(path) }
  end

  def environment(settings)
    settings.to_h { |name, value| ["SETTING_#{name.to_s.upcase}", value.to_s] }.merge("SETTING_TOKEN" => @token)
  end

  # For subclasses: the name under which the version is recorded, the files of a script, the program's arguments, and what
  # a line of the program itself means (:quiet keeps it out of the log).

  def tool_name
    @tool.title
  end

  def files(_script)
    raise NotImplementedError
  end

  def arguments(_script)
    raise NotImplementedError
  end

  def hear_program(_line); end
end
