#pragma once

#include <cstdint>
#include <string>

namespace front_end {

enum class Colour : std::int32_t { None, Red, Green, Yellow, Cyan, Bold };

/// `text` enclosed in the escape sequences of a colour.
std::wstring Coloured(const std::wstring& text, Colour colour);

} // namespace front_end
