#include "formats/json/NearestMember.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>

namespace json {

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

} // namespace

std::string_view NearestMember(const TypeDescriptor& record, std::string_view name) {
    std::string_view nearest;
    // The limit is a third of the letters, rounded so that two of five may differ (two swapped letters); at least one.
    std::size_t shortest = std::max<std::size_t>((name.size() + 1) / 3, 1) + 1;
    for (std::size_t i = 0; i < record.memberCount && name.size() <= longestName; ++i) {
        const std::string_view member = record.members[i].name;
        if (const std::size_t distance = Distance(name, member); distance < shortest) {
            shortest = distance;
            nearest = member;
        }
    }
    return nearest;
}

} // namespace json
