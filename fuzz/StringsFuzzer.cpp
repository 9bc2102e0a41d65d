#include <map>
#include <string>

#include "CommonControllerLib/StringManager.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/json/Reading.h"
#include "formats/json/Writing.h"
#include "fuzz/support/ByteSource.h"
#include "fuzz/support/Require.h"
#include "fuzz/support/Scratch.h"
#include "text/Text.h"

namespace {

/// The text of a member. If there is none, returns false and leaves the output unchanged.
bool Get(const std::wstring& json, const std::wstring& name, std::wstring& member) {
    member = L"before";
    const bool isFound = ControllerCSWrapper::GetStringResources(json, name, member);
    fuzz::Require(isFound || member == L"before", "a name that is not found leaves the output as it was");
    return isFound;
}

/// Each text of a flat object is found by its name.
void CheckTexts(const std::wstring& json) {
    std::map<std::wstring, std::wstring> texts;
    std::wstring problem;
    if (!json::Read(std::wstring_view(json), texts, problem)) {
        return;
    }
    for (const auto& [name, text] : texts) {
        std::wstring member;
        const bool isObject = text.empty(); // or an empty text
        fuzz::Require(Get(json, name, member) && (isObject || member == text || member.starts_with(L'{')),
                      "a text is found by its name");
    }
}

/// True if a JSON string can represent the text.
bool FitsInString(const std::wstring& text) {
    std::wstring json;
    json::AppendText(text, json);
    return json.starts_with(L'"');
}

/// A written member is found among others, whatever its name and text.
void CheckWritten(const std::wstring& name, const std::wstring& text) {
    std::wstring json = L"{\"other\":[1],";
    std::wstring member;
    json::AppendName(name, json);
    json::AppendText(text, json);
    json += L"}";
    if (FitsInString(name) && FitsInString(text) && name != L"other") {
        fuzz::Require(Get(json, name, member) && member == text, "a text is found as it was written");
    }
}

/// A resource file; the key is looked up in each culture.
void CheckFile(std::string_view bytes, const std::wstring& key, const std::wstring& culture) {
    const StringManager strings(fuzz::ScratchFile(L"strings.json", bytes));
    std::wstring text = L"before";
    const bool isFound = strings.GetLocalizedString(key, text, culture);
    fuzz::Require(isFound || text == L"before", "a key that is not found leaves the output as it was");
}

} // namespace

/// Reads the input as a file of string resources, looked up by common names and by names made from the input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = fuzz::BytesOf(data, size);
    const std::wstring json = text::FromUtf8(bytes);
    fuzz::Scratch();
    CheckTexts(json);
    for (const wchar_t* const name : {L"", L"en-US", L"Usage", L"a"}) {
        std::wstring member;
        if (Get(json, name, member)) {
            Get(member, L"a", member);
        }
    }
    CheckFile(bytes, L"Usage/#/NoCommand", L"de-DE");
    CheckFile(bytes, L"", L"");
    fuzz::ByteSource source(bytes);
    const std::wstring name = source.Text();
    CheckWritten(name, source.Text());
    CheckFile(bytes, source.Text(), source.Text());
    return 0;
}
