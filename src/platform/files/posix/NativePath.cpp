#include "platform/files/NativePath.h"

#include <cstddef>

namespace platform {

const wchar_t nativeSeparator = L'/';
const wchar_t pathListSeparator = L':';
const wchar_t* const programExtension = L"";
const wchar_t* const moduleExtension = L".so";

std::size_t RootLength(const std::wstring& path) {
    return !path.empty() && IsSeparator(path[0]) ? 1 : 0;
}

bool IsAbsolute(const std::wstring& path) {
    return RootLength(path) != 0;
}

std::wstring Rebase(const std::wstring& directory, const std::wstring& path) {
    return IsAbsolute(path) ? path : directory + L"\\" + path;
}

bool SameName(const std::wstring& left, const std::wstring& right) {
    return left == right;
}

} // namespace platform
