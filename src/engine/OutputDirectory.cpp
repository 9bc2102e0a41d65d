#include "engine/OutputDirectory.h"

#include <cstddef>
#include <cstdint>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "text/Numbers.h"

bool HasVersionSuffix(const std::wstring& path) {
    // std::wregex is not used because it needs stack for every character of the path.
    const std::size_t beforeDigits = path.find_last_not_of(L"0123456789");
    if (beforeDigits == std::wstring::npos || beforeDigits + 1 == path.size() || path[beforeDigits] != L'.') {
        return false;
    }
    const bool hasExtension = beforeDigits > 0 && path.rfind(L'.', beforeDigits - 1) != std::wstring::npos;
    return hasExtension && path.find_first_of(L"\n\r\u2028\u2029") == std::wstring::npos;
}

std::wstring OutputDirectoryName(const std::wstring& firstInputFile) {
    const std::wstring name = ControllerCSWrapper::GetFileNameWithoutExtension(firstInputFile);
    return HasVersionSuffix(firstInputFile) ? ControllerCSWrapper::GetFileNameWithoutExtension(name) : name;
}

platform::Error MakeFreshDirectory(const std::wstring& path, const DirectoryCalls& calls, std::wstring& directory) {
    directory = path;
    for (std::int32_t number = 1;; ++number) {
        if (!calls.exists(directory)) {
            const platform::Error error = calls.create(directory);
            const bool madeByAnother = error.kind == platform::ErrorKind::AlreadyExists && calls.exists(directory);
            if (!madeByAnother) {
                return error;
            }
        }
        directory = path + L"_" + numbers::DecimalText(number);
    }
}
