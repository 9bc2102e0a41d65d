#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// One of the fuzz targets, all of which stand in one program here.
using FuzzTarget = int (*)(const std::uint8_t* data, std::size_t size);

/// The target of this name; null when there is none.
FuzzTarget FindFuzzTarget(std::string_view name);
