#include "platform/files/windows/SystemPath.h"

#include <string_view>

#include "platform/files/NativePath.h"

namespace platform {
namespace {

// MAX_PATH minus the 12 characters that CreateDirectoryW reserves for a file name in the directory.
constexpr std::size_t longestPlainPath = 240;

bool HasSystemPrefix(const std::wstring& path) {
    return path.rfind(L"\\\\?\\", 0) == 0 || path.rfind(L"\\\\.\\", 0) == 0;
}

/// The system does not normalize paths with the prefix, so they must be normalized before.
std::wstring WithLongPathPrefix(const std::wstring& path) {
    const std::wstring resolved = ResolveAgainst({}, path);
    const bool onServer = resolved.rfind(L"\\\\", 0) == 0;
    return onServer ? L"\\\\?\\UNC" + resolved.substr(1) : L"\\\\?\\" + resolved;
}

} // namespace

std::wstring SystemPath(const std::wstring& path) {
    const bool isShort = path.size() < longestPlainPath && !NamesNothing(path);
    return isShort ? ToNativeText(path) : LongSystemPath(path);
}

std::wstring WithoutSystemPrefix(const std::wstring& path) {
    constexpr std::wstring_view plain = L"\\\\?\\";
    constexpr std::wstring_view server = L"\\\\?\\UNC\\";
    if (path.starts_with(server)) {
        return L"\\\\" + path.substr(server.size());
    }
    return path.starts_with(plain) ? path.substr(plain.size()) : path;
}

std::wstring LongSystemPath(const std::wstring& path) {
    if (NamesNothing(path)) {
        return {};
    }
    const std::wstring native = ToNativeText(path);
    return IsAbsolute(native) && !HasSystemPrefix(native) ? WithLongPathPrefix(native) : native;
}

} // namespace platform
