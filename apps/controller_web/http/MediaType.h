#pragma once

#include <string_view>

namespace web {

/// The media type of a file by the extension of its name, in any case; "application/octet-stream" if it is unknown.
/// Texts are UTF-8. Threads: any.
std::string_view MediaTypeOf(std::string_view fileName);

} // namespace web
