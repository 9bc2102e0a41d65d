#include "formats/json/Writer.h"

#include "platform/system/Machine.h"

namespace json {

void Writer::Grow(std::size_t count) {
    constexpr std::size_t smallestPiece = 64;
    constexpr std::size_t largestPiece = 16'384;
    const std::size_t length = Length();
    text.resize(length + count + std::clamp(length, smallestPiece, largestPiece));
    next = text.data() + length;
    end = End();
}

void Writer::Reserve(std::size_t length) {
    if (length > text.capacity()) {
        const std::size_t written = Length();
        text.reserve(length);
        platform::PreferLargePages(text.data(), text.capacity() * sizeof(wchar_t));
        next = text.data() + written;
        end = End();
    }
}

} // namespace json
