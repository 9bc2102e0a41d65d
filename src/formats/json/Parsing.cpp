#include "formats/json/Parsing.h"

#include <algorithm>

#include <rapidjson/error/en.h>

#include "formats/json/LoneSurrogates.h"
#include "formats/json/Reading.h"
#include "text/StrictUtf8.h"
#include "text/Utf8.h"
#include "text/Wtf8.h"

namespace json {

namespace {

bool IsTooLarge(std::size_t size, std::wstring& problem) {
    if (size <= largestText) {
        return false;
    }
    problem = L"the text is larger than " + std::to_wstring(largestText) + L" bytes";
    return true;
}

} // namespace

bool Prepare(std::wstring_view text, std::string& marked, std::wstring& problem) {
    std::size_t badAt = 0;
    if (IsTooLarge(text.size(), problem)) {
        return false;
    }
    if (!text::EncodeUtf8(text, marked, badAt)) {
        problem = L"not JSON: element " + std::to_wstring(badAt + 1) + L" of the text is not a character";
        return false;
    }
    marked.erase(0, text::ByteOrderMarkLength(marked));
    MarkLoneSurrogates(marked);
    return true;
}

bool Prepare(std::string& bytes, std::wstring& problem) {
    if (IsTooLarge(bytes.size(), problem)) {
        return false;
    }
    bytes.erase(0, text::ByteOrderMarkLength(bytes));
    if (const auto invalid = text::FindInvalidUtf8(bytes)) {
        problem = PlaceOf(bytes, *invalid) + L": not UTF-8";
        return false;
    }
    MarkLoneSurrogates(bytes);
    return true;
}

std::wstring PlaceOf(std::string_view text, std::size_t offset) {
    const std::string_view before = text.substr(0, offset);
    const auto line = std::count(before.begin(), before.end(), '\n') + 1;
    const std::string_view inLine = before.substr(before.rfind('\n') + 1);
    const auto continued = std::count_if(inLine.begin(), inLine.end(), text::IsUtf8Continuation);
    const auto column = std::ssize(inLine) - continued + 1;
    return L"line " + std::to_wstring(line) + L", column " + std::to_wstring(column);
}

std::wstring SyntaxProblem(const std::string& text, const rapidjson::ParseResult& result, std::size_t taken) {
    if (result.IsError()) {
        std::wstring reason = text::FromTrustedWtf8(rapidjson::GetParseError_En(result.Code()));
        // Removes the final dot of RapidJSON's message, because a problem is part of a sentence.
        reason.erase(reason.find_last_not_of(L'.') + 1);
        return PlaceOf(text, result.Offset()) + L": not JSON: " + reason;
    }
    if (taken != text.size()) {
        return PlaceOf(text, taken) + L": not JSON: a character U+0000";
    }
    return {};
}

} // namespace json
