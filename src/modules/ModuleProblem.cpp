#include "modules/ModuleProblem.h"

#include "platform/system/SharedLibrary.h"
#include "text/Text.h"

namespace {

constexpr auto libraryAdvice = L" The libraries that it needs are looked for beside it, in the setting "
                               L"\"libraryDirectories\" and where the system looks.";

bool Exports(const std::wstring& module, const char* name) {
    void* const loaded = platform::LoadModule(module);
    const bool isFound = platform::FindExport(loaded, name) != nullptr;
    platform::FreeModule(loaded);
    return isFound;
}

} // namespace

std::wstring ModuleProblem(const std::wstring& modulePath, const std::vector<const char*>& exports) {
    if (const std::wstring words = platform::LoadProblem(modulePath); !words.empty()) {
        return L"cannot be loaded: " + words + L"." + libraryAdvice;
    }
    for (const char* const name : exports) {
        if (!Exports(modulePath, name)) {
            return L"has no export \"" + text::FromUtf8(name) + L"\".";
        }
    }
    return {};
}
