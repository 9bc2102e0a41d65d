#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>

/// Draws random numbers until one gives an id that is new, and adds it to `known`. An id is lower-case hexadecimal
/// without leading zeros; `isTaken` tells what else must not be used.
std::wstring DrawUniqueId(const std::function<std::uint32_t()>& draw,
                          const std::function<bool(const std::wstring&)>& isTaken, std::set<std::wstring>& known);
