# frozen_string_literal: true

# Thirty ways to damage a file, as transports, disks and editors do. The same seed gives the same files.
class Damage
  CUTS = 8

  def initialize(bytes, seed)
    @bytes = bytes
    @random = Random.new(seed)
  end

  # Damaged content by the name of its damage.
  def corpus
    { "empty" => "", "one_byte" => @bytes[0], "web_page" => "<!DOCTYPE html><title>404 Not Found</title>\n",
      "utf16" => @bytes.dup.force_encoding("ISO-8859-1").encode("UTF-16LE").b, "zeros" => "\0" * @bytes.size,
      "twice" => @bytes + @bytes, "reversed_lines" => lines.reverse.join }
      .merge(series("cut", CUTS) { @bytes[0, place] })
      .merge(series("zero_block", 3) { overwrite("\0" * 512) })
      .merge(series("random_block", 2) { overwrite(@random.bytes(512)) })
      .merge(series("text_block", 1) { overwrite("lorem ipsum dolor " * 20) })
      .merge(series("lost_line", 3) { lines.tap { |list| list.delete_at(@random.rand(list.size)) }.join })
      .merge(series("lost_lines", 2) { lines.tap { |list| list.slice!(@random.rand(list.size), 20) }.join })
      .merge(series("letter_for_digit", 2) { change_digit("x") })
      .merge(series("other_digit", 2) { change_digit(nil) })
  end

  private

  def series(name, count)
    (1..count).to_h { |number| ["#{name}_#{number}", yield] }
  end

  # Anywhere but in the first and the last hundred bytes.
  def place
    100 + @random.rand(@bytes.size - 200)
  end

  def lines
    @bytes.lines
  end

  def overwrite(block)
    at = place
    @bytes.dup.tap { |copy| copy[at, [block.size, copy.size - at].min] = block[0, copy.size - at] }
  end

  def change_digit(replacement)
    at = @bytes.index(/[1-9]/n, place) || @bytes.index(/[1-9]/n)
    @bytes.dup.tap { |copy| copy[at] = replacement || ((copy[at].to_i % 9) + 1).to_s }
  end
end
