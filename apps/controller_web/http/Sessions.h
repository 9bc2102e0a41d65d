#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace web {

/// The sessions of browsers that have opened a one-time link. They end with the server, and when they were not used for
/// 12 hours. Threads: one at a time.
class Sessions {
public:
    /// More browsers at once end the session that was unused for the longest time.
    static constexpr std::size_t most = 32;

    /// `now` returns the time in seconds.
    explicit Sessions(std::function<std::int64_t()> now) : clock(std::move(now)) {}

    /// Returns the secret that identifies the new session.
    std::string Open();

    /// True if the secret is that of a session; the session has then been used.
    bool Use(std::string_view secret);

private:
    struct Session {
        std::string secret;
        std::int64_t used = 0;
    };

    void RemoveUnused();

    std::function<std::int64_t()> clock;
    std::vector<Session> sessions;
};

} // namespace web
