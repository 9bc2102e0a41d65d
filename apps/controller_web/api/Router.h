#pragma once

#include "controller_web/http/Request.h"
#include "controller_web/http/Response.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace web {

/// A request with the variable parts of its path.
struct Call {
    const Request& request;
    /// The part "{id}"; empty if the path has none.
    std::string id;
    /// The parts of "{path}"; empty if the path has none.
    std::vector<std::string> path;
};

/// One operation of the interface.
struct Route {
    Method method;
    /// As in `openapi.json`: "{id}" stands for one part, "{path}" at the end for one or more.
    std::string_view pattern;
    std::function<Response(const Call&)> handle;
};

/// Finds the operation for a request. Threads: any.
class Router {
public:
    explicit Router(std::vector<Route> routeTable);

    /// Throws what the operation throws, and `ApiError` if there is none.
    Response Handle(const Request& request) const;

private:
    struct Entry {
        std::vector<std::string> parts;
        Route route;
    };
    std::vector<Entry> entries;
};

} // namespace web
