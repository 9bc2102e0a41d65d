#include "companion/json/Reading.h"

#include "companion/json/Encoding.h"
#include "companion/json/ValueHandler.h"
#include "platform/FileSystem.h"
#include "platform/NativePath.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

namespace json {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// Lines and columns count from 1, columns in characters.
std::wstring PlaceOf(std::string_view text, std::size_t offset) {
    const std::string_view before = text.substr(0, offset);
    const auto line = std::count(before.begin(), before.end(), '\n') + 1;
    const std::string_view inLine = before.substr(before.rfind('\n') + 1);
    const auto column =
        std::count_if(inLine.begin(), inLine.end(), [](char byte) { return (byte & 0xC0) != 0x80; }) + 1;
    return L"line " + std::to_wstring(line) + L", column " + std::to_wstring(column);
}

std::wstring SyntaxProblem(rapidjson::ParseErrorCode code) {
    return L"not JSON: " + Decode(rapidjson::GetParseError_En(code));
}

bool Parse(const std::string& text, Target root, std::wstring& problem) {
    rapidjson::Reader reader;
    rapidjson::StringStream stream(text.c_str());
    ValueHandler handler(stream, root);
    const auto result =
        reader.Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag>(stream, handler);
    if (handler.HasProblem()) {
        problem = PlaceOf(text, handler.ProblemOffset()) + L": " + handler.Problem();
    } else if (result.IsError()) {
        problem = PlaceOf(text, result.Offset()) + L": " + SyntaxProblem(result.Code());
    } else if (stream.Tell() != text.size()) {
        problem = PlaceOf(text, stream.Tell()) + L": not JSON: a character U+0000";
    } else {
        return true;
    }
    return false;
}

bool IsTooLarge(std::size_t size, std::wstring& problem) {
    if (size <= largestText) {
        return false;
    }
    problem = L"the text is larger than " + std::to_wstring(largestText) + L" bytes";
    return true;
}

} // namespace

bool ReadTarget(std::string bytes, Target root, std::wstring& problem) {
    if (IsTooLarge(bytes.size(), problem)) {
        return false;
    }
    if (bytes.starts_with(byteOrderMark)) {
        bytes.erase(0, byteOrderMark.size());
    }
    if (const auto invalid = FindInvalidUtf8(bytes)) {
        problem = PlaceOf(bytes, *invalid) + L": not UTF-8";
        return false;
    }
    MarkLoneSurrogates(bytes);
    return Parse(bytes, root, problem);
}

bool ReadTarget(std::wstring_view text, Target root, std::wstring& problem) {
    std::string bytes;
    std::size_t badAt = 0;
    if (IsTooLarge(text.size(), problem)) {
        return false;
    }
    if (!EncodeUtf8(text, bytes, badAt)) {
        problem = L"character " + std::to_wstring(badAt + 1) + L": not a character of JSON (a lone surrogate)";
        return false;
    }
    if (text.starts_with(L'\xFEFF')) {
        bytes.erase(0, byteOrderMark.size());
    }
    MarkLoneSurrogates(bytes);
    return Parse(bytes, root, problem);
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
