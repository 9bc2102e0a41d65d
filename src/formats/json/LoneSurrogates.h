#pragma once

#include <string>

namespace json {

/// Replaces each escape of a lone surrogate in a JSON text (valid UTF-8) by a mark of the same length. The result is
/// "marked UTF-8": UTF-8 in which a lone surrogate, which JSON can only write as an escape, is encoded in the three
/// bytes of WTF-8 and padded with bytes of 0xFF. `text::FromTrustedWtf8` decodes it. Threads: any.
void MarkLoneSurrogates(std::string& json);

} // namespace json
