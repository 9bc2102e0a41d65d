#pragma once

#include <cstddef>
#include <string>

/// The system-specific syntax of path roots. NativePath.cpp builds on it and is common to both systems.
namespace platform {

inline bool IsSeparator(wchar_t character) {
    return character == L'\\' || character == L'/';
}

/// Length of the root, which ".." never leaves: "\" on Linux; "C:\", "\\server\share\" and "\" on Windows; 0 if `path`
/// begins with a name.
std::size_t RootLength(const std::wstring& path);

/// Makes `path` absolute relative to `directory`, without normalizing. Returns an absolute `path` unchanged.
std::wstring Rebase(const std::wstring& directory, const std::wstring& path);

/// True for a path that names nothing: an empty one, and one with an embedded U+0000, where a system call would
/// truncate it.
inline bool NamesNothing(const std::wstring& path) {
    return path.empty() || path.find(L'\0') != std::wstring::npos;
}

/// `path` without trailing separators; a root keeps its own.
std::wstring WithoutTrailingSeparators(const std::wstring& path);

} // namespace platform
