#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <rapidjson/reader.h>

namespace json {

/// Maximum nesting depth of objects and lists.
inline constexpr std::size_t deepest = 64;

/// Turns wide text into what the parser takes: marked UTF-8 of bounded size without a byte order mark.
[[nodiscard]] bool Prepare(std::wstring_view text, std::string& marked, std::wstring& problem);
/// The same from the bytes of a file.
[[nodiscard]] bool Prepare(std::string& bytes, std::wstring& problem);

/// "line 3, column 14": both from 1, columns in characters.
std::wstring PlaceOf(std::string_view text, std::size_t offset);

/// What is wrong with a text that the parser refused, or that goes on behind what it took; empty when nothing is.
std::wstring SyntaxProblem(const std::string& text, const rapidjson::ParseResult& result, std::size_t taken);

/// Sends the events of one JSON value to the handler. Numbers come as text. In most events the stream still stands at
/// the beginning of the value; behind it in those of `null`, `true` and `false`.
template <typename Handler>
rapidjson::ParseResult Parse(rapidjson::StringStream& stream, Handler& handler) {
    rapidjson::Reader reader;
    return reader.Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag>(stream, handler);
}

} // namespace json
