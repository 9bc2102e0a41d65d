#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "kit/RecordMaker.h"

namespace fuzz {

/// The input as text.
std::string_view BytesOf(const std::uint8_t* data, std::size_t size);

/// The lines of the input, as arguments of a program.
std::vector<std::wstring> LinesOf(std::string_view bytes);

/// Generates values from the bytes of an input, so that a small change of the input is a small change of the values.
/// After the end of the input all values are empty or zero.
class ByteSource {
public:
    explicit ByteSource(std::string_view input) : bytes(input) {}

    bool IsAtEnd() const { return bytes.empty(); }

    std::uint8_t Byte();
    bool Flag() { return Byte() % 2 == 1; }
    std::int32_t Number();
    /// 0 to `most`; `most` is at most 255.
    std::size_t Count(std::size_t most) { return Byte() % (most + 1); }
    /// The next bytes, at most `length`.
    std::string_view Bytes(std::size_t length);

    /// A text of up to 40 elements: plain text, UTF-16 units, or any elements that a wide text can hold.
    std::wstring Text();
    /// Up to five texts.
    std::vector<std::wstring> Texts();

    /// Generates records of such texts and numbers. The source must outlive it.
    RecordMaker Records();

private:
    std::string_view bytes;
};

} // namespace fuzz
