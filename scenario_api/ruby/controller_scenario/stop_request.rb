# frozen_string_literal: true

module ControllerScenario
  # Whether the job has been asked to stop: the file "killprocess" in its work directory, or SIGTERM (not on Windows).
  class StopRequest
    FILE_NAME = "killprocess"

    # Yields a StopRequest that hears SIGTERM while the block runs; returns the block's value.
    def self.listen(work_dir)
      stop_request = new(work_dir)
      previous = Signal.trap("TERM") { stop_request.raise_flag }
      yield stop_request
    ensure
      Signal.trap("TERM", previous || "DEFAULT")
    end

    def initialize(work_dir)
      @path = File.join(work_dir, FILE_NAME)
      @raised = false
    end

    def raise_flag
      @raised = true
    end

    # Says so when the file is there already. In a trial by hand it stays from an earlier one.
    def tell_when_early
      return unless File.exist?(@path)

      warn "controller_scenario: #{@path} was there at the start and asks the scenario to stop; remove it to run " \
           "the scenario."
    end

    # One look at the file system (microseconds); once true it stays true.
    # Never sets the flag to false: the signal may arrive at any moment in here.
    def raised?
      @raised = true if File.exist?(@path)
      @raised
    end
  end
end
