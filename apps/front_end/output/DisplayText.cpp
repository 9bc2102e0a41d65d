#include "front_end/output/DisplayText.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "text/CodeUnits.h"
#include "text/EscapeControls.h"

namespace front_end {
namespace {

struct CharacterRange {
    std::uint32_t first;
    std::uint32_t last;
};

/// Characters that a terminal combines with the one before, or does not display.
constexpr std::array zeroWidthRanges = {
    CharacterRange{0x0300, 0x036F},   CharacterRange{0x0483, 0x0489}, CharacterRange{0x0591, 0x05BD},
    CharacterRange{0x0610, 0x061A},   CharacterRange{0x064B, 0x065F}, CharacterRange{0x0900, 0x0902},
    CharacterRange{0x093C, 0x093C},   CharacterRange{0x0941, 0x0948}, CharacterRange{0x0E31, 0x0E31},
    CharacterRange{0x0E34, 0x0E3A},   CharacterRange{0x0E47, 0x0E4E}, CharacterRange{0x1AB0, 0x1AFF},
    CharacterRange{0x1DC0, 0x1DFF},   CharacterRange{0x200B, 0x200F}, CharacterRange{0x202A, 0x202E},
    CharacterRange{0x2060, 0x2064},   CharacterRange{0x20D0, 0x20FF}, CharacterRange{0xFE00, 0xFE0F},
    CharacterRange{0xFE20, 0xFE2F},   CharacterRange{0xFEFF, 0xFEFF}, CharacterRange{0x1F3FB, 0x1F3FF},
    CharacterRange{0xE0100, 0xE01EF},
};

/// East Asian wide and full-width characters, and emoji.
constexpr std::array wideRanges = {
    CharacterRange{0x1100, 0x115F},   CharacterRange{0x231A, 0x231B},   CharacterRange{0x2329, 0x232A},
    CharacterRange{0x23E9, 0x23EC},   CharacterRange{0x25FD, 0x25FE},   CharacterRange{0x2614, 0x2615},
    CharacterRange{0x2648, 0x2653},   CharacterRange{0x26AA, 0x26AB},   CharacterRange{0x26BD, 0x26BE},
    CharacterRange{0x2705, 0x2705},   CharacterRange{0x270A, 0x270B},   CharacterRange{0x274C, 0x274C},
    CharacterRange{0x2753, 0x2757},   CharacterRange{0x2795, 0x2797},   CharacterRange{0x2B1B, 0x2B1C},
    CharacterRange{0x2E80, 0x303E},   CharacterRange{0x3041, 0xA4CF},   CharacterRange{0xA960, 0xA97C},
    CharacterRange{0xAC00, 0xD7A3},   CharacterRange{0xF900, 0xFAFF},   CharacterRange{0xFE30, 0xFE6F},
    CharacterRange{0xFF01, 0xFF60},   CharacterRange{0xFFE0, 0xFFE6},   CharacterRange{0x17000, 0x18CD5},
    CharacterRange{0x1B000, 0x1B2FB}, CharacterRange{0x1F300, 0x1F64F}, CharacterRange{0x1F680, 0x1F6FC},
    CharacterRange{0x1F900, 0x1F9FF}, CharacterRange{0x1FA70, 0x1FAFF}, CharacterRange{0x20000, 0x3FFFD},
};

template <std::size_t count>
bool IsIn(const std::array<CharacterRange, count>& ranges, std::uint32_t character) {
    const auto range =
        std::lower_bound(ranges.begin(), ranges.end(), character,
                         [](const CharacterRange& candidate, std::uint32_t wanted) { return candidate.last < wanted; });
    return range != ranges.end() && range->first <= character;
}

std::size_t WidthOf(std::uint32_t character) {
    if (character < 0x300) {
        return 1;
    }
    if (IsIn(zeroWidthRanges, character)) {
        return 0;
    }
    return IsIn(wideRanges, character) ? 2 : 1;
}

/// The number of elements at the beginning that fit into `width` columns.
std::size_t LengthWithin(std::wstring_view text, std::size_t width) {
    std::size_t length = 0;
    std::size_t used = 0;
    while (length < text.size()) {
        const text::CodePoint character = text::TakeUtf16(text.substr(length));
        used += WidthOf(character.value);
        if (used > width) {
            break;
        }
        length += character.length;
    }
    return length;
}

} // namespace

std::wstring OneLine(std::wstring_view text) {
    std::wstring line;
    line.reserve(text.size());
    while (!text.empty()) {
        const text::CodePoint character = text::TakeUtf16(text);
        if (text::IsControlOrBidi(character.value)) {
            line += L' ';
        } else if (text::IsSurrogate(character.value)) {
            line += static_cast<wchar_t>(text::replacementCharacter);
        } else {
            line += text.substr(0, character.length);
        }
        text.remove_prefix(character.length);
    }
    return line;
}

std::size_t DisplayWidth(std::wstring_view text) {
    std::size_t width = 0;
    while (!text.empty()) {
        const text::CodePoint character = text::TakeUtf16(text);
        width += WidthOf(character.value);
        text.remove_prefix(character.length);
    }
    return width;
}

std::wstring Cut(std::wstring_view text, std::size_t width) {
    if (DisplayWidth(text) <= width) {
        return std::wstring(text);
    }
    if (width == 0) {
        return {};
    }
    std::wstring cut(text.substr(0, LengthWithin(text, width - 1)));
    cut += L'\x2026';
    return cut;
}

std::wstring CutBeginning(std::wstring_view text, std::size_t width) {
    std::size_t used = DisplayWidth(text);
    if (used <= width) {
        return std::wstring(text);
    }
    if (width == 0) {
        return {};
    }
    // The rest must not start with a combining mark of the removed text.
    while (!text.empty() && (used >= width || WidthOf(text::TakeUtf16(text).value) == 0)) {
        const text::CodePoint first = text::TakeUtf16(text);
        used -= WidthOf(first.value);
        text.remove_prefix(first.length);
    }
    return L'\x2026' + std::wstring(text);
}

} // namespace front_end
