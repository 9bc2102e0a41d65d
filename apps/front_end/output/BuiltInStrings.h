#pragma once

namespace front_end {

/// The content of `strings.json` at build time, in UTF-8.
extern const char* const builtInStrings;

} // namespace front_end
