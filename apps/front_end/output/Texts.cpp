#include "front_end/output/Texts.h"

#include <string_view>
#include <vector>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "front_end/output/BuiltInStrings.h"
#include "front_end/output/LanguageFile.h"
#include "platform/files/FileSystem.h"
#include "text/EscapeControls.h"
#include "text/Text.h"

namespace front_end {
namespace {

constexpr wchar_t builtInCulture[] = L"en-US";

const std::wstring& BuiltInSection() {
    static const std::wstring section = [] {
        std::wstring english;
        // Cannot fail: the text is part of the program.
        (void)ControllerCSWrapper::GetStringResources(text::FromUtf8(builtInStrings), builtInCulture, english);
        return english;
    }();
    return section;
}

/// The number in a placeholder such as "{12}" at the beginning of `text`, and its length.
struct Placeholder {
    std::size_t number = 0;
    std::size_t length = 0;
};

Placeholder PlaceholderAt(std::wstring_view text) {
    std::size_t end = 1;
    std::size_t number = 0;
    while (end < text.size() && end < 3 && text[end] >= L'0' && text[end] <= L'9') {
        number = number * 10 + static_cast<std::size_t>(text[end] - L'0');
        ++end;
    }
    const bool isWhole = end > 1 && end < text.size() && text[end] == L'}';
    return isWhole ? Placeholder{number, end + 1} : Placeholder{};
}

} // namespace

const std::wstring& Texts::Get(const std::wstring& key) const {
    const auto [entry, isNew] = found.try_emplace(key);
    if (isNew) {
        entry->second = Find(key);
    }
    return entry->second;
}

void Texts::AddSections(const std::wstring& path, const std::vector<std::wstring>& cultures) const {
    std::wstring json;
    // A file that cannot be read has no texts.
    (void)ControllerCSWrapper::ReadJsonFile(path, json);
    for (const std::wstring& culture : cultures) {
        if (Section section; ControllerCSWrapper::GetStringResources(json, culture, section.json)) {
            sections.push_back(std::move(section));
        }
    }
}

/// Opens the files of the first culture. They may have texts of the other one, too.
void Texts::OpenLanguage(const std::vector<std::wstring>& cultures) const {
    for (const std::wstring& languageFile : LanguageFiles(file, cultures.front())) {
        if (platform::Exists(languageFile)) {
            AddSections(languageFile, cultures);
        }
    }
}

void Texts::Open() const {
    std::vector<std::wstring> cultures = {ControllerCSWrapper::GetCultureInfo()};
    const std::wstring defaultCulture = ControllerCSWrapper::GetDefaultCultureInfo();
    if (defaultCulture != cultures.front()) {
        cultures.push_back(defaultCulture);
    }
    OpenLanguage(cultures);
    AddSections(file, cultures);
    if (cultures.size() > 1) {
        OpenLanguage({cultures[1], cultures[0]});
    }
    sections.push_back({BuiltInSection()});
}

std::wstring Texts::Find(const std::wstring& key) const {
    if (sections.empty()) {
        Open();
    }
    const std::size_t slash = key.find(L'/');
    const std::wstring name = key.substr(slash + 1);
    for (Section& section : sections) {
        const auto [group, isNew] = section.groups.try_emplace(key.substr(0, slash));
        if (isNew) {
            // A section without this group has none of its texts.
            (void)ControllerCSWrapper::GetStringResources(section.json, group->first, group->second);
        }
        std::wstring text;
        if (ControllerCSWrapper::GetStringResources(group->second, name, text) && !text.empty()) {
            return text;
        }
    }
    return key;
}

std::wstring Texts::Format(const std::wstring& key, std::initializer_list<std::wstring> values) const {
    std::wstring_view rest = Get(key);
    std::wstring text;
    for (std::size_t brace = rest.find(L'{'); brace != std::wstring_view::npos; brace = rest.find(L'{')) {
        text += rest.substr(0, brace);
        rest.remove_prefix(brace);
        const Placeholder placeholder = PlaceholderAt(rest);
        const bool isValue = placeholder.length > 0 && placeholder.number < values.size();
        text += isValue ? text::Escaped(values.begin()[placeholder.number]) : std::wstring(rest.substr(0, 1));
        rest.remove_prefix(isValue ? placeholder.length : 1);
    }
    return text.append(rest);
}

} // namespace front_end
