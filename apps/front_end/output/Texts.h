#pragma once

#include <initializer_list>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace front_end {

/// Every text that the front end shows, by key ("Table/Job"): in the configured culture, otherwise in the default
/// culture, otherwise in the built-in English. The language files of a culture (`LanguageFiles`) come before the string
/// resource file. Not thread-safe.
class Texts {
public:
    /// The file is read at the first access to a text.
    explicit Texts(std::wstring stringResourceFile) : file(std::move(stringResourceFile)) {}

    /// Returns the key itself if the built-in texts do not contain it.
    const std::wstring& Get(const std::wstring& key) const;

    /// The text with "{0}", "{1}" and so on replaced by the values. Line breaks and terminal control characters in the
    /// values are escaped, because names and reports of other users are among them.
    std::wstring Format(const std::wstring& key, std::initializer_list<std::wstring> values) const;

private:
    /// The texts of one culture in one file, in groups that are parsed when a text of theirs is asked for: a help shows
    /// a hundred texts, and a file is large.
    struct Section {
        std::wstring json;
        std::map<std::wstring, std::wstring> groups = {};
    };

    std::wstring Find(const std::wstring& key) const;
    void Open() const;
    void OpenLanguage(const std::vector<std::wstring>& cultures) const;
    void AddSections(const std::wstring& path, const std::vector<std::wstring>& cultures) const;

    std::wstring file;
    /// The most important one first.
    mutable std::vector<Section> sections;
    mutable std::map<std::wstring, std::wstring> found;
};

} // namespace front_end
