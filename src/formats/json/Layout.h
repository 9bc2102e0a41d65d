#pragma once

#include <cstdint>
#include <string_view>

/// The members of a record's JSON object, declared once for reading and writing:
///
///     template <> struct Layout<ScenarioDirectory> {
///         static constexpr auto members = std::make_tuple(Member{"path", &ScenarioDirectory::path},
///                                                         Member{"label", &ScenarioDirectory::label});
///     };
///
/// A member is a text, a `bool`, a whole number of 32 or 64 bits, an enumeration, a record, a list, a map by text
/// or an `std::optional` (written as `OptionalMember` only) of these. When reading, a missing member keeps its default
/// and unknown members are ignored; a member of the wrong type or a repeated member rejects the whole text.
namespace json {

template <typename Record>
struct Layout;

enum class Presence : std::int32_t { Optional, Required };

/// The rule of a member that accepts every value of its type.
struct AnyValue {};

/// Attaches a rule to a `Member`. A rule restricts the values of a member in a file that people write; the reader
/// rejects any other value with its line and column. The rule of a list applies to its elements. The rule of a text or
/// number:
///
///     struct Days {
///         static constexpr auto expected = L"a whole number from 1 to 36500";
///         static bool Accepts(std::int32_t days) { return days >= 1 && days <= 36500; }
///     };
///
/// `static bool ReadText(Value&, std::string_view)` reads keywords for a value of another type. The rule of a record
/// has `members` that replace its `Layout` in this file. The rule of a map also has `expectedName` and `AcceptsName`
/// for the names of its members.
template <typename Rule>
struct RuleTag {};
template <typename Rule>
inline constexpr RuleTag<Rule> rule;

/// One member of a record.
template <typename RecordType, typename ValueType, typename RuleType = AnyValue>
struct Member {
    using Rule = RuleType;

    constexpr Member(std::string_view memberName, ValueType RecordType::*member,
                     Presence memberPresence = Presence::Optional)
        : name(memberName), pointer(member), presence(memberPresence) {}
    constexpr Member(std::string_view memberName, ValueType RecordType::*member, RuleTag<RuleType>,
                     Presence memberPresence = Presence::Optional)
        : name(memberName), pointer(member), presence(memberPresence) {}

    std::string_view name;
    ValueType RecordType::*pointer;
    Presence presence;
};

/// A member that is not written while it has the value of a default record.
template <typename RecordType, typename ValueType, typename RuleType = AnyValue>
struct OptionalMember : Member<RecordType, ValueType, RuleType> {
    using Member<RecordType, ValueType, RuleType>::Member;
};
template <typename RecordType, typename ValueType>
OptionalMember(std::string_view, ValueType RecordType::*) -> OptionalMember<RecordType, ValueType>;
template <typename RecordType, typename ValueType, typename RuleType>
OptionalMember(std::string_view, ValueType RecordType::*, RuleTag<RuleType>)
    -> OptionalMember<RecordType, ValueType, RuleType>;

/// The member "version", which identifies the layout of a file. Always written; rejected if it is newer than `newest`.
struct Version {
    static constexpr std::string_view name = "version";
    static constexpr std::int32_t newest = 1;
    static constexpr Presence presence = Presence::Optional;
};

} // namespace json
