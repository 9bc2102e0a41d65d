# frozen_string_literal: true

require_relative "scripted_tool"

# Runs the Python scripts of lib/cad/freecad in FreeCAD without its windows. freecadcmd runs a script that raises an
# exception a second time and ends with 0: our scripts catch everything.
class FreeCad < ScriptedTool
  SCRIPTS = File.join(__dir__, "freecad")

  # Raises Tool::Missing.
  def initialize(job, time_limit)
    super(job, :freecad, time_limit)
  end

  private

  def files(script)
    [File.join(SCRIPTS, script)]
  end

  def arguments(script)
    [script]
  end

  # Its settings stay out of the user's.
  def environment(settings)
    super.merge("FREECAD_USER_HOME" => @job.work_dir)
  end
end
