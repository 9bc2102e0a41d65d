#include "system/stress/OperationCounts.h"

#include <cstdio>

OperationCounts::~OperationCounts() {
    std::uint64_t total = 0;
    std::string details;
    for (const auto& [operation, times] : counts) {
        total += times;
        details += (details.empty() ? "" : ", ") + operation + " " + std::to_string(times);
    }
    std::printf("%s: %s operations: %s\n", subject.c_str(), std::to_string(total).c_str(), details.c_str());
    std::fflush(stdout);
}

void OperationCounts::Add(const std::string& operation, std::uint64_t times) {
    const std::lock_guard lock(mutex);
    counts[operation] += times;
}
