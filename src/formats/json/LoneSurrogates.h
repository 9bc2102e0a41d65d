#pragma once

#include <string>

namespace json {

/// Rewrites each escape of a lone surrogate in a JSON text, which is valid UTF-8, into a mark of the same length. The
/// text is then "marked UTF-8": UTF-8 in which a lone surrogate, which JSON can write only as an escape, stands in the
/// three bytes of WTF-8, and bytes of 0xFF stand for nothing. `text::FromTrustedWtf8` gives the text that it stands
/// for. Any thread.
void MarkLoneSurrogates(std::string& json);

} // namespace json
