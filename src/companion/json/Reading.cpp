#include "companion/json/Reading.h"

#include "companion/json/Parsing.h"
#include "companion/json/ValueHandler.h"
#include "platform/FileSystem.h"
#include "platform/NativePath.h"

namespace json {

namespace {

bool Fill(const std::string& text, Target root, std::wstring& problem) {
    rapidjson::StringStream stream(text.c_str());
    ValueHandler handler(stream, root);
    const auto result = Parse(stream, handler);
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

bool ReadTarget(std::string bytes, Target root, std::wstring& problem) {
    return Prepare(bytes, problem) && Fill(bytes, root, problem);
}

bool ReadTarget(std::wstring_view text, Target root, std::wstring& problem) {
    std::string marked;
    return Prepare(text, marked, problem) && Fill(marked, root, problem);
}

bool LoadFile(const std::wstring& path, std::size_t limit, std::string& bytes, std::wstring& problem) {
    const platform::Error error = platform::ReadFile(path, limit, bytes);
    if (error) {
        problem = platform::ToNativeText(path) + L": " + error.Text();
        if (error.kind == platform::ErrorKind::TooLarge) {
            problem += L" (at most " + std::to_wstring(limit) + L" bytes)";
        }
    }
    return !error;
}

std::wstring ProblemInFile(const std::wstring& path, const std::wstring& problem) {
    return platform::ToNativeText(path) + L", " + problem;
}

} // namespace json
