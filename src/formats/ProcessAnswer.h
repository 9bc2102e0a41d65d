#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/processes/ProcessHandle.h"

/// How the answer of a module's "RunScenario" names the process that it has started: {"ProcessHandle":"0x1f4"} or
/// {"ProcessId":1234}. The public contract is `controller_plugins/function_module.h`.
namespace process_answer {

/// One of the two.
struct ProcessAnswer {
    /// Under any name but that of the other.
    std::optional<std::wstring> handle;
    std::optional<std::uint32_t> id;
};

/// Reads an answer; `problem` says what is wrong with it.
[[nodiscard]] bool Parse(std::wstring_view json, ProcessAnswer& answer, std::wstring& problem);

/// Takes ownership of the process that an answer names. False, with `problem`; whatever has the number stays its
/// owner's then.
[[nodiscard]] bool TakeProcess(const ProcessAnswer& answer, platform::OwnedHandle& process, std::wstring& problem);

} // namespace process_answer
