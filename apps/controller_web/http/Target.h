#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace web {

/// The target of a request, decoded.
struct Target {
    /// As in `Request`.
    std::vector<std::string> path;
    std::multimap<std::string, std::string> query;
};

/// Decodes a target such as "/api/v1/jobs/a%2Fb?text=a+b". Returns nothing for a target that does not begin with "/",
/// has an incomplete percent escape, or contains NUL. Threads: any.
[[nodiscard]] std::optional<Target> ReadTarget(std::string_view target);

} // namespace web
