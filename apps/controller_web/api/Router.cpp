#include "controller_web/api/Router.h"

#include <optional>
#include <utility>

#include "controller_web/api/Answers.h"

namespace web {
namespace {

constexpr std::string_view onePart = "{id}";
constexpr std::string_view severalParts = "{path}";

std::vector<std::string> PartsOf(std::string_view pattern) {
    std::vector<std::string> parts;
    while (!pattern.empty()) {
        pattern.remove_prefix(1);
        const std::size_t end = std::min(pattern.find('/'), pattern.size());
        parts.emplace_back(pattern.substr(0, end));
        pattern.remove_prefix(end);
    }
    return parts;
}

std::optional<Call> Match(const std::vector<std::string>& pattern, const Request& request) {
    Call call{request, {}, {}};
    const bool isOpen = pattern.back() == severalParts;
    if (isOpen ? request.path.size() < pattern.size() : request.path.size() != pattern.size()) {
        return std::nullopt;
    }
    for (std::size_t index = 0; index < pattern.size(); ++index) {
        if (pattern[index] == onePart) {
            call.id = request.path[index];
        } else if (pattern[index] == severalParts) {
            call.path.assign(request.path.begin() + static_cast<std::ptrdiff_t>(index), request.path.end());
        } else if (pattern[index] != request.path[index]) {
            return std::nullopt;
        }
    }
    return call;
}

} // namespace

Router::Router(std::vector<Route> routeTable) {
    for (Route& route : routeTable) {
        entries.push_back({PartsOf(route.pattern), std::move(route)});
    }
}

Response Router::Handle(const Request& request) const {
    bool hasPath = false;
    for (const Entry& entry : entries) {
        const auto call = Match(entry.parts, request);
        if (call && entry.route.method == request.method) {
            return entry.route.handle(*call);
        }
        hasPath = hasPath || call;
    }
    if (hasPath) {
        throw ApiError{405, "method_not_allowed", L"This path has no such method; see /api/v1/openapi.json."};
    }
    throw NotFound(L"There is no such path; see /api/v1/openapi.json.");
}

} // namespace web
