#include "text/Wtf8.h"

#include <algorithm>
#include <cstddef>

#include "text/Blocks.h"
#include "text/CodeUnits.h"
#include "text/Utf8.h"

namespace text {
namespace {

bool IsAscii(char byte) {
    return static_cast<unsigned char>(byte) < 0x80;
}

/// Copies leading blocks of ASCII; returns the number of bytes copied.
std::size_t WidenAscii(std::string_view from, wchar_t* to) {
    std::size_t done = 0;
    while (from.size() - done >= blockLength && IsAsciiBlock(from.data() + done)) {
        for (std::size_t i = 0; i < blockLength; ++i) {
            to[done + i] = static_cast<wchar_t>(from[done + i]);
        }
        done += blockLength;
    }
    while (done < from.size() && IsAscii(from[done])) {
        to[done] = static_cast<wchar_t>(from[done]);
        ++done;
    }
    return done;
}

} // namespace

void AppendWtf8(std::string& bytes, std::wstring_view text) {
    bytes.reserve(bytes.size() + text.size());
    while (!text.empty()) {
        const CodePoint taken = TakeWide(text);
        AppendUtf8(bytes, taken.value <= lastCodePoint ? taken.value : replacementCharacter);
        text.remove_prefix(taken.length);
    }
}

std::optional<std::wstring> FromWtf8(std::string_view bytes) {
    return DecodeUtf8<Surrogates::Allowed>(bytes);
}

void AppendTrustedWtf8(std::string_view bytes, std::wstring& text) {
    const std::size_t before = text.size();
    text.resize(before + bytes.size());
    wchar_t* to = text.data() + before;
    while (!bytes.empty()) {
        const std::size_t ascii = WidenAscii(bytes, to);
        bytes.remove_prefix(ascii);
        to += ascii;
        while (!bytes.empty() && !IsAscii(bytes[0])) {
            const std::size_t length = std::max<std::size_t>(Utf8Length(static_cast<unsigned char>(bytes[0])), 1);
            if (length > 1) {
                to = PutWide(Utf8Value(bytes.substr(0, length)), to);
            }
            bytes.remove_prefix(std::min(length, bytes.size()));
        }
    }
    text.resize(static_cast<std::size_t>(to - text.data()));
}

std::wstring FromTrustedWtf8(std::string_view bytes) {
    std::wstring text;
    AppendTrustedWtf8(bytes, text);
    return text;
}

} // namespace text
