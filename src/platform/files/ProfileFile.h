#pragma once

#include <string>
#include <vector>

namespace platform {

/// Reads one value of a settings file with sections and keys (`[Scenario]`, `CADName=STL`), with the rules of
/// `GetPrivateProfileStringW` and a buffer of 256 characters: names are case-insensitive, the first section and the
/// first key win, blanks around name and value are trimmed, one pair of matching quotes is removed, ";" starts a
/// comment only at the start of a line, and 255 characters are kept. Returns an empty text if the file, section or key
/// is missing.
std::wstring ReadProfileText(const std::wstring& path, const std::wstring& section, const std::wstring& key);

/// The values of several keys of one section, each as `ReadProfileText` returns it. On Linux the file is read only
/// once.
std::vector<std::wstring> ReadProfileTexts(const std::wstring& path, const std::wstring& section,
                                           const std::vector<std::wstring>& keys);

} // namespace platform
