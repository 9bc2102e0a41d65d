#pragma once

#include "formats/zip/ZipError.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zip {

/// Reads little-endian numbers and texts from the front of a byte sequence; throws `Problem` if it is too short.
class ByteReader {
public:
    explicit ByteReader(std::string_view source) : bytes(source) {}

    bool IsAtEnd() const { return bytes.empty(); }

    std::uint16_t Take16() {
        const std::string_view taken = TakeText(2);
        return static_cast<std::uint16_t>(Byte(taken, 0) | (Byte(taken, 1) << 8));
    }

    std::uint32_t Take32() {
        const std::uint32_t low = Take16();
        return low | (static_cast<std::uint32_t>(Take16()) << 16);
    }

    std::string_view TakeText(std::size_t count) {
        if (count > bytes.size()) {
            throw Problem{L"is cut off"};
        }
        const std::string_view taken = bytes.substr(0, count);
        bytes.remove_prefix(count);
        return taken;
    }

private:
    static std::uint32_t Byte(std::string_view text, std::size_t index) {
        return static_cast<unsigned char>(text[index]);
    }

    std::string_view bytes;
};

} // namespace zip
