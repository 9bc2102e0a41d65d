# frozen_string_literal: true

require_relative "results"

module BenchReport
  # One bar for each goal that was measured: the share of the goal, on a logarithmic scale. Bars beyond 1 are missed.
  module Chart
    SMALLEST = 0.01
    REACHED = 0x3a7d44
    MISSED = 0xc0392b

    def self.script(results, path)
      rows = results.select(&:share).reverse
      <<~GNUPLOT
        set terminal svg noenhanced size 1500,#{120 + (rows.size * 26)} font "sans,11"
        set output #{quoted(path)}
        set title "Share of the goal; beyond 1 it is missed"
        set logscale x
        set xrange [#{SMALLEST}:#{[10, rows.map(&:share).max.to_f * 1.5].max}]
        set yrange [-1:#{rows.size}]
        set ytics (#{rows.each_with_index.map { |result, place| "#{quoted(label(result))} #{place}" }.join(", ")})
        set grid x
        set arrow from 1,-1 to 1,#{rows.size} nohead lw 2
        unset key
        set style fill solid
        plot "-" using 1:2:3:4:5:6:7 with boxxyerror lc rgb variable
        #{rows.each_with_index.map { |result, place| bar(result.share, place, result.reached) }.join("\n")}
        e
      GNUPLOT
    end

    # Returns false, with a message, if there is no gnuplot. Raises if it fails.
    def self.write(results, path)
      IO.popen(["gnuplot"], "w") { |gnuplot| gnuplot.write(script(results, path)) }
      raise "gnuplot cannot draw #{path}" unless $?.success? && File.size?(path)

      true
    rescue Errno::ENOENT
      puts "There is no chart: gnuplot is not installed (Debian: gnuplot-nox)."
      false
    end

    def self.label(result)
      [result.row.what, result.row.beside].compact.join(" / ")
    end

    def self.bar(share, place, reached)
      [[share, SMALLEST].max, place, SMALLEST, [share, SMALLEST].max, place - 0.35, place + 0.35, reached ? REACHED : MISSED].join(" ")
    end

    def self.quoted(text)
      "'#{text.gsub("'", "''")}'"
    end
    private_class_method :label, :bar, :quoted
  end
end
