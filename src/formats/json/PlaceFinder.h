#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <rapidjson/rapidjson.h>
#include <rapidjson/stream.h>

#include "formats/json/NumbersAsText.h"
#include "formats/json/Parsing.h"

namespace json {

/// One step into a text: a member of an object, or an element of a list.
struct Step {
    /// Null: an element.
    const char* member = nullptr;
    std::size_t element = 0;
};

/// Takes the parser's events, notes where the value begins that the steps lead to, and stops the parser there.
class PlaceFinder : public NumbersAsText {
public:
    PlaceFinder(const rapidjson::StringStream& source, std::vector<Step> wayToValue)
        : stream(source), way(std::move(wayToValue)) {}

    /// Nothing when there is no such value.
    std::optional<std::size_t> Offset() const { return offset; }

    // The parser's events
    bool Null() { return Begin(4); }
    bool Bool(bool value) { return Begin(value ? 4 : 5); }
    bool RawNumber(const char*, rapidjson::SizeType, bool) { return Begin(0); }
    bool String(const char*, rapidjson::SizeType, bool) { return Begin(0); }
    bool StartObject() { return Open(false); }
    bool Key(const char* marked, rapidjson::SizeType length, bool copy);
    bool EndObject(rapidjson::SizeType) { return Close(); }
    bool StartArray() { return Open(true); }
    bool EndArray(rapidjson::SizeType) { return Close(); }

private:
    /// One open object or list.
    struct Level {
        bool isList = false;
        /// So many elements have begun.
        std::size_t begun = 0;
        /// The last key is that of the step from here.
        bool isKeyMeant = false;
    };

    /// True when the value that begins now is where the step from its object or list leads.
    [[nodiscard]] bool IsStep();
    /// `taken`: so much of the value the parser has taken. False at the value that is looked for.
    [[nodiscard]] bool Begin(std::size_t taken);
    [[nodiscard]] bool Open(bool isList);
    [[nodiscard]] bool Close();

    const rapidjson::StringStream& stream;
    const std::vector<Step> way;
    std::array<Level, deepest> levels;
    std::size_t depth = 0;
    /// So many of the open objects and lists, from the outermost, lie on the way.
    std::size_t onWay = 0;
    std::optional<std::size_t> offset;
};

} // namespace json
