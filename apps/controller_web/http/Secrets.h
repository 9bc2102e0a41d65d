#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace web {

/// Returns 256 bits of the system's random numbers for secrets, as 64 hexadecimal digits. Threads: any.
std::string NewSecret();

/// True for a text of the form that `NewSecret` returns.
bool IsSecret(std::string_view text);

} // namespace web
