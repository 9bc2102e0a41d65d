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
/// A member is a text, a `bool`, a whole number of 32 or 64 bits, an enumeration, a record, a list or (read only) an
/// `std::optional` or a map by text of these. When reading, a missing member keeps its default and unknown members are
/// ignored; a member of the wrong type or a repeated member rejects the whole text.
namespace json {

template <typename Record>
struct Layout;

enum class Presence : std::int32_t { Optional, Required };

/// One member of a record.
template <typename Record, typename Value>
struct Member {
    std::string_view name;
    Value Record::*pointer;
    Presence presence = Presence::Optional;
};

template <typename Record, typename Value>
Member(std::string_view, Value Record::*) -> Member<Record, Value>;
template <typename Record, typename Value>
Member(std::string_view, Value Record::*, Presence) -> Member<Record, Value>;

/// The member "version", which identifies the layout of a file. Always written; rejected if it is newer than `newest`.
struct Version {
    static constexpr std::string_view name = "version";
    static constexpr std::int32_t newest = 1;
    static constexpr Presence presence = Presence::Optional;
};

} // namespace json
