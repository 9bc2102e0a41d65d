# frozen_string_literal: true

require_relative "canvas"

# Shades of colours from blue (none) over green to red (the greatest) for PartPicture.
class StressColours
  STEPS = 64
  SCALE = [[0.0, 40, 70, 200], [0.25, 30, 170, 220], [0.5, 60, 190, 80], [0.75, 245, 205, 50], [1.0, 215, 40, 30]].freeze

  def initialize(greatest, shades)
    @greatest = greatest
    @palettes = Canvas.gradient(SCALE, STEPS).map { |colour| palette(Canvas.channels(colour), shades) }
  end

  # The palette for a value from 0 to the greatest.
  def palette_of(value)
    @palettes[(value / @greatest * (STEPS - 1)).round.clamp(0, STEPS - 1)]
  end

  private

  def palette(colour, shades)
    dark = colour.map { |channel| channel * 0.35 }
    light = colour.map { |channel| channel + ((255 - channel) * 0.45) }
    Canvas.gradient([[0.0, *dark], [0.75, *colour], [1.0, *light]], shades)
  end
end
