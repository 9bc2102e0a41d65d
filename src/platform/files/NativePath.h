#pragma once

#include <string>

namespace platform {

/// What separates directories in a path of this system, and paths in a list such as PATH.
extern const wchar_t nativeSeparator;
extern const wchar_t pathListSeparator;

/// What the file names of programs (".exe" on Windows, nothing on Linux) and of loadable modules (".dll", ".so") end
/// in.
extern const wchar_t* const programExtension;
extern const wchar_t* const moduleExtension;

/// The same path in this system's own writing, still as text: backslashes become slashes on Linux, slashes become
/// backslashes on Windows. This is what people and scenarios are shown.
std::wstring ToNativeText(const std::wstring& path);

/// True when `path` does not depend on the current directory: "/x" or "\x" on Linux; "C:\x", "\\server\share" on
/// Windows.
bool IsAbsolute(const std::wstring& path);

/// `path` made absolute against `directory` (itself absolute), with "." and ".." and doubled separators resolved in the
/// text alone (no link is looked at). Library writing (backslashes). An absolute `path` is only tidied.
std::wstring ResolveAgainst(const std::wstring& directory, const std::wstring& path);

/// The directory part without a trailing separator ("C:\a" of "C:\a\b"; the root keeps its separator), empty when there
/// is none. Either separator counts.
std::wstring ParentDirectory(const std::wstring& path);

/// The part after the last separator. Either separator counts.
std::wstring FileName(const std::wstring& path);

/// True when two file names or paths are the same name to this system: without regard to case on Windows, exact on
/// Linux.
bool SameName(const std::wstring& left, const std::wstring& right);

} // namespace platform
