#include "CommonControllerLib/StringManager.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace {

/// Splits at slashes; empty segments are kept.
std::vector<std::wstring> SplitKey(const std::wstring& key) {
    std::vector<std::wstring> segments;
    std::size_t begin = 0;
    for (std::size_t end = key.find(L'/'); end != std::wstring::npos; end = key.find(L'/', begin)) {
        segments.push_back(key.substr(begin, end - begin));
        begin = end + 1;
    }
    segments.push_back(key.substr(begin));
    return segments;
}

std::vector<std::wstring> CulturesToTry(const std::wstring& culture) {
    std::vector<std::wstring> cultures;
    if (!culture.empty()) {
        cultures.push_back(culture);
    }
    cultures.push_back(ControllerCSWrapper::GetCultureInfo());
    cultures.push_back(ControllerCSWrapper::GetDefaultCultureInfo());
    return cultures;
}

} // namespace

StringManager::StringManager(const std::wstring& resourceFilePath) {
    // Required by the class contract: if the file cannot be read, no key is found.
    (void)ControllerCSWrapper::ReadJsonFile(resourceFilePath, resources);
}

StringManager::StringManager(const StringManager& other) = default;

StringManager::StringManager(StringManager&& other) noexcept = default;

StringManager& StringManager::operator=(StringManager&& other) noexcept = default;

StringManager::~StringManager() = default;

std::wstring StringManager::GetCultureInfo() const {
    return ControllerCSWrapper::GetCultureInfo();
}

bool StringManager::GetLocalizedString(const std::wstring& key, std::wstring& text, const std::wstring& culture) const {
    const std::vector<std::wstring> cultures = CulturesToTry(culture);
    return std::any_of(cultures.begin(), cultures.end(),
                       [&](const std::wstring& each) { return GetLocalizedStringImpl(key, text, each); });
}

bool StringManager::GetLocalizedStringImpl(const std::wstring& key, std::wstring& text,
                                           const std::wstring& culture) const {
    std::wstring section;
    // The published interface requires a second try (StringManagerTest.EachCultureIsAskedForTwiceAndAMemberOnce).
    if (!GetStringResources(resources, culture, section) && !GetStringResources(resources, culture, section)) {
        return false;
    }
    if (key.empty()) {
        text = section;
        return true;
    }
    for (const std::wstring& segment : SplitKey(key)) {
        if (segment == L"#") {
            continue;
        }
        std::wstring member;
        if (!GetStringResources(section, segment, member)) {
            return false;
        }
        section = member;
    }
    text = section;
    return true;
}

bool StringManager::GetStringResources(const std::wstring& json, const std::wstring& name, std::wstring& member) const {
    return ControllerCSWrapper::GetStringResources(json, name, member);
}
