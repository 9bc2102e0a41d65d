#pragma once

#include <cstddef>
#include <string>

/// How this system writes the beginning of a path; what stands above it (NativePath.cpp) is the same for all.
namespace platform {

inline bool IsSeparator(wchar_t character) {
    return character == L'\\' || character == L'/';
}

/// The length of what ".." never leaves: "\" on Linux; "C:\", "\\server\share\" and "\" on Windows; 0 when `path`
/// begins with a name.
std::size_t RootLength(const std::wstring& path);

/// `path` as seen from `directory`, with nothing resolved yet. An absolute `path` is returned as it is.
std::wstring Rebase(const std::wstring& directory, const std::wstring& path);

/// True for a path that names nothing: an empty one, and one with an embedded U+0000, which a system call would cut.
inline bool NamesNothing(const std::wstring& path) {
    return path.empty() || path.find(L'\0') != std::wstring::npos;
}

/// `path` without the separators at its end; a root keeps its own.
std::wstring WithoutTrailingSeparators(const std::wstring& path);

} // namespace platform
