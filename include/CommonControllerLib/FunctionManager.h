#pragma once

#include "CommonControllerLib/Export.h"

#include <map>
#include <string>
#include <vector>

/// Loads function modules and calls their functions by name.
///
/// A function module is a shared library with two exports, found by these undecorated names:
///
///     void GetFunctions(std::vector<std::string>* functionNames);
///     long CallFunction(const std::string& functionName, const std::wstring& input, std::wstring& output,
///                       long (*callback)(const std::wstring&, const std::wstring&));
///
/// It fills vectors and texts of its caller, so it shares the library's standard library and heap. The contract, for
/// authors of modules, is `controller_plugins/function_module.h`.
///
/// No locking: nobody may load modules while another thread calls functions. Calls alone may come from several threads.
class CONTROLLER_API FunctionManager {
public:
    /// What a function may call back while it runs; may be null.
    using Callback = long (*)(const std::wstring&, const std::wstring&);

    /// Loads each path in order. Never fails for a module that is missing.
    explicit FunctionManager(const std::vector<std::wstring>& modulePaths);
    /// A copy holds the same handles and takes no references: each copy's destructor frees the same modules. The owner
    /// keeps one instance alive for the life of the engine.
    FunctionManager(const FunctionManager& other);
    FunctionManager& operator=(const FunctionManager& other);
    /// Frees every module once, in ascending order of the paths.
    ~FunctionManager();

    /// Loads one module and registers the functions that it names; of two modules with the same function the later one
    /// wins. True when the module offers `GetFunctions`, and also when this very path was given before (even if it
    /// failed then): it is not tried again. A module whose `GetFunctions` throws serves no function.
    [[nodiscard]] bool LoadFunctionDll(const std::wstring& modulePath);

    /// True when a module has named this function. It says nothing of the module's `CallFunction`.
    bool HasFunction(const std::string& functionName) const { return functions.contains(functionName); }

    /// Calls the module that serves `functionName` and returns its result unchanged; -1 when there is none or it has no
    /// `CallFunction`. `output` is the module's to fill. Exceptions of the module pass through.
    [[nodiscard]] long CallFunction(const std::string& functionName, const std::wstring& input, std::wstring& output,
                                    Callback callback) const;

private:
    /// Handles of the system; null for a module that could not be loaded.
    std::map<std::wstring, void*> modules;
    std::map<std::string, void*> functions;
};
