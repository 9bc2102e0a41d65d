#pragma once

#include <string>

/// A process handle as hexadecimal text: "0x1f4".
namespace process_handle_text {

std::wstring Format(const void* process);

/// Takes the digits of either case, with or without "0x". False, and `process` as it was, for anything else, for
/// zero, which is no process, and for numbers too large for a handle.
[[nodiscard]] bool Parse(const std::wstring& text, void*& process);

} // namespace process_handle_text
