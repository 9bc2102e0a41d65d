#include <string>
#include <vector>

#include "engine/catalogue/ScenarioSettings.h"
#include "fuzz/support/ByteSource.h"
#include "fuzz/support/Require.h"
#include "fuzz/support/Scratch.h"
#include "platform/files/ProfileFile.h"
#include "text/Text.h"

namespace {

constexpr std::size_t longestValue = 255; // in UTF-16 units

void CheckInputs(const std::vector<InputFileSpec>& inputs) {
    fuzz::Require(!inputs.empty() && inputs.size() <= 10'001,
                  "there is a primary input, and a bounded number of others");
    fuzz::Require(text::ToUtf16(inputs[0].cadName).size() <= longestValue, "a value is short");
    fuzz::Require(inputs[0].extensions.size() <= longestValue, "extensions are few");
    for (std::size_t index = 1; index < inputs.size(); ++index) {
        fuzz::Require(inputs[index] == InputFileSpec(), "nothing is said of further inputs");
    }
}

/// Each key read alone gives the same value as all keys read together.
void CheckKeys(const std::wstring& path, const std::wstring& section, const std::vector<std::wstring>& keys) {
    const std::vector<std::wstring> values = platform::ReadProfileTexts(path, section, keys);
    fuzz::Require(values.size() == keys.size(), "there is a value for each key");
    for (std::size_t index = 0; index < keys.size(); ++index) {
        fuzz::Require(values[index] == platform::ReadProfileText(path, section, keys[index]), "a key has one value");
        fuzz::Require(text::ToUtf16(values[index]).size() <= longestValue, "a value is short");
    }
}

std::string LittleEndian(const std::u16string& units) {
    std::string bytes = "\xFF\xFE";
    for (const char16_t unit : units) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

/// A quoted value, with its blanks, is read as written.
void CheckWritten(fuzz::ByteSource& source) {
    std::wstring value;
    for (const wchar_t element : source.Text()) {
        value += element < 0x20 ? L'a' : element;
    }
    const std::wstring file = L"\r\n; CADName=wrong\r\n[Other]\r\nCADName=wrong\r\n[Scenario]\r\nCADName = \"" + value +
                              L"\"\r\nCADName=wrong\r\nCADExt=stl,stp\r\nSecondInput=2\r\n";
    const std::u16string units = text::ToUtf16(file);
    const auto inputs = ReadScenarioInputs(fuzz::ScratchFile(L"written.adc", LittleEndian(units)));
    fuzz::Require(inputs.size() == 3 && inputs[0].cadName == text::FromUtf16(text::ToUtf16(value)) &&
                      inputs[0].extensions == std::vector<std::wstring>{L"stl", L"stp"},
                  "a value is read as it was written");
}

} // namespace

/// Reads the input as the settings of a script, then writes settings made from it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = fuzz::BytesOf(data, size);
    const std::wstring path = fuzz::ScratchFile(L"scenario.adc", bytes);
    fuzz::ByteSource source(bytes);
    CheckInputs(ReadScenarioInputs(path));
    CheckKeys(path, L"Scenario", {L"CADName", L"secondinput", L"", L" ", source.Text()});
    CheckKeys(path, source.Text(), {L"CADName", source.Text()});
    CheckWritten(source);
    return 0;
}
