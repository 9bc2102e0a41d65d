#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <string>

/// Counts the operations of a stress test, from any thread, and prints the counts.
class OperationCounts {
public:
    /// `subject` is the subject of the test.
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
