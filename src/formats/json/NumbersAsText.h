#pragma once

#include <cstdint>

namespace json {

/// The events of numbers that a parser never sends which hands numbers over as text.
struct NumbersAsText {
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(std::int64_t) { return false; }
    bool Uint64(std::uint64_t) { return false; }
    bool Double(double) { return false; }
};

} // namespace json
