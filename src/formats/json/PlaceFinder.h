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

/// One step of a path into a JSON text: a member of an object, or an element of a list.
struct Step {
    /// Null for an element.
    const char* member = nullptr;
    std::size_t element = 0;
};

/// Handles the parser's events, records the position of the value at the end of the path, and stops the parser there.
class PlaceFinder : public NumbersAsText {
public:
    PlaceFinder(const rapidjson::StringStream& source, std::vector<Step> wayToValue)
        : stream(source), way(std::move(wayToValue)) {}

    /// Returns nothing if there is no such value.
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
        /// The number of elements started.
        std::size_t begun = 0;
        /// True if the last key is that of the next step.
        bool isKeyMeant = false;
    };

    /// Returns true if the value that starts now is the next step of its object or list.
    [[nodiscard]] bool IsStep();
    /// `taken`: the number of bytes of the value that the parser has already consumed. Returns false at the searched
    /// value.
    [[nodiscard]] bool Begin(std::size_t taken);
    [[nodiscard]] bool Open(bool isList);
    [[nodiscard]] bool Close();

    const rapidjson::StringStream& stream;
    const std::vector<Step> way;
    std::array<Level, deepest> levels;
    std::size_t depth = 0;
    /// The number of open objects and lists, from the outermost, that are on the path.
    std::size_t onWay = 0;
    std::optional<std::size_t> offset;
};

} // namespace json
