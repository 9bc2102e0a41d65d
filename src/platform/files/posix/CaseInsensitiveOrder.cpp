#include "platform/files/posix/CaseInsensitiveOrder.h"

#include <algorithm>
#include <cstddef>

namespace platform {
namespace {

struct Range {
    wchar_t first;
    wchar_t last;
    int toUpper;
};

// Ranges of Latin, Greek and Cyrillic letters whose capitals are at a fixed distance.
constexpr Range shiftedRanges[] = {
    {0xE0, 0xF6, -0x20},   {0xF8, 0xFE, -0x20},   {0x3B1, 0x3C1, -0x20},
    {0x3C3, 0x3CB, -0x20}, {0x430, 0x44F, -0x20}, {0x450, 0x45F, -0x50},
};

// In these ranges each capital is followed by its small letter. The capitals are even in some ranges and odd in others.
constexpr Range alternatingEven[] = {{0x100, 0x137, 0}, {0x14A, 0x177, 0}, {0x460, 0x481, 0}, {0x48A, 0x4BF, 0}};
constexpr Range alternatingOdd[] = {{0x139, 0x148, 0}, {0x179, 0x17E, 0}};

template <std::size_t count>
const Range* Find(const Range (&ranges)[count], wchar_t character) {
    const auto* const found = std::find_if(std::begin(ranges), std::end(ranges), [character](const Range& range) {
        return character >= range.first && character <= range.last;
    });
    return found == std::end(ranges) ? nullptr : found;
}

wchar_t ToUpper(wchar_t character) {
    // Fast path: most names are ASCII, and sorting a directory converts each name many times.
    if (character < 0x80) {
        return character >= L'a' && character <= L'z' ? character - 0x20 : character;
    }
    if (const Range* const range = Find(shiftedRanges, character)) {
        return character + range->toUpper;
    }
    const bool odd = character % 2 != 0;
    const bool small = odd ? Find(alternatingEven, character) != nullptr : Find(alternatingOdd, character) != nullptr;
    return small ? character - 1 : character;
}

} // namespace

bool CaseInsensitiveLess(std::wstring_view left, std::wstring_view right) {
    const std::size_t common = std::min(left.size(), right.size());
    // Names of one directory often begin alike.
    const auto differing =
        std::mismatch(left.begin(), left.begin() + static_cast<std::ptrdiff_t>(common), right.begin());
    for (auto i = static_cast<std::size_t>(differing.first - left.begin()); i < common; ++i) {
        const wchar_t leftUpper = ToUpper(left[i]);
        const wchar_t rightUpper = ToUpper(right[i]);
        if (leftUpper != rightUpper) {
            return leftUpper < rightUpper;
        }
    }
    return left.size() != right.size() ? left.size() < right.size() : left < right;
}

} // namespace platform
