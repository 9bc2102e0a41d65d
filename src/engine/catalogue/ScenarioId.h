#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// The 64-bit FNV-1a hash of the UTF-16 code units of a text, each taken as two bytes, low byte first.
std::uint64_t HashOf(std::wstring_view text);

/// Returns the id of the scenario with this label prefix and full path: their hash in decimal, the same on both systems
/// and in every process.
std::wstring ScenarioId(const std::wstring& labelledPath);
