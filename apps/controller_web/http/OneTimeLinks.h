#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>

#include "platform/system/Error.h"

namespace web {

/// The secrets of one-time links: files in a directory that only the user can read, so that each program of the user
/// can make a link for a running server, and nobody else. A link is for one use and expires. Threads: any; processes:
/// any.
class OneTimeLinks {
public:
    static constexpr std::int64_t lifeSeconds = 600;

    /// `place` is a directory, library text; `now` returns the time in seconds since 1970.
    OneTimeLinks(std::wstring place, std::function<std::int64_t()> now);

    /// Makes a link; `secret` is what the server expects. Removes expired links. The directory is created.
    [[nodiscard]] platform::Error Make(std::string& secret) const;

    /// True if the secret is that of a link, which is then used up. Called in the process of the server only, through
    /// one object: a system may report that a file was removed more than once.
    [[nodiscard]] bool Redeem(std::string_view secret) const;

private:
    std::wstring FileOf(std::string_view secret) const;
    bool IsExpired(const std::wstring& file) const;
    bool IsOutdated(const std::wstring& name, const std::wstring& file) const;
    void RemoveExpired() const;

    std::wstring directory;
    std::function<std::int64_t()> clock;
    mutable std::mutex redeeming;
};

/// The link that signs a browser in at the page with this address, which ends in a slash.
std::string LinkOf(const std::string& pageAddress, const std::string& secret);

} // namespace web
