# frozen_string_literal: true

require "controller_scenario"
require "json"

# Takes the steps of a row of the table; scenario.py is the same in Python.
class Steps
  def initialize(job)
    @job = job
  end

  def take(steps)
    steps.each { |name, *arguments| public_send("take_#{name}", *arguments) }
  end

  # Reports.

  def take_message(text, code = 0)
    @job.message(text, code: code)
  end

  def take_message_bytes(base64)
    @job.message(base64.unpack1("m"))
  end

  def take_repeat_text(text, count)
    @job.message(text * count)
  end

  def take_progress(percent, message = "")
    @job.progress(percent, message)
  end

  def take_report_tool_version(name, version)
    @job.report_tool_version(name, version)
  end

  def take_report_tools(count)
    count.times { |number| @job.report_tool_version("tool#{number}", "1") }
  end

  def take_report_used_file(path)
    @job.report_used_file(path)
  end

  # What the job says, as a message of JSON.

  def take_show(name)
    take_message(JSON.generate(@job.public_send(name == "cancelled" ? :cancelled? : name)))
  end

  def take_show_parameters(description = nil)
    take_message(JSON.generate(@job.parameters(description)))
  end

  # Outputs.

  def take_write_output(name, content)
    @job.write_output(name, content)
  end

  def take_write_output_bytes(name, base64)
    @job.write_output(name, base64.unpack1("m"))
  end

  def take_output_path(name)
    @job.output_path(name)
  end

  def take_write_own(name)
    File.write(@job.output_path(name), "")
    @job.add_output(@job.output_path(name))
  end

  def take_add_output(path)
    @job.add_output(path)
  end

  # Lists one file many times, each time with a path of its own of more than 200 characters.
  def take_add_spellings(count)
    @job.write_output("a", "")
    count.times do |number|
      digits = format("%015b", number).chars.map { |digit| digit == "0" ? "//" : "/." }
      path = "#{@job.output_directory}#{'/.' * 100}#{digits.join}/a"
      @job.add_output(path)
    end
  end

  # Ends.

  def take_fail(text, code = 1)
    @job.fail!(text, code: code)
  end

  def take_fail_with_first_input
    path = @job.inputs.first
    @job.fail!("#{File.basename(path)} holds #{File.read(path)}")
  end

  def take_raise(text)
    raise text
  end

  def take_raise_named
    [].fetch(3)
  end

  def take_read_missing(path)
    File.read(path)
  end

  def take_load_missing
    require "no_such_library"
  end

  def take_exit(code)
    exit(code)
  end

  def take_exit_with_text(text)
    abort(text)
  end

  def take_interrupt
    raise Interrupt
  end

  def take_print(text)
    $stdout.print(text)
  end

  def take_die(code)
    exit!(code)
  end

  # Requests to stop.

  def take_create(path)
    File.write(path, "")
  end

  def take_remove(path)
    File.unlink(path)
  end

  def take_stop_if_cancelled
    @job.stop_if_cancelled
  end

  def take_wait_for_stop
    Thread.pass until @job.cancelled?
  end

  # Takes one step, another if it raises an ordinary exception, and a last one in any case.
  def take_guarded(step, on_error, at_end)
    take([step])
  rescue StandardError
    take([on_error])
  ensure
    take([at_end])
  end

  def take_repeat(count, step)
    count.times { take([step]) }
  end
end

ControllerScenario.run do |job|
  Steps.new(job).take(JSON.parse(File.read(ENV.fetch("CONFORMANCE_STEPS"), encoding: "UTF-8")))
end
