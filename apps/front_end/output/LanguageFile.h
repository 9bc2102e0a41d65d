#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

/// Files with the texts of further languages: sections like those of `strings.json`, by culture.
namespace front_end {

/// The files that may hold the texts of a culture, the more important one first: in the user's configuration directory,
/// and beside `stringResourceFile`.
std::vector<std::wstring> LanguageFiles(const std::wstring& stringResourceFile, const std::wstring& culture);

/// What a section lacks, by keys such as "Table/Job".
struct LanguageProblems {
    /// Not there, or empty: the text of the default culture is shown.
    std::vector<std::wstring> missing;
    /// There is no such text.
    std::vector<std::wstring> unknown;
    /// With other placeholders ("{0}") than the English text.
    std::vector<std::wstring> differing;
};

/// Compares each section of a language file with the built-in texts. On failure (no such file, no JSON, a section that
/// does not consist of groups of texts) returns false and sets `problem`.
[[nodiscard]] bool CheckLanguageFile(const std::wstring& path, std::map<std::wstring, LanguageProblems>& sections,
                                     std::wstring& problem);

/// What the texts of a culture lack, all its files together.
struct CultureProblems {
    LanguageProblems texts;
    /// Files that are passed over, with the reason.
    std::vector<std::pair<std::wstring, std::wstring>> unusable;
    /// The file to mend: the most important one that is there, otherwise the place for one.
    std::wstring file;
};

/// Compares the texts that the front ends show in a culture with the built-in ones: those of its language files and of
/// the string resource file.
[[nodiscard]] CultureProblems CheckCulture(const std::wstring& stringResourceFile, const std::wstring& culture);

} // namespace front_end
