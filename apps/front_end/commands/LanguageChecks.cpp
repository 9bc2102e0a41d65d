#include "front_end/commands/LanguageChecks.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <set>

#include "front_end/output/LanguageFile.h"
#include "platform/files/NativePath.h"

namespace front_end::commands {
namespace {

using Keys = std::vector<std::wstring>;

std::wstring Names(const Keys& keys, std::size_t most) {
    std::wstring names;
    for (std::size_t i = 0; i < std::min(keys.size(), most); ++i) {
        names += (i == 0 ? L"" : L", ") + keys[i];
    }
    return keys.size() > most ? names + L", ..." : names;
}

/// A text for each kind of problem, with at most as many names.
std::vector<std::wstring> Describe(const CommandContext& context, const LanguageProblems& problems, std::size_t most) {
    std::vector<std::wstring> texts;
    const auto add = [&](const wchar_t* textKey, const Keys& keys) {
        if (!keys.empty()) {
            texts.push_back(context.texts.Format(textKey, {std::to_wstring(keys.size()), Names(keys, most)}));
        }
    };
    add(L"Language/Missing", problems.missing);
    add(L"Language/Unknown", problems.unknown);
    add(L"Language/Differing", problems.differing);
    return texts;
}

CheckResult NoLanguageFile(const CommandContext& context, const wchar_t* name, const std::wstring& file,
                           const std::wstring& problem) {
    return {name, false, context.texts.Format(L"Language/NoFile", {platform::ToNativeText(file), problem})};
}

void CheckLanguageInUse(const CommandContext& context, const std::wstring& stringResourceFile,
                        const std::wstring& culture, std::vector<CheckResult>& results) {
    constexpr std::size_t mostNames = 3;
    const CultureProblems problems = CheckCulture(stringResourceFile, culture);
    const std::size_t before = results.size();
    for (const auto& [file, problem] : problems.unusable) {
        results.push_back(NoLanguageFile(context, L"language", file, problem));
    }
    for (const std::wstring& text : Describe(context, problems.texts, mostNames)) {
        results.push_back(
            {L"language", false,
             context.texts.Format(L"Doctor/Language", {culture, text, platform::ToNativeText(problems.file)})});
    }
    if (results.size() == before) {
        results.push_back({L"language", true, culture});
    }
}

} // namespace

void CheckLanguageFileTexts(const CommandContext& context, const std::wstring& path,
                            std::vector<CheckResult>& results) {
    std::map<std::wstring, LanguageProblems> sections;
    std::wstring problem;
    const std::size_t before = results.size();
    if (!CheckLanguageFile(path, sections, problem)) {
        results.push_back(NoLanguageFile(context, L"file", path, problem));
    }
    for (const auto& [culture, problems] : sections) {
        for (const std::wstring& text : Describe(context, problems, std::wstring::npos)) {
            results.push_back({culture, false, text});
        }
    }
    if (results.size() == before) {
        results.push_back({L"file", true, platform::ToNativeText(path)});
    }
}

void CheckLanguagesInUse(const CommandContext& context, const settings::Settings& settings,
                         std::vector<CheckResult>& results) {
    for (const std::wstring& culture : std::set<std::wstring>{settings.culture, settings.defaultCulture}) {
        CheckLanguageInUse(context, settings.stringResourceFile, culture, results);
    }
}

} // namespace front_end::commands
