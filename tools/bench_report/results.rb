# frozen_string_literal: true

require_relative "figures"
require_relative "goals"

module BenchReport
  # One row with its figures.
  class Result
    attr_reader :row, :value, :beside, :reason

    def initialize(row, figures)
      @row = row
      @value = figures.fetch(row.ours, row.unit)
      @beside = row.theirs && figures.fetch(row.theirs, row.unit)
      @reason = [@value, @beside].find { |figure| figure.is_a?(String) }
      @value = nil if @value.is_a?(String)
      @beside = nil if @beside.is_a?(String)
    end

    def ratio
      value / beside if value && beside
    end

    # The number that the goal limits; nil if it was not measured.
    def number
      row.theirs ? ratio : value
    end

    # nil without a goal or a measurement.
    def reached
      row.goal&.reached?(number) if number
    end

    def share
      row.goal.share(number) if row.goal && number
    end

    def goal_text
      return "" unless row.goal

      row.theirs ? "#{row.goal} times" : "#{row.goal} #{row.unit}"
    end

    def reached_text
      return "" unless row.goal

      { true => "yes", false => "no", nil => "not measured" }.fetch(reached)
    end

    # "3.41 times, at most 3 times: 14 % off".
    def missed_text
      found = row.theirs ? format("%.2f times %s", ratio, row.beside) : format("%.3f %s", value, row.unit)
      format("%s: %s; the goal is %s: %.0f %% off", row.what, found, goal_text, (share - 1) * 100)
    end

    def to_h
      { name: row.name, what: row.what, value: value, unit: row.unit, beside: row.beside, beside_value: beside,
        ratio: ratio, goal: row.goal && goal_text, reached: reached, share_of_goal: share, not_measured: reason }
    end
  end

  def self.results(figures)
    ROWS.map { |row| Result.new(row, figures) }
  end

  def self.missed(results)
    results.select { |result| result.reached == false }
  end
end
