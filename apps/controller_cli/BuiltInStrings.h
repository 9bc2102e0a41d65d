#pragma once

namespace controller_cli {

/// The content of `strings.json` as it was when the program was built, in UTF-8.
extern const char* const builtInStrings;

} // namespace controller_cli
