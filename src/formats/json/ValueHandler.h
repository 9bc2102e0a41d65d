#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <rapidjson/rapidjson.h>
#include <rapidjson/stream.h>

#include "formats/json/NumbersAsText.h"
#include "formats/json/Parsing.h"
#include "formats/json/TypeDescriptor.h"

namespace json {

/// Handles the parser's events and stores the values in the root slot. The first error stops the parser.
class ValueHandler : public NumbersAsText {
public:
    ValueHandler(const rapidjson::StringStream& source, Slot rootSlot) : stream(source), root(rootSlot) {}

    bool HasProblem() const { return !problem.empty(); }
    /// The error, with the path of the member.
    const std::wstring& Problem() const { return problem; }
    /// The position of the value with the error.
    std::size_t ProblemOffset() const { return problemOffset; }

    struct UnknownMember {
        std::size_t offset = 0;
        std::wstring path;
        std::wstring name;
        /// The suggested member; empty if no member is similar.
        std::wstring meant;
    };
    /// The first unknown members.
    const std::vector<UnknownMember>& UnknownMembers() const { return unknownMembers; }

    // The parser's events
    bool Null();
    bool Bool(bool value);
    bool RawNumber(const char* digits, rapidjson::SizeType length, bool copy);
    bool String(const char* marked, rapidjson::SizeType length, bool copy);
    bool StartObject();
    bool Key(const char* marked, rapidjson::SizeType length, bool copy);
    bool EndObject(rapidjson::SizeType count);
    bool StartArray();
    bool EndArray(rapidjson::SizeType count);

private:
    /// Limits the memory that a hostile text can allocate: the number of values stored, where a record counts as
    /// several.
    static constexpr std::size_t mostKept = std::size_t{1} << 25;
    static constexpr std::size_t recordWeight = 16;
    static constexpr std::size_t mostUnknown = 20;

    /// One open object or list.
    struct Level {
        Slot slot;
        /// Objects: the slot of the value of the last key.
        Slot member;
        /// Lists: the number of elements started. Records: the index of the member expected next.
        std::size_t next = 0;
        /// Records: the members read, one bit each.
        std::uint64_t seen = 0;
        /// Objects: the last key, empty if unknown. Refers to `ownName` where members may have any name.
        std::string_view name;
        std::string ownName;
    };

    Slot TakeSlot();
    [[nodiscard]] bool KeyOfRecord(Level& level, std::string_view marked);
    void NoteUnknown(const TypeDescriptor& record, std::string_view marked);
    [[nodiscard]] bool KeyOfEntry(Level& level, std::string_view marked);
    [[nodiscard]] bool Push(Slot slot);
    [[nodiscard]] bool Pop();
    [[nodiscard]] bool Keep(std::size_t weight);
    /// `taken`: the number of bytes of the rejected value that the parser has already consumed. The parser sends most
    /// events before it consumes the value.
    [[nodiscard]] bool Refuse(const std::wstring& what, std::size_t taken = 0);
    [[nodiscard]] bool RefuseType(const TypeDescriptor& descriptor, const std::wstring& found, std::size_t taken = 0);
    std::wstring Path() const;

    const rapidjson::StringStream& stream;
    Slot root;
    std::array<Level, deepest> levels;
    std::size_t depth = 0;
    std::size_t kept = 0;
    std::wstring problem;
    std::size_t problemOffset = 0;
    std::vector<UnknownMember> unknownMembers;
};

} // namespace json
