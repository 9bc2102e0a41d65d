#pragma once

#include <cstdint>

namespace json {

/// The number events that a parser never sends when it passes numbers as text.
struct NumbersAsText {
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(std::int64_t) { return false; }
    bool Uint64(std::uint64_t) { return false; }
    bool Double(double) { return false; }
};

} // namespace json
