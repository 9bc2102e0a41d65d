# frozen_string_literal: true

# A DrawingSheet as an SVG picture: hidden edges thin and dashed.
module SheetSvg
  # Around the views, relative to the larger side of the sheet.
  MARGIN = 0.06

  def self.encode(sheet)
    width, height = sheet.size
    margin = MARGIN * sheet.size.max
    box = [-margin, -height - margin, width + (2 * margin), height + (2.6 * margin)].map { |value| number(value) }
    hidden, visible = sheet.lines.partition { |line| !line.visible }
    <<~SVG
      <?xml version="1.0" encoding="UTF-8"?>
      <svg xmlns="http://www.w3.org/2000/svg" viewBox="#{box.join(" ")}">
      <rect x="#{box[0]}" y="#{box[1]}" width="#{box[2]}" height="#{box[3]}" fill="#ffffff"/>
      <g fill="none" stroke-linejoin="round" stroke-linecap="round">
      <path id="hidden" stroke="#8090a0" stroke-width="#{number(0.015 * margin)}" stroke-dasharray="#{number(0.12 * margin)}"
        d="#{path(hidden)}"/>
      <path id="visible" stroke="#101418" stroke-width="#{number(0.035 * margin)}" d="#{path(visible)}"/>
      </g>
      <text x="0" y="#{number(1.1 * margin)}" font-family="sans-serif"
        font-size="#{number(0.45 * margin)}">#{label(sheet).encode(xml: :text)}</text>
      </svg>
    SVG
  end

  def self.path(lines)
    lines.map { |line| "M#{line.points.map { |x, y| "#{number(x)} #{number(-y)}" }.join("L")}" }.join
  end
  private_class_method :path

  def self.label(sheet)
    "#{sheet.title}   #{sheet.part_size.map { |length| format("%g", length.round(2)) }.join(" x ")} mm"
  end
  private_class_method :label

  def self.number(value)
    format("%.6g", value)
  end
  private_class_method :number
end
