#include "engine/VersionSuffix.h"

#include <cstddef>

bool HasVersionSuffix(const std::wstring& path) {
    // std::wregex is not used because it needs stack for every character of the path.
    const std::size_t beforeDigits = path.find_last_not_of(L"0123456789");
    if (beforeDigits == std::wstring::npos || beforeDigits + 1 == path.size() || path[beforeDigits] != L'.') {
        return false;
    }
    const bool hasExtension = beforeDigits > 0 && path.rfind(L'.', beforeDigits - 1) != std::wstring::npos;
    return hasExtension && path.find_first_of(L"\n\r\u2028\u2029") == std::wstring::npos;
}
