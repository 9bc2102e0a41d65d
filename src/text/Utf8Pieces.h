#pragma once

#include <string>
#include <string_view>

namespace text {

/// Decodes UTF-8 that arrives in pieces of any size. Bytes that are not valid UTF-8, and encoded surrogates, become
/// U+FFFD.
class Utf8Pieces {
public:
    /// Returns the complete characters; the beginning of an incomplete one is kept until its remaining bytes arrive.
    std::u32string Take(std::string_view piece);

    /// Returns what is kept as U+FFFD, because nothing follows; empty if nothing is kept.
    std::u32string TakeRest();

private:
    std::string kept;
};

} // namespace text
