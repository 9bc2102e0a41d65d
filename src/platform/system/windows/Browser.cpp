#include "platform/system/Browser.h"

#include <windows.h>

#include <shellapi.h>

namespace platform {

Error OpenInBrowser(const std::wstring& address) {
    if (!IsWebAddress(address)) {
        return {ErrorKind::NotSupported, 0};
    }
    const HINSTANCE result = ShellExecuteW(nullptr, L"open", address.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    // Values up to 32 are errors.
    return reinterpret_cast<INT_PTR>(result) > 32 ? Error() : Error{ErrorKind::NotFound, 0};
}

} // namespace platform
