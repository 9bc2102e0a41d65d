#pragma once

#include "modules/RecordingModule.h"

#include <string>

namespace test_modules {

/// The path of a module that was built for the tests: "recording_module_a" and the like.
std::wstring ModulePath(const std::wstring& name);

/// Takes one more reference on a module, for what will be freed once too often.
void AddReference(const std::wstring& path);

/// Holds a module for as long as a test looks into it, and gives it the test's script.
class ScriptedModule {
public:
    /// Throws std::runtime_error when there is no such module, or when it takes no script.
    ScriptedModule(const std::wstring& path, Script& script);
    ~ScriptedModule();
    ScriptedModule(const ScriptedModule&) = delete;
    ScriptedModule& operator=(const ScriptedModule&) = delete;

    int GetFunctionsCallCount() const;
    /// Leaves the module to its other holders; it keeps the script.
    void Release();

private:
    void* module;
};

} // namespace test_modules
