#include "scenarios/ScenarioSettings.h"

#include "platform/ProfileFile.h"
#include "support/Numbers.h"

#include <algorithm>
#include <cstddef>
#include <sstream>

namespace {

/// No scenario takes as many; a slip in the file must not cost gigabytes.
constexpr std::int32_t mostSecondaryInputs = 10'000;

std::wstring ReadSetting(const std::wstring& path, const std::wstring& key) {
    return platform::ReadProfileText(path, L"Scenario", key);
}

std::size_t SecondaryInputCount(const std::wstring& text) {
    return static_cast<std::size_t>(std::clamp(numbers::ReadInteger(text), 0, mostSecondaryInputs));
}

} // namespace

std::vector<std::wstring> SplitAtCommas(const std::wstring& list) {
    std::vector<std::wstring> pieces;
    std::wistringstream rest(list);
    std::wstring piece;
    while (std::getline(rest, piece, L',')) {
        pieces.push_back(piece);
    }
    return pieces;
}

std::vector<InputFileSpec> ReadScenarioInputs(const std::wstring& settingsPath) {
    std::vector<InputFileSpec> inputs(1 + SecondaryInputCount(ReadSetting(settingsPath, L"SecondInput")));
    inputs.front().cadName = ReadSetting(settingsPath, L"CADName");
    inputs.front().extensions = SplitAtCommas(ReadSetting(settingsPath, L"CADExt"));
    return inputs;
}
