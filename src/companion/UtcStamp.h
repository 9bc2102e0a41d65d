#pragma once

#include <cstdint>
#include <string>

/// A UTC time for file names: "20240305T070809Z".
std::wstring UtcStamp(std::int64_t time);
