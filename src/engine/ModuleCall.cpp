#include "engine/ModuleCall.h"

#include "support/ControllerLogManager.h"

#include <exception>

namespace {

constexpr long noResult = -1;

void LogThrown(const std::string& activity, const std::string& reason) {
    ControllerLogManager::ErrorLog("The function module threw while it " + activity + ": " + reason);
}

} // namespace

long CallModule(const FunctionManager& modules, const std::string& functionName, const std::wstring& input,
                std::wstring& output, FunctionManager::Callback callback, const std::string& activity) {
    try {
        return modules.CallFunction(functionName, input, output, callback);
    } catch (const std::exception& thrown) {
        LogThrown(activity, thrown.what());
    } catch (...) {
        LogThrown(activity, "no reason given");
    }
    return noResult;
}
