#pragma once

#include "controller_web/api/queue/QueueTracker.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <string>

namespace web {

/// Figures about this interface. Threads: any.
class Metrics {
public:
    /// Counts an answer.
    void Count(unsigned status);
    /// All figures in the text format 0.0.4 of Prometheus.
    std::string Text(const QueueTracker& tracker) const;

private:
    mutable std::mutex mutex;
    std::map<unsigned, std::uint64_t> answers;
};

} // namespace web
