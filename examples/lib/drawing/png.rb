# frozen_string_literal: true

require "zlib"

# Writes PNG pictures: 8 bits per channel, red, green and blue.
module Png
  SIGNATURE = "\x89PNG\r\n\x1A\n".b
  RGB = 2

  # The bytes of a PNG file; `rows` are binary texts of 3 * width bytes, from the top.
  def self.encode(width, rows)
    header = [width, rows.size, 8, RGB, 0, 0, 0].pack("N2C5")
    unfiltered = rows.map { |row| "\0".b << row }.join
    SIGNATURE + chunk("IHDR", header) + chunk("IDAT", Zlib.deflate(unfiltered)) + chunk("IEND", "")
  end

  def self.chunk(name, data)
    [data.bytesize].pack("N") + name + data + [Zlib.crc32(name + data)].pack("N")
  end
  private_class_method :chunk
end
