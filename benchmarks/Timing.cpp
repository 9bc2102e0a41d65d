#include "Timing.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <utility>

double SecondsFor(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double Quantile(std::vector<double> values, double share) {
    const auto place = static_cast<std::ptrdiff_t>(share * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), values.begin() + place, values.end());
    return values[static_cast<std::size_t>(place)];
}

double Median(std::vector<double> values) {
    return Quantile(std::move(values), 0.5);
}
