#include "kit/modules/ModuleFiles.h"

#include "platform/system/Environment.h"
#include "platform/system/SharedLibrary.h"

#include <stdexcept>
#include <utility>

namespace test_modules {

namespace {

template <typename Function>
Function FindRequired(void* module, const char* name) {
    void* const address = module == nullptr ? nullptr : platform::FindExport(module, name);
    if (address == nullptr) {
        throw std::runtime_error(std::string("The test module has no export ") + name);
    }
    return reinterpret_cast<Function>(address);
}

} // namespace

std::wstring ModulePath(const std::wstring& name) {
    return platform::ProgramDirectory() + L"\\" + name + TEST_MODULE_SUFFIX;
}

void AddReference(const std::wstring& path) {
    if (platform::LoadModule(path) == nullptr) {
        throw std::runtime_error("cannot load a module");
    }
}

ScriptedModule::ScriptedModule(const std::wstring& path, Script& script) : module(platform::LoadModule(path)) {
    FindRequired<UseScript>(module, "UseScript")(&script);
}

ScriptedModule::~ScriptedModule() {
    if (module != nullptr) {
        FindRequired<UseScript>(module, "UseScript")(nullptr);
    }
    Release();
}

int ScriptedModule::GetFunctionsCallCount() const {
    return FindRequired<GetFunctionsCalls>(module, "GetFunctionsCalls")();
}

void ScriptedModule::Release() {
    platform::FreeModule(std::exchange(module, nullptr));
}

} // namespace test_modules
