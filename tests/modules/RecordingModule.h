#pragma once

#include <functional>
#include <string>
#include <vector>

/// How tests and the modules made for them talk to one another. The modules are real shared libraries, found beside the
/// test program.
namespace test_modules {

using Callback = long (*)(const std::wstring&, const std::wstring&);

struct Call {
    /// The module that was called.
    std::string module;
    std::string function;
    std::wstring input;
    Callback callback = nullptr;
};

/// Kept by the test, filled by the modules that were given it through their export "UseScript".
struct Script {
    /// In order.
    std::vector<Call> calls;
    /// False for calls from several threads at once: the answer is then all that a call reaches.
    bool keepsCalls = true;
    /// The answer to a call: its result, and what it writes into the output.
    std::function<long(const Call&, std::wstring&)> answer;
    /// The modules that were unloaded, in order.
    std::vector<std::string> unloaded;
};

/// The export "UseScript".
using UseScript = void (*)(Script*);
/// The export "GetFunctionsCalls": how often "GetFunctions" was called since the module was loaded.
using GetFunctionsCalls = int (*)();

} // namespace test_modules
