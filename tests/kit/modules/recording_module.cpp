#include "CommonControllerLib/Export.h"
#include "kit/modules/RecordingModule.h"

/// A function module that records its calls in the test's script and answers from it. Built several times under
/// different names.
namespace {

using test_modules::Call;
using test_modules::Script;

Script* script = nullptr;
int getFunctionsCalls = 0;

/// Reports the unloading of the module.
struct UnloadNotice {
    ~UnloadNotice() {
        if (script != nullptr) {
            script->unloaded.emplace_back(TEST_MODULE_NAME);
        }
    }
};
const UnloadNotice unloadNotice;

} // namespace

extern "C" {

CONTROLLER_API void UseScript(Script* given) {
    script = given;
}

CONTROLLER_API int GetFunctionsCalls() {
    return getFunctionsCalls;
}

CONTROLLER_API void GetFunctions(std::vector<std::string>* functionNames) {
    ++getFunctionsCalls;
    functionNames->insert(functionNames->end(),
                          {"RunScenario", "CancelScenario", "CancelScenario", "Terminate", TEST_MODULE_NAME});
}

CONTROLLER_API long CallFunction(const std::string& functionName, const std::wstring& input, std::wstring& output,
                                 test_modules::Callback callback) {
    if (script == nullptr) {
        return -2;
    }
    const Call call{TEST_MODULE_NAME, functionName, input, callback};
    if (script->keepsCalls) {
        script->calls.push_back(call);
    }
    return script->answer ? script->answer(call, output) : 0;
}

} // extern "C"
