#pragma once

#include <string_view>
#include <vector>

/// Suggestions for misspelled names. Pure functions; threads: any.
namespace text {

/// Returns the name with the fewest letters to insert, remove or replace in `typed`, ignoring the case of ASCII
/// letters. Returns an empty text if none is similar.
std::string_view NearestName(const std::vector<std::string_view>& names, std::string_view typed);

} // namespace text
