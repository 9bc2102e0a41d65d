#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <string>

/// Counts what a stress test did, from any thread, and prints it.
class OperationCounts {
public:
    /// `subject` is what the test was about.
    explicit OperationCounts(std::string ofSubject) : subject(std::move(ofSubject)) {}
    /// Prints the counts.
    ~OperationCounts();
    OperationCounts(const OperationCounts&) = delete;
    OperationCounts& operator=(const OperationCounts&) = delete;

    void Add(const std::string& operation, std::uint64_t times = 1);

private:
    const std::string subject;
    std::mutex mutex;
    std::map<std::string, std::uint64_t> counts;
};
