#pragma once

#include <cstddef>

namespace json {

/// Texts are mostly ASCII: they go through in blocks of this many elements, in loops that compilers vectorise.
inline constexpr std::size_t blockLength = 16;

} // namespace json
