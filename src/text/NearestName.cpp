#include "text/NearestName.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>

namespace text {
namespace {

/// Names longer than this have no suggestion.
constexpr std::size_t longestName = 64;

char LowerCase(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

/// Returns the Levenshtein distance of two names, at most `longestName` long: the number of letters to insert, remove
/// or replace. Calculates one row of the table at a time.
std::size_t Distance(std::string_view left, std::string_view right) {
    std::array<std::size_t, longestName + 1> row{};
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < left.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < right.size(); ++j) {
            const std::size_t replaced = diagonal + (LowerCase(left[i]) == LowerCase(right[j]) ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row[right.size()];
}

/// True if the texts differ only in two letters beside each other that have changed places.
bool IsSwap(std::string_view left, std::string_view right) {
    if (left.size() != right.size()) {
        return false;
    }
    const auto [first, other] = std::mismatch(left.begin(), left.end(), right.begin());
    return left.end() - first > 1 && first[0] == other[1] && first[1] == other[0] &&
           std::equal(first + 2, left.end(), other + 2);
}

} // namespace

std::string_view NearestName(const std::vector<std::string_view>& names, std::string_view typed) {
    if (typed.size() > longestName) {
        return {};
    }
    std::string_view nearest;
    // The limit is a third of the letters, rounded so that two of five may differ (two swapped letters); at least one.
    std::size_t shortest = std::max<std::size_t>((typed.size() + 1) / 3, 1) + 1;
    for (const std::string_view name : names) {
        const std::size_t distance = name.size() > longestName ? shortest
                                     : IsSwap(typed, name)     ? 1
                                                               : Distance(typed, name);
        if (distance < shortest) {
            shortest = distance;
            nearest = name;
        }
    }
    return nearest;
}

} // namespace text
