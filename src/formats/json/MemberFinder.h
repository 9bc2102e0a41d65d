#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include <rapidjson/rapidjson.h>
#include <rapidjson/stream.h>

#include "formats/json/NumbersAsText.h"

namespace json {

/// Handles the parser's events and records the position of the value of one member of the outermost object. Stops the
/// parser at a repetition of that member.
class MemberFinder : public NumbersAsText {
public:
    MemberFinder(const rapidjson::StringStream& source, const std::wstring& memberName)
        : stream(source), name(memberName) {}

    bool IsFound() const { return end > 0; }
    /// Returns the value in `json`; blanks and a comma may follow it.
    std::string_view ValueIn(std::string_view json) const { return json.substr(begin, end - begin); }
    /// Returns the decoded value if it is a string.
    const std::optional<std::wstring>& Text() const { return text; }

    // The parser's events
    bool Null() { return Begin(4); }
    bool Bool(bool value) { return Begin(value ? 4 : 5); }
    bool RawNumber(const char*, rapidjson::SizeType, bool) { return Begin(0); }
    bool String(const char* marked, rapidjson::SizeType length, bool copy);
    bool StartObject();
    bool Key(const char* marked, rapidjson::SizeType length, bool copy);
    bool EndObject(rapidjson::SizeType count);
    bool StartArray();
    bool EndArray(rapidjson::SizeType count);

private:
    bool IsWanted() const { return wanted && depth == 1; }
    /// `taken`: the number of bytes of the value that the parser has already consumed.
    [[nodiscard]] bool Begin(std::size_t taken);
    void End();

    const rapidjson::StringStream& stream;
    const std::wstring& name;
    std::size_t depth = 0;
    /// True if the last key of the outermost object was the searched name.
    bool wanted = false;
    std::size_t begin = 0;
    std::size_t end = 0;
    std::optional<std::wstring> text;
};

} // namespace json
