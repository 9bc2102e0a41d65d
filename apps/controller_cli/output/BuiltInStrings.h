#pragma once

namespace controller_cli {

/// The content of `strings.json` at build time, in UTF-8.
extern const char* const builtInStrings;

} // namespace controller_cli
