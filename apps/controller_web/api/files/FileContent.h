#pragma once

#include "controller_web/http/Request.h"
#include "controller_web/http/Response.h"
#include "platform/files/File.h"

#include <string_view>

namespace web {

/// The answer with an open file, or with the range that the request names. Bytes that are appended later are not sent.
/// Throws `ApiError` if no byte of the range exists.
Response FileResponse(const Request& request, platform::File file, std::string_view mediaType);

} // namespace web
