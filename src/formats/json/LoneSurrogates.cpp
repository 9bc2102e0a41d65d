#include "formats/json/LoneSurrogates.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>

#include "text/Blocks.h"
#include "text/CodeUnits.h"
#include "text/Hexadecimal.h"
#include "text/Utf8.h"

namespace json {
namespace {

constexpr std::size_t escapeLength = 6; // \uD800
constexpr char padding = '\xFF';

/// Returns the unit of the escape \uXXXX at `position`; nothing if there is no such escape.
std::optional<std::uint32_t> EscapedUnit(std::string_view json, std::size_t position) {
    if (position + escapeLength > json.size() || json[position] != '\\' || json[position + 1] != 'u') {
        return std::nullopt;
    }
    std::uint32_t unit = 0;
    for (const char digit : json.substr(position + 2, 4)) {
        const int value = text::HexadecimalValue(static_cast<unsigned char>(digit));
        if (value < 0) {
            return std::nullopt;
        }
        unit = unit << 4 | static_cast<std::uint32_t>(value);
    }
    return unit;
}

/// True if the text may contain the escape of a surrogate; does not check whether its backslash is itself escaped.
bool MayHoldSurrogateEscapes(std::string_view json) {
    const auto isCandidate = [json](std::size_t i) {
        return static_cast<unsigned>(json[i] == '\\') & static_cast<unsigned>(json[i + 1] == 'u') &
               static_cast<unsigned>((json[i + 2] | 0x20) == 'd');
    };
    std::size_t position = 0;
    for (; position + text::blockLength + 2 <= json.size(); position += text::blockLength) {
        unsigned found = 0;
        for (std::size_t i = 0; i < text::blockLength; ++i) {
            found |= isCandidate(position + i);
        }
        if (found != 0) {
            return true;
        }
    }
    for (; position + 2 < json.size(); ++position) {
        if (isCandidate(position) != 0) {
            return true;
        }
    }
    return false;
}

/// Marks the escape at `position` if needed and returns the position to continue at.
std::size_t MarkEscape(std::string& json, std::size_t position) {
    const auto unit = EscapedUnit(json, position);
    if (!unit || !text::IsSurrogate(*unit)) {
        return position + 2;
    }
    const auto next = EscapedUnit(json, position + escapeLength);
    if (text::IsHighSurrogate(*unit) && next && text::IsLowSurrogate(*next)) {
        return position + 2 * escapeLength;
    }
    char* const end = text::PutUtf8(*unit, json.data() + position);
    std::fill(end, json.data() + position + escapeLength, padding);
    return position + escapeLength;
}

} // namespace

void MarkLoneSurrogates(std::string& json) {
    if (!MayHoldSurrogateEscapes(json)) {
        return;
    }
    std::size_t position = json.find('\\');
    while (position != std::string::npos) {
        position = json.find('\\', MarkEscape(json, position));
    }
}

} // namespace json
