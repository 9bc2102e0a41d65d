#include "ControllerCSWrapper/ControllerCSWrapper.h"

#include "formats/Boundary.h"
#include "formats/json/MemberFinder.h"
#include "formats/json/Parsing.h"
#include "text/StrictUtf8.h"
#include "text/Wtf8.h"

namespace {

/// Returns the value as written in the text: marks of lone surrogates become escapes again.
std::wstring ValueText(const std::wstring& json, const json::MemberFinder& finder) {
    std::string utf8;
    std::size_t badAt = 0;
    text::EncodeUtf8(json, utf8, badAt);
    utf8.erase(0, text::ByteOrderMarkLength(utf8));
    const std::string_view value = finder.ValueIn(utf8);
    return text::FromTrustedWtf8(value.substr(0, value.find_last_not_of(" \t\r\n,") + 1));
}

} // namespace

/// A text that cannot be parsed is treated as having no members: the error was logged when its file was read.
bool ControllerCSWrapper::GetStringResources(const std::wstring& json, const std::wstring& name, std::wstring& member) {
    return boundary::Guard("GetStringResources", [&] {
        std::string marked;
        std::wstring problem;
        if (!json::Prepare(json, marked, problem)) {
            return false;
        }
        rapidjson::StringStream stream(marked.c_str());
        json::MemberFinder finder(stream, name);
        const auto result = json::Parse(stream, finder);
        if (!json::SyntaxProblem(marked, result, stream.Tell()).empty() || !finder.IsFound()) {
            return false;
        }
        member = finder.Text() ? *finder.Text() : ValueText(json, finder);
        return true;
    });
}
