#include "engine/catalogue/ScenarioSettings.h"

#include "CommonControllerLib/ControllerLogManager.h"
#include "platform/files/NativePath.h"
#include "platform/files/ProfileFile.h"
#include "text/Numbers.h"

#include <algorithm>
#include <cstddef>

namespace {

/// Far more than any scenario needs; limits the memory that an error in the file can cost.
constexpr std::int32_t mostSecondaryInputs = 10'000;

std::size_t SecondaryInputCount(const std::wstring& text, const std::wstring& settingsPath) {
    const std::int32_t count = numbers::ReadInteger(text);
    if (count > mostSecondaryInputs) {
        ControllerLogManager::WarnLog(platform::ToNativeText(settingsPath) + L": SecondInput: expected at most " +
                                      numbers::DecimalText(mostSecondaryInputs) + L", found " +
                                      numbers::DecimalText(count) + L"; the scenario is listed with " +
                                      numbers::DecimalText(mostSecondaryInputs) + L" secondary inputs");
    }
    return static_cast<std::size_t>(std::clamp(count, 0, mostSecondaryInputs));
}

} // namespace

std::vector<std::wstring> SplitAtCommas(const std::wstring& list) {
    std::vector<std::wstring> pieces;
    for (std::size_t begin = 0; begin < list.size();) {
        const std::size_t end = std::min(list.find(L',', begin), list.size());
        pieces.push_back(list.substr(begin, end - begin));
        begin = end + 1;
    }
    return pieces;
}

std::vector<InputFileSpec> ReadScenarioInputs(const std::wstring& settingsPath) {
    static const std::wstring section = L"Scenario";
    static const std::vector<std::wstring> keys{L"CADName", L"CADExt", L"SecondInput"};
    const std::vector<std::wstring> values = platform::ReadProfileTexts(settingsPath, section, keys);
    std::vector<InputFileSpec> inputs(1 + SecondaryInputCount(values[2], settingsPath));
    inputs.front() = {values[0], SplitAtCommas(values[1])};
    return inputs;
}
