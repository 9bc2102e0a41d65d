#pragma once

#include <string>
#include <type_traits>
#include <utility>

/// Prevents exceptions of the standard library, out of memory above all, from leaving this library.
namespace boundary {

/// Logs the exception that is being handled: "CreateJsonFile failed: out of memory".
void LogException(const char* operation) noexcept;

/// Returns the result of `function`. If it throws, logs the exception and returns an empty result (false, an empty
/// text).
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
