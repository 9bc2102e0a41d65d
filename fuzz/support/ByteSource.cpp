#include "fuzz/support/ByteSource.h"

#include <algorithm>

#include "text/Text.h"

namespace fuzz {

std::string_view BytesOf(const std::uint8_t* data, std::size_t size) {
    return size == 0 ? std::string_view() : std::string_view(reinterpret_cast<const char*>(data), size);
}

std::vector<std::wstring> LinesOf(std::string_view bytes) {
    std::vector<std::wstring> lines;
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        lines.push_back(text::FromUtf8(bytes.substr(0, end)));
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
    return lines;
}

std::uint8_t ByteSource::Byte() {
    const std::string_view byte = Bytes(1);
    return byte.empty() ? std::uint8_t{0} : static_cast<std::uint8_t>(byte[0]);
}

std::int32_t ByteSource::Number() {
    std::uint32_t number = 0;
    for (int index = 0; index < 4; ++index) {
        number = number << 8 | Byte();
    }
    return static_cast<std::int32_t>(number);
}

std::string_view ByteSource::Bytes(std::size_t length) {
    const std::string_view taken = bytes.substr(0, length);
    bytes.remove_prefix(taken.size());
    return taken;
}

std::wstring ByteSource::Text() {
    const std::size_t width = Count(2); // bytes of an element: 1, 2, 4
    const std::size_t length = Count(40);
    std::wstring text;
    while (text.size() < length && !IsAtEnd()) {
        const std::uint32_t wide = width == 2 ? static_cast<std::uint32_t>(Number()) : Byte();
        text += static_cast<wchar_t>(width == 1 ? wide << 8 | Byte() : wide);
    }
    return text;
}

std::vector<std::wstring> ByteSource::Texts() {
    std::vector<std::wstring> texts(Count(5));
    std::generate(texts.begin(), texts.end(), [this] { return Text(); });
    return texts;
}

RecordMaker ByteSource::Records() {
    return {[this] { return Text(); }, [this] { return Number(); }};
}

} // namespace fuzz
