#pragma once

#include "controller_web/http/ReceivedFile.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>

namespace web {

/// Input files that clients have sent, in a directory that only this user can read. Each has a directory of its own
/// below, so that it keeps its name. Threads: any.
class Uploads {
public:
    /// What may be stored. Units: bytes, seconds.
    struct Limits {
        std::size_t files = 1000;
        std::uint64_t bytes = std::uint64_t{20} << 30;
        /// Older files are removed.
        std::int64_t age = std::int64_t{30} * 24 * 3600;
    };

    /// `clock` returns the seconds since 1970-01-01 UTC.
    Uploads(std::wstring uploadDirectory, const Limits& uploadLimits, std::function<std::int64_t()> clock);

    /// Moves a file here under this name and returns its path. Throws `ApiError` if the name is no plain file name, a
    /// limit is reached, or the file cannot be moved.
    std::wstring Store(const std::string& name, ReceivedFile& file);

private:
    struct Stored {
        std::size_t files = 0;
        std::uint64_t bytes = 0;
    };
    /// Removes what is too old.
    Stored CountAndRemove() const;

    const std::wstring directory;
    const Limits limits;
    const std::function<std::int64_t()> now;
    /// Two uploads do not exceed the limits together.
    std::mutex mutex;
};

} // namespace web
