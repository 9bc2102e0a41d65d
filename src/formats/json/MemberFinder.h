#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include <rapidjson/rapidjson.h>
#include <rapidjson/stream.h>

#include "formats/json/NumbersAsText.h"

namespace json {

/// Takes the parser's events and notes where the value of one member of the outermost object stands. Stops the parser
/// where that member is repeated.
class MemberFinder : public NumbersAsText {
public:
    MemberFinder(const rapidjson::StringStream& source, const std::wstring& memberName)
        : stream(source), name(memberName) {}

    bool IsFound() const { return end > 0; }
    /// The value in the text; blanks and a comma may follow.
    std::string_view ValueIn(std::string_view json) const { return json.substr(begin, end - begin); }
    /// What the value says when it is a plain string.
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
    /// `taken`: so much of the value the parser has taken.
    [[nodiscard]] bool Begin(std::size_t taken);
    void End();

    const rapidjson::StringStream& stream;
    const std::wstring& name;
    std::size_t depth = 0;
    /// The last key of the outermost object was the name.
    bool wanted = false;
    std::size_t begin = 0;
    std::size_t end = 0;
    std::optional<std::wstring> text;
};

} // namespace json
