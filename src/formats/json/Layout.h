#pragma once

#include <cstdint>
#include <string_view>

/// What stands in the JSON object of a record. Said once, for reading and for writing:
///
///     template <> struct Layout<ScenarioDirectory> {
///         static constexpr auto members = std::make_tuple(Member{"path", &ScenarioDirectory::path},
///                                                         Member{"label", &ScenarioDirectory::label});
///     };
///
/// A member is a text, a `bool`, a whole number of 32 or 64 bit, an enumeration, a record, a list or (read only) an
/// `std::optional` or a map by text of these. When reading, a missing member keeps its default, unknown members are
/// passed over, and a member of another type or a repeated one refuses the whole text.
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

/// A member "version" that says which layout a file has: written always, refused where it is newer than `newest`.
struct Version {
    static constexpr std::string_view name = "version";
    static constexpr std::int32_t newest = 1;
    static constexpr Presence presence = Presence::Optional;
};

} // namespace json
