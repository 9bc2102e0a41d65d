#pragma once

#include <string>
#include <type_traits>
#include <utility>

/// Nothing that the standard library throws (out of memory, most of all) leaves this library.
namespace boundary {

/// Puts the exception that is being handled into the log: "CreateJsonFile failed: out of memory".
void LogException(const char* operation) noexcept;

/// The result of `function`; when it throws, a log line and an empty result (false, an empty text).
template <typename Function>
auto Guard(const char* operation, Function&& function) noexcept {
    using Result = std::invoke_result_t<Function>;
    static_assert(std::is_nothrow_default_constructible_v<Result>);
    try {
        return std::forward<Function>(function)();
    } catch (...) {
        LogException(operation);
        return Result();
    }
}

} // namespace boundary
