# frozen_string_literal: true

require_relative "tool_places"

# A CAD program that a scenario starts and watches, without a shell:
#
#   Tool.new(job, :gmsh, 300).run("part.step", "-3") { |line| ... }
#
# Each line that the program prints goes to the block. It also goes to the scenario's log, unless the block returns :quiet.
class Tool
  # The program cannot be found. The message says what to install.
  class Missing < StandardError; end

  # The program crashed, ended with another exit code than 0, or took too long.
  class Failed < StandardError; end

  # How often a running program is interrupted by a look for requests to stop.
  PAUSE_SECONDS = 0.05

  # Longer lines come in pieces.
  LONGEST_LINE = 8192

  # Output beyond this many bytes is heard, but not logged.
  LOG_LIMIT = 1024 * 1024

  attr_reader :title

  # Raises Missing.
  def initialize(job, key, time_limit)
    kind = ToolPlaces::KINDS.fetch(key)
    @job = job
    @title = kind.title
    @time_limit = time_limit
    @path = ToolPlaces.find(kind) || raise(Missing, ToolPlaces.advice(kind))
  end

  # Runs the program in the job's work directory until it ends; `environment` is added to that of the scenario.
  # When the job is asked to stop, or after the time limit, the program is killed. Raises Failed.
  def run(*arguments, environment: {}, &listener)
    @last_line = ""
    @logged = 0
    @deadline = now + @time_limit
    status = finish(*start(environment, arguments), listener)
    raise Failed, "#{title} #{ending(status)}" unless status.success?
  end

  private

  def start(environment, arguments)
    reader, writer = IO.pipe
    pid = Process.spawn(environment, [@path, @path], *arguments,
                        chdir: @job.work_dir, in: File::NULL, out: writer, err: %i[child out])
    [pid, reader]
  rescue SystemCallError => e
    reader.close
    raise Failed, "#{title} cannot be started: #{e.message}"
  ensure
    writer.close
  end

  # Two threads wait, for the output and for the end: on Windows nothing waits for a pipe with a time limit.
  def finish(pid, reader, listener)
    ending = Process.detach(pid)
    listening = Thread.new { listen(reader, listener) }
    listening.report_on_exception = false
    [listening, ending].each { |thread| wait_for(thread) }
    ending.value
  ensure
    kill(pid, ending)
    listening&.kill
    reader.close
  end

  # What the listener raises comes out of join here.
  def wait_for(thread)
    until thread.join(PAUSE_SECONDS)
      @job.stop_if_cancelled
      raise Failed, format("%s was stopped after %g seconds", title, @time_limit) if now > @deadline
    end
  end

  def now
    Process.clock_gettime(Process::CLOCK_MONOTONIC)
  end

  def listen(reader, listener)
    reader.each_line(LONGEST_LINE) do |line|
      line = line.scrub("?").chomp
      @last_line = line unless line.strip.empty?
      log(line) unless listener&.call(line) == :quiet
    end
  end

  def log(line)
    return if @logged > LOG_LIMIT

    @logged += line.bytesize + 1
    puts @logged > LOG_LIMIT ? "More output of #{title} is left out." : line
  end

  def ending(status)
    what = status.signaled? ? "crashed (signal #{status.termsig})" : "ended with exit code #{status.exitstatus}"
    @last_line.empty? ? what : "#{what}: #{@last_line.strip}"
  end

  def kill(pid, ending)
    return unless ending&.alive?

    Process.kill(:KILL, pid)
    ending.join
  rescue SystemCallError
    nil # it has ended in between
  end
end
