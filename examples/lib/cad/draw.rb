# frozen_string_literal: true

require_relative "scripted_tool"

# Runs the Tcl scripts of lib/cad/draw in Open CASCADE's DRAWEXE, whose exit code is 0 whatever happens.
class Draw < ScriptedTool
  SCRIPTS = File.join(__dir__, "draw")

  FREE_EDGES = /Number of Free Edges +: (\d+)/
  EXCEPTION = /An exception was caught 0x\h+ : /
  PARSE_ERROR = /ERR StepFile : (?:Undefined Parsing: )?(.*?) *\*+$/

  # Raises Tool::Missing.
  def initialize(job, time_limit)
    super(job, :draw, time_limit)
  end

  # See ScriptedTool.
  def run(script, settings, span = 0..100)
    @parse_error = nil
    super
  rescue Tool::Failed => e
    raise Tool::Failed, [e.message.sub(EXCEPTION, ""), @parse_error].compact.join(" ")
  end

  private

  def tool_name
    "Open CASCADE"
  end

  def files(script)
    ["common.tcl", script].map { |name| File.join(SCRIPTS, name) }
  end

  def arguments(script)
    ["-b", "-f", script]
  end

  def hear_program(line)
    case line
    when /^Progress: (\d+)%/
      move(Regexp.last_match(1).to_i)
      :quiet
    when PARSE_ERROR then @parse_error = Regexp.last_match(1)
    when FREE_EDGES then @values["free_edges"] = Regexp.last_match(1)
    end
  end

  def environment(settings)
    return super if ToolPlaces::WINDOWS

    super.merge("LD_LIBRARY_PATH" => [plugins, ENV.fetch("LD_LIBRARY_PATH", nil)].compact.join(":"))
  end

  # Debian's package lacks the names by which DRAWEXE loads its commands: libTKTopTest.so for libTKTopTest.so.7.
  def plugins
    File.join(@job.work_dir, "draw_plugins").tap do |directory|
      FileUtils.mkdir_p(directory)
      Dir.glob("/usr/lib/*/libTK{*DRAW*,*Test,DCAF}.so.*").sort.each do |library|
        link = File.join(directory, File.basename(library)[/.*?\.so/])
        File.symlink(library, link) unless File.symlink?(link)
      end
    end
  end
end
