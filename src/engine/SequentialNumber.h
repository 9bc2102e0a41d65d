#pragma once

#include <cstdint>
#include <limits>

/// The number of the job after that with `number`. A job list edited by hand may hold the largest one, which is
/// followed by the smallest.
constexpr std::int32_t NumberAfter(std::int32_t number) {
    using Limits = std::numeric_limits<std::int32_t>;
    return number == Limits::max() ? Limits::min() : number + 1;
}
