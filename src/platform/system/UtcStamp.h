#pragma once

#include <cstdint>
#include <string>

/// A UTC time for file names: "20240305T070809Z".
std::wstring UtcStamp(std::int64_t time);

/// A UTC time for people: "2024-03-05 07:08:09 UTC".
std::wstring UtcText(std::int64_t time);
