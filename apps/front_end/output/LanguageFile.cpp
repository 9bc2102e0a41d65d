#include "front_end/output/LanguageFile.h"

#include <set>
#include <string_view>

#include <rapidjson/document.h>
#include <rapidjson/error/en.h>

#include "front_end/output/BuiltInStrings.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"
#include "text/Text.h"

namespace front_end {
namespace {

constexpr std::size_t largestFile = std::size_t{1} << 20;
constexpr const char* referenceCulture = "en-US";

/// Texts by key.
using TextsByKey = std::map<std::wstring, std::string>;
/// Texts by culture.
using Sections = std::map<std::wstring, TextsByKey>;

/// Returns false if the section has another form.
bool ReadSection(const rapidjson::Value& section, TextsByKey& texts) {
    if (!section.IsObject()) {
        return false;
    }
    for (const auto& group : section.GetObject()) {
        if (!group.value.IsObject()) {
            return false;
        }
        for (const auto& text : group.value.GetObject()) {
            if (!text.value.IsString()) {
                return false;
            }
            texts[text::FromUtf8(group.name.GetString()) + L"/" + text::FromUtf8(text.name.GetString())] =
                text.value.GetString();
        }
    }
    return true;
}

TextsByKey Reference() {
    rapidjson::Document document;
    document.Parse(builtInStrings);
    TextsByKey texts;
    const auto section = document.FindMember(referenceCulture);
    (void)ReadSection(section->value, texts); // a part of the program
    return texts;
}

/// "{0}", "{1}"
std::set<std::string> Placeholders(std::string_view text) {
    std::set<std::string> found;
    for (std::size_t begin = text.find('{'); begin != std::string_view::npos; begin = text.find('{', begin + 1)) {
        const std::size_t end = text.find_first_not_of("0123456789", begin + 1);
        if (end != std::string_view::npos && end > begin + 1 && text[end] == '}') {
            found.emplace(text.substr(begin, end + 1 - begin));
        }
    }
    return found;
}

LanguageProblems Compare(const TextsByKey& texts, const TextsByKey& reference) {
    LanguageProblems problems;
    for (const auto& [key, english] : reference) {
        const auto found = texts.find(key);
        if (found == texts.end() || found->second.empty()) {
            problems.missing.push_back(key);
        } else if (Placeholders(found->second) != Placeholders(english)) {
            problems.differing.push_back(key);
        }
    }
    for (const auto& [key, text] : texts) {
        if (!reference.contains(key)) {
            problems.unknown.push_back(key);
        }
    }
    return problems;
}

bool ReadSections(const rapidjson::Document& document, Sections& sections) {
    if (!document.IsObject() || document.ObjectEmpty()) {
        return false;
    }
    for (const auto& section : document.GetObject()) {
        if (!ReadSection(section.value, sections[text::FromUtf8(section.name.GetString())])) {
            return false;
        }
    }
    return true;
}

/// On failure `sections` may have a part of the texts.
bool ReadLanguageFile(const std::wstring& path, Sections& sections, std::wstring& problem) {
    std::string bytes;
    if (const platform::Error result = platform::ReadFile(path, largestFile, bytes); !result) {
        problem = result.Text();
        return false;
    }
    rapidjson::Document document;
    document.Parse(bytes.c_str());
    if (document.HasParseError()) {
        problem = text::FromUtf8(rapidjson::GetParseError_En(document.GetParseError())) + L" (" +
                  std::to_wstring(document.GetErrorOffset()) + L")";
        return false;
    }
    if (!ReadSections(document, sections)) {
        problem = LR"({"CULTURE":{"GROUP":{"KEY":"TEXT"}}})";
        return false;
    }
    return true;
}

/// Adds the texts of a less important file.
void AddMissing(const TextsByKey& more, TextsByKey& texts) {
    for (const auto& [key, text] : more) {
        if (!text.empty()) {
            texts.try_emplace(key, text);
        }
    }
}

} // namespace

std::vector<std::wstring> LanguageFiles(const std::wstring& stringResourceFile, const std::wstring& culture) {
    const std::wstring name = L"strings." + culture + L".json";
    std::vector<std::wstring> files;
    if (const std::wstring configuration = platform::UserConfigurationDirectory(); !configuration.empty()) {
        files.push_back(configuration + L"\\" + platform::applicationDirectoryName + L"\\" + name);
    }
    files.push_back(platform::ParentDirectory(stringResourceFile) + L"\\" + name);
    return files;
}

bool CheckLanguageFile(const std::wstring& path, std::map<std::wstring, LanguageProblems>& sections,
                       std::wstring& problem) {
    Sections read;
    if (!ReadLanguageFile(path, read, problem)) {
        return false;
    }
    const TextsByKey reference = Reference();
    sections.clear();
    for (const auto& [culture, texts] : read) {
        sections[culture] = Compare(texts, reference);
    }
    return true;
}

CultureProblems CheckCulture(const std::wstring& stringResourceFile, const std::wstring& culture) {
    CultureProblems problems;
    TextsByKey texts;
    std::vector<std::wstring> files = LanguageFiles(stringResourceFile, culture);
    files.push_back(stringResourceFile);
    for (const std::wstring& file : files) {
        if (!platform::Exists(file)) {
            continue;
        }
        Sections sections;
        std::wstring problem;
        if (!ReadLanguageFile(file, sections, problem)) {
            problems.unusable.emplace_back(file, problem);
        } else if (const auto section = sections.find(culture); section != sections.end()) {
            AddMissing(section->second, texts);
            problems.file = problems.file.empty() ? file : problems.file;
        }
    }
    const TextsByKey reference = Reference();
    AddMissing(culture == text::FromUtf8(referenceCulture) ? reference : TextsByKey(), texts);
    problems.texts = Compare(texts, reference);
    problems.file = problems.file.empty() ? files.front() : problems.file;
    return problems;
}

} // namespace front_end
