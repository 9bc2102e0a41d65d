#pragma once

#include "kit/modules/RecordingModule.h"

#include <string>

namespace test_modules {

/// The path of a test module: "recording_module_a" and the like.
std::wstring ModulePath(const std::wstring& name);

/// Adds a reference to a module that will be released once too often.
void AddReference(const std::wstring& path);

/// Holds a module while a test inspects it, and gives it the test's script.
class ScriptedModule {
public:
    /// Throws std::runtime_error if the module is missing or takes no script.
    ScriptedModule(const std::wstring& path, Script& script);
    ~ScriptedModule();
    ScriptedModule(const ScriptedModule&) = delete;
    ScriptedModule& operator=(const ScriptedModule&) = delete;

    int GetFunctionsCallCount() const;
    /// Releases this reference; the module keeps the script.
    void Release();

private:
    void* module;
};

} // namespace test_modules
