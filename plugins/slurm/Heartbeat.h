#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace slurm {

using Time = std::chrono::steady_clock::time_point;

/// Notices that a text which another machine writes has stopped changing. Compares content: file times of two machines
/// differ, and are cached.
class Heartbeat {
public:
    explicit Heartbeat(std::chrono::milliseconds longest) : longestSilence(longest) {}

    /// Nothing is lost before this call, or before the first content.
    void Begin(Time now) { changed = now; }

    void OnSeen(const std::string& content, Time now) {
        if (!content.empty() && content != last) {
            last = content;
            changed = now;
        }
    }

    bool HasBegun() const { return changed.has_value(); }
    bool IsLost(Time now) const { return changed && now - *changed > longestSilence; }

    /// How often the writer changes the text, so that some writes may fail or be delayed.
    std::chrono::milliseconds Interval() const { return longestSilence / 6; }

private:
    std::chrono::milliseconds longestSilence;
    std::string last;
    std::optional<Time> changed;
};

} // namespace slurm
