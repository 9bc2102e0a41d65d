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
/// Vectors and strings cross the module boundary, so a module must use the same standard library and heap as this
/// library. `controller_plugins/function_module.h` is the contract for authors of modules.
///
/// Threads: no locking. Functions may be called from several threads at once, but not while a module is loaded.
class CONTROLLER_API FunctionManager {
public:
    /// The function that a module may call while one of its functions runs; may be null.
    using Callback = long (*)(const std::wstring&, const std::wstring&);

    /// Loads each path in order. A module that cannot be loaded is not reported here.
    explicit FunctionManager(const std::vector<std::wstring>& modulePaths);
    /// The copy shares the handles and takes no references: each copy's destructor frees the same modules. Keep one
    /// instance for the life of the engine.
    FunctionManager(const FunctionManager& other);
    /// As the copy constructor; the modules that this object had stay loaded.
    FunctionManager& operator=(const FunctionManager& other);
    /// Frees every module once, in ascending order of paths.
    ~FunctionManager();

    /// Loads one module and registers the functions that it names; if two modules name the same function, the later one
    /// is called. Returns true when the module exports `GetFunctions`, and also when the same path was given before,
    /// even if that load failed: a path is not retried. A module whose `GetFunctions` throws provides no functions.
    [[nodiscard]] bool LoadFunctionDll(const std::wstring& modulePath);

    /// Returns true when a module has named this function, even if that module lacks `CallFunction`.
    bool HasFunction(const std::string& functionName) const { return functions.contains(functionName); }

    /// Calls the module that provides `functionName` and returns its result unchanged. Returns -1 when no module
    /// provides it or the module lacks `CallFunction`. The module fills `output`. Exceptions of the module propagate.
    [[nodiscard]] long CallFunction(const std::string& functionName, const std::wstring& input, std::wstring& output,
                                    Callback callback) const;

private:
    /// System handles; null for a module that could not be loaded.
    std::map<std::wstring, void*> modules;
    std::map<std::string, void*> functions;
};
