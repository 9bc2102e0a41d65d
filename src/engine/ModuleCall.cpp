#include "engine/ModuleCall.h"

#include "CommonControllerLib/ControllerLogManager.h"
#include "text/Text.h"

#include <exception>

namespace {

constexpr long noResult = -1;

/// Logs the exception and stores its text as the module's answer.
void TellThrown(const std::string& activity, const std::string& reason, std::wstring& output) {
    const std::string text = "The function module threw while it " + activity + ": " + reason;
    ControllerLogManager::ErrorLog(text);
    output = text::FromUtf8(text);
}

} // namespace

long CallModule(const FunctionManager& modules, const std::string& functionName, const std::wstring& input,
                std::wstring& output, FunctionManager::Callback callback, const std::string& activity) {
    try {
        return modules.CallFunction(functionName, input, output, callback);
    } catch (const std::exception& thrown) {
        TellThrown(activity, thrown.what(), output);
    } catch (...) {
        TellThrown(activity, "no reason given", output);
    }
    return noResult;
}
