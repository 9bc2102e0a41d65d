#include "platform/system/Installation.h"

#include <windows.h>

#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"

namespace platform {

std::wstring OwnDirectory() {
    static const char ownObject = 0;
    HMODULE module = nullptr;
    if (GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                           reinterpret_cast<const wchar_t*>(&ownObject), &module) == FALSE) {
        return ProgramDirectory();
    }
    std::wstring file(32 * 1024, L'\0');
    file.resize(GetModuleFileNameW(module, file.data(), static_cast<DWORD>(file.size())));
    return ParentDirectory(file);
}

} // namespace platform
