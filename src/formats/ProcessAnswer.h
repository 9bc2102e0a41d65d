#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/system/OwnedHandle.h"

/// The answer of a module's "RunScenario", which identifies the process that it has started: {"ProcessHandle":"0x1f4"}
/// or {"ProcessId":1234}. The public contract is `controller_plugins/function_module.h`.
namespace process_answer {

/// Exactly one member is set.
struct ProcessAnswer {
    /// Accepted under any member name except that of the process id.
    std::optional<std::wstring> handle;
    std::optional<std::uint32_t> id;
};

/// Parses an answer. On failure returns false and sets `problem` to the error.
[[nodiscard]] bool Parse(std::wstring_view json, ProcessAnswer& answer, std::wstring& problem);

/// Opens or takes over the process that an answer identifies; the caller owns `process`. On failure returns false, sets
/// `problem` and leaves any handle of that number open.
[[nodiscard]] bool TakeProcess(const ProcessAnswer& answer, platform::OwnedHandle& process, std::wstring& problem);

} // namespace process_answer
