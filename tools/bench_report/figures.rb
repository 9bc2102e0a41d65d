# frozen_string_literal: true

require "json"

module BenchReport
  # What the benchmarks measured, by name.
  class Figures
    MISSING = "not measured:"

    # `lines`: "NAME SECONDS" or "NAME not measured: REASON"; a share of a processor and gigabytes count as seconds. `engine`: the
    # results of Google Benchmark, in milliseconds.
    def initialize(lines, engine)
      @values = engine.to_h { |row| [row["name"].gsub(%r{/real_time|/iterations:\d+}, ""), milliseconds(row)] }
      lines.each do |line|
        name, value = line.chomp.split(" ", 2)
        @values[name] = value.start_with?(MISSING) ? value : Float(value) * 1000
      end
    end

    # Milliseconds, jobs or requests per second, megabytes or percent, as the unit says; a text if it was not measured. Raises KeyError for a
    # benchmark that did not run.
    def fetch(name, unit)
      value = @values.fetch(name.delete_suffix(":rate"))
      return value if value.is_a?(String)

      case unit
      when "jobs/s", "requests/s" then 1000 / value
      when "%" then value / 10
      else value
      end
    end

    private

    def milliseconds(row)
      raise KeyError, "#{row["name"]}: #{row["error_message"]}" if row["error_occurred"]

      row["real_time"]
    end
  end
end
