# frozen_string_literal: true

require_relative "results"

module BenchReport
  HEADINGS = ["", "measured", "beside", "measured", "ratio", "goal", "reached"].freeze
  WIDTHS = "%-58s %18s   %-42s %18s %7s   %-18s %s"

  def self.cells(result)
    figure = ->(number) { number ? format("%.3f %s", number, result.row.unit) : "" }
    [result.row.what, result.value ? figure.call(result.value) : "not measured", result.row.beside.to_s,
     figure.call(result.beside), result.ratio ? format("%.2f", result.ratio) : "", result.goal_text, result.reached_text]
  end

  def self.text_table(results)
    [HEADINGS, *results.map { |result| cells(result) }].map { |line| format(WIDTHS, *line).rstrip }.join("\n")
  end

  # The goals that are missed, and what was not measured.
  def self.summary(results)
    missed = missed(results)
    goals = results.count { |result| !result.reached.nil? }
    lines = ["#{missed.size} of #{goals} goals missed#{missed.empty? ? "." : ":"}"]
    lines += missed.map { |result| "  #{result.missed_text}" }
    lines + results.select(&:reason).map { |result| "  #{result.row.what}, #{result.row.beside || "alone"}: #{result.reason}" }
  end

  def self.markdown(results, about)
    line = ->(texts) { "| #{texts.join(" | ")} |" }
    ["Measured on #{about["date"]} at commit `#{about["commit"]}` on #{about["machine"]}.", "",
     line.call(["what", *HEADINGS.drop(1)]), "|---|---:|---|---:|---:|---|---|",
     *results.map { |result| line.call(cells(result)) }, "", *summary(results).map { |text| text.sub(/\A  /, "- ") }].join("\n")
  end
end
