#pragma once

#include "controller_web/http/Response.h"

#include <string_view>

namespace web {

/// An answer that says why a request was refused, as JSON: {"version":1,"error":{"code":...,"message":...}}. `code` is
/// for programs ("not_found"), `message` for people. Threads: any.
Response ErrorResponse(unsigned status, std::string_view code, std::string_view message);

/// A response with a text of this media type.
Response TextResponse(unsigned status, std::string_view mediaType, std::string text);

} // namespace web
