#pragma once

#include <cstddef>
#include <string>

namespace platform {

/// Separators of this system: of directories in a path, and of paths in a list such as PATH.
extern const wchar_t nativeSeparator;
extern const wchar_t pathListSeparator;

/// Extensions of this system: of programs (".exe" on Windows, none on Linux) and of loadable modules (".dll", ".so").
extern const wchar_t* const programExtension;
extern const wchar_t* const moduleExtension;

/// The path in the notation of this system, still as text: slashes on Linux, backslashes on Windows. Used for paths
/// shown to people and passed to scenarios.
std::wstring ToNativeText(const std::wstring& path);

/// True if `path` does not depend on the current directory: "/x" or "\x" on Linux; "C:\x", "\\server\share" on Windows.
bool IsAbsolute(const std::wstring& path);

/// Resolves `path` against the absolute path `directory`, and normalizes ".", ".." and repeated separators in the text
/// only (links are not resolved). Returns library text (backslashes). An absolute `path` is only normalized.
std::wstring ResolveAgainst(const std::wstring& directory, const std::wstring& path);

/// The directory part without a trailing separator ("C:\a" for "C:\a\b"; a root keeps its separator); empty if there is
/// none. Accepts either separator.
std::wstring ParentDirectory(const std::wstring& path);

/// The part after the last separator. Accepts either separator.
std::wstring FileName(const std::wstring& path);

/// True if the two file names or paths are equal on this system: case-insensitive on Windows, exact on Linux.
bool SameName(const std::wstring& left, const std::wstring& right);

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
