#include "formats/json/Reading.h"

#include "formats/json/Parsing.h"
#include "formats/json/ValueHandler.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"

namespace json {

namespace {

std::wstring Suggestion(const ValueHandler::UnknownMember& member) {
    return member.meant.empty() ? L"" : L" (\"" + member.name + L"\": did you mean \"" + member.meant + L"\"?)";
}

void ListUnknown(const std::string& text, const ValueHandler& handler, std::vector<std::wstring>& unknownMembers) {
    for (const ValueHandler::UnknownMember& member : handler.UnknownMembers()) {
        unknownMembers.push_back(PlaceOf(text, member.offset) + L": " + member.path + L": there is no such member" +
                                 Suggestion(member));
    }
}

bool Fill(const std::string& text, Slot root, std::wstring& problem, std::vector<std::wstring>* unknownMembers) {
    rapidjson::StringStream stream(text.c_str());
    ValueHandler handler(stream, root);
    const auto result = Parse(stream, handler);
    if (unknownMembers) {
        ListUnknown(text, handler, *unknownMembers);
    }
    if (handler.HasProblem()) {
        problem = PlaceOf(text, handler.ProblemOffset()) + L": " + handler.Problem();
        return false;
    }
    const std::wstring syntaxProblem = SyntaxProblem(text, result, stream.Tell());
    if (!syntaxProblem.empty()) {
        problem = syntaxProblem;
    }
    return syntaxProblem.empty();
}

} // namespace

bool ReadSlot(std::string bytes, Slot root, std::wstring& problem, std::vector<std::wstring>* unknownMembers) {
    return Prepare(bytes, problem) && Fill(bytes, root, problem, unknownMembers);
}

bool ReadSlot(std::wstring_view text, Slot root, std::wstring& problem, std::vector<std::wstring>* unknownMembers) {
    std::string marked;
    return Prepare(text, marked, problem) && Fill(marked, root, problem, unknownMembers);
}

bool LoadFile(const std::wstring& path, std::size_t limit, std::string& bytes, std::wstring& problem) {
    const platform::Error result = platform::ReadFile(path, limit, bytes);
    if (!result) {
        problem = platform::ToNativeText(path) + L": " + result.Text();
        if (result.kind == platform::ErrorKind::TooLarge) {
            problem += L" (at most " + std::to_wstring(limit) + L" bytes)";
        }
    }
    return static_cast<bool>(result);
}

std::wstring PlaceInFile(const std::wstring& path, std::size_t limit, const std::vector<Step>& way) {
    std::string text;
    std::wstring problem;
    if (!LoadFile(path, limit, text, problem) || !Prepare(text, problem)) {
        return {};
    }
    rapidjson::StringStream stream(text.c_str());
    PlaceFinder finder(stream, way);
    // The result is ignored: the finder stops the parser at the value.
    (void)Parse(stream, finder);
    return finder.Offset() ? PlaceOf(text, *finder.Offset()) : std::wstring();
}

std::wstring ProblemInFile(const std::wstring& path, const std::wstring& problem) {
    return platform::ToNativeText(path) + L", " + problem;
}

bool ReadFileSlot(const std::wstring& path, std::size_t limit, Slot root, std::wstring& problem,
                  std::vector<std::wstring>* unknownMembers) {
    std::string bytes;
    if (!LoadFile(path, limit, bytes, problem)) {
        return false;
    }
    if (ReadSlot(std::move(bytes), root, problem, unknownMembers)) {
        return true;
    }
    problem = ProblemInFile(path, problem);
    return false;
}

} // namespace json
