#pragma once

#include <cstdint>
#include <string>

/// The number of a process handle as hexadecimal text: "0x1f4".
namespace process_handle_text {

std::wstring Format(std::uint64_t number);

/// Takes the digits of either case, with or without "0x". False, and `number` as it was, for anything else, for 0 and
/// for numbers too large for a handle.
[[nodiscard]] bool Parse(const std::wstring& text, std::uint64_t& number);

} // namespace process_handle_text
