#pragma once

namespace web {

/// The content of `openapi.json`.
extern const char* const description;

} // namespace web
