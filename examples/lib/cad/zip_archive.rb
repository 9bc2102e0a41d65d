# frozen_string_literal: true

require "zlib"

# The bytes of a small ZIP archive, made in memory. The same files give the same bytes: the time is always 1980.
module ZipArchive
  VERSION = 20
  DEFLATED = 8
  FIRST_DAY = 33 # 1 January 1980

  # `files`: content by name.
  def self.pack(files)
    body, directory = "".b, "".b
    files.each do |name, content|
      packed = deflate(content)
      fields = [VERSION, 0, DEFLATED, 0, FIRST_DAY, Zlib.crc32(content), packed.bytesize, content.bytesize,
                name.bytesize, 0].pack("v5V3v2")
      directory << "PK\x01\x02".b << [VERSION].pack("v") << fields << [0, 0, 0, 0, body.bytesize].pack("v3V2") << name.b
      body << "PK\x03\x04".b << fields << name.b << packed
    end
    finish(body, directory, files.size)
  end

  def self.deflate(content)
    Zlib::Deflate.new(Zlib::DEFAULT_COMPRESSION, -Zlib::MAX_WBITS).deflate(content, Zlib::FINISH)
  end
  private_class_method :deflate

  def self.finish(body, directory, count)
    body + directory + "PK\x05\x06".b + [0, 0, count, count, directory.bytesize, body.bytesize, 0].pack("v4V2v")
  end
  private_class_method :finish
end
