#include "CommonControllerLib/FunctionManager.h"

#include "platform/system/SharedLibrary.h"

namespace {

using GetFunctions = void (*)(std::vector<std::string>*);
using CallModuleFunction = long (*)(const std::string&, const std::wstring&, std::wstring&, FunctionManager::Callback);

template <typename Function>
Function FindFunction(void* module, const char* name) {
    // The system would take a null module for the main program.
    return module == nullptr ? nullptr : reinterpret_cast<Function>(platform::FindExport(module, name));
}

/// Returns the names that a module provides; none if it throws, because a broken module must not end the host.
std::vector<std::string> ReadFunctionNames(GetFunctions getFunctions) {
    std::vector<std::string> names;
    try {
        getFunctions(&names);
    } catch (...) {
        names.clear();
    }
    return names;
}

} // namespace

FunctionManager::FunctionManager(const std::vector<std::wstring>& modulePaths) {
    for (const std::wstring& path : modulePaths) {
        // A missing module must not prevent the use of the others.
        (void)LoadFunctionDll(path);
    }
}

FunctionManager::FunctionManager(const FunctionManager& other) = default;

FunctionManager& FunctionManager::operator=(const FunctionManager& other) = default;

FunctionManager::~FunctionManager() {
    for (const auto& [path, module] : modules) {
        platform::FreeModule(module);
    }
}

bool FunctionManager::LoadFunctionDll(const std::wstring& modulePath) {
    if (modules.contains(modulePath)) {
        return true;
    }
    void* const module = platform::LoadModule(modulePath);
    modules[modulePath] = module;
    const auto getFunctions = FindFunction<GetFunctions>(module, "GetFunctions");
    if (getFunctions == nullptr) {
        return false;
    }
    for (const std::string& name : ReadFunctionNames(getFunctions)) {
        functions[name] = module;
    }
    return true;
}

long FunctionManager::CallFunction(const std::string& functionName, const std::wstring& input, std::wstring& output,
                                   Callback callback) const {
    constexpr long notServed = -1;
    const auto found = functions.find(functionName);
    if (found == functions.end()) {
        return notServed;
    }
    const auto callFunction = FindFunction<CallModuleFunction>(found->second, "CallFunction");
    return callFunction == nullptr ? notServed : callFunction(functionName, input, output, callback);
}
