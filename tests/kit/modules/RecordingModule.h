#pragma once

#include <functional>
#include <string>
#include <vector>

/// Communication between tests and their modules, which are real shared libraries beside the test program.
namespace test_modules {

using Callback = long (*)(const std::wstring&, const std::wstring&);

struct Call {
    /// The called module.
    std::string module;
    std::string function;
    std::wstring input;
    Callback callback = nullptr;
};

/// Owned by the test, filled by the modules that received it through their export "UseScript".
struct Script {
    /// In order.
    std::vector<Call> calls;
    /// False for calls from several threads: they are answered but not recorded.
    bool keepsCalls = true;
    /// Returns the result of a call and sets its output.
    std::function<long(const Call&, std::wstring&)> answer;
    /// The unloaded modules, in order.
    std::vector<std::string> unloaded;
};

/// The export "UseScript".
using UseScript = void (*)(Script*);
/// The export "GetFunctionsCalls": the number of calls of "GetFunctions" since the module was loaded.
using GetFunctionsCalls = int (*)();

} // namespace test_modules
