#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <string>

/// Counts what a stress test did, from any thread, and prints it.
class Tally {
public:
    /// `subject` is what the test was about.
    explicit Tally(std::string ofSubject) : subject(std::move(ofSubject)) {}
    /// Prints the counts.
    ~Tally();
    Tally(const Tally&) = delete;
    Tally& operator=(const Tally&) = delete;

    void Add(const std::string& operation, std::uint64_t times = 1);

private:
    const std::string subject;
    std::mutex mutex;
    std::map<std::string, std::uint64_t> counts;
};
