#pragma once

#include <string>
#include <vector>

namespace platform {

/// One value of a settings file of sections and keys (`[Scenario]`, `CADName=STL`), as `GetPrivateProfileStringW` reads
/// it into a buffer of 256 characters: names without regard to case, the first section and the first key win, blanks
/// around name and value trimmed, one pair of matching quotes removed, ";" a comment only at the start of a line, 255
/// characters kept. Empty when file, section or key is missing.
std::wstring ReadProfileText(const std::wstring& path, const std::wstring& section, const std::wstring& key);

/// The values of several keys of one section, as `ReadProfileText` gives each; on Linux the file is read once for all.
std::vector<std::wstring> ReadProfileTexts(const std::wstring& path, const std::wstring& section,
                                           const std::vector<std::wstring>& keys);

} // namespace platform
