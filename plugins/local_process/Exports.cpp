/// The two functions by which the controller finds a module that runs each scenario under a process of its own.

#include <exception>

#include "CommonControllerLib/Export.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "local_process/LocalProcess.h"
#include "text/Text.h"

namespace {

using local_process::Module;
using local_process::ModuleResult;

ModuleResult FailUnexpectedly(const std::string& functionName, const char* what) noexcept {
    try {
        ControllerCSWrapper::WriteErrorLog(text::FromUtf8(functionName + " failed unexpectedly: " + what));
    } catch (...) {
        // No text is returned: allocating one could throw again.
    }
    return ModuleResult::UnexpectedFailure;
}

ModuleResult Call(const std::string& functionName, const std::wstring& input, std::wstring& output) noexcept {
    try {
        return Module().Call(functionName, input, output);
    } catch (const std::exception& failure) {
        return FailUnexpectedly(functionName, failure.what());
    } catch (...) {
        return FailUnexpectedly(functionName, "unknown exception");
    }
}

} // namespace

extern "C" CONTROLLER_API void GetFunctions(std::vector<std::string>* functionNames) {
    try {
        for (const std::string& name : Module().FunctionNames()) {
            functionNames->push_back(name);
        }
    } catch (...) {
        // If memory runs out, the module offers only the functions added so far.
    }
}

extern "C" CONTROLLER_API long CallFunction(const std::string& functionName, const std::wstring& input,
                                            std::wstring& output, long (*)(const std::wstring&, const std::wstring&)) {
    return static_cast<long>(Call(functionName, input, output));
}
