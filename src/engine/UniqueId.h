#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>

/// Draws random numbers until one yields a new id, adds the id to `known` and returns it. An id is lower-case
/// hexadecimal without leading zeros. `isTaken` returns true for further ids that must not be used.
std::wstring DrawUniqueId(const std::function<std::uint32_t()>& draw,
                          const std::function<bool(const std::wstring&)>& isTaken, std::set<std::wstring>& known);
