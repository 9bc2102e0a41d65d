#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <rapidjson/reader.h>

namespace json {

/// Maximum nesting depth of objects and lists.
inline constexpr std::size_t deepest = 64;

/// Converts wide text to the parser's input: marked UTF-8 of limited size without a byte order mark.
[[nodiscard]] bool Prepare(std::wstring_view text, std::string& marked, std::wstring& problem);
/// As above, from the bytes of a file.
[[nodiscard]] bool Prepare(std::string& bytes, std::wstring& problem);

/// Formats a position: "line 3, column 14". Both start at 1; columns are counted in characters.
std::wstring PlaceOf(std::string_view text, std::size_t offset);

/// Returns the error of a text that the parser rejected or that continues after the parsed value; empty if there is
/// none.
std::wstring SyntaxProblem(const std::string& text, const rapidjson::ParseResult& result, std::size_t taken);

/// Sends the events of one JSON value to the handler. Numbers are passed as text. During most events the stream is at
/// the beginning of the value; during those of `null`, `true` and `false` it is after the value.
template <typename Handler>
rapidjson::ParseResult Parse(rapidjson::StringStream& stream, Handler& handler) {
    rapidjson::Reader reader;
    return reader.Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag>(stream, handler);
}

} // namespace json
