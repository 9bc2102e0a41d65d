#pragma once

#include "controller_web/http/Request.h"
#include "controller_web/http/Response.h"

namespace web {

/// Answers requests.
class Handler {
public:
    virtual ~Handler() = default;
    /// Never throws. Threads: several at once; may block.
    virtual Response Handle(const Request& request) = 0;
};

} // namespace web
