#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// A fuzz target; this program contains all of them.
using FuzzTarget = int (*)(const std::uint8_t* data, std::size_t size);

/// Returns null if there is no such target.
FuzzTarget FindFuzzTarget(std::string_view name);
