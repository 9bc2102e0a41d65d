#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <vector>

#include "CommonControllerLib/Export.h"
#include "formats/json/Layout.h"
#include "formats/json/Writer.h"

/// Writes records as JSON in wide text, without blanks. Reading restores every record exactly, whatever texts it
/// contains. Threads: any.
namespace json {

/// Appends a text as a JSON string, or as {"codePoints":[...]} if no JSON string can represent it.
CONTROLLER_API void AppendText(std::wstring_view text, Writer& json);

/// Appends the name of a member, in quotes and with its colon. A text that no JSON string can represent becomes the
/// most similar one.
CONTROLLER_API void AppendName(std::wstring_view name, Writer& json);

CONTROLLER_API void AppendNumber(std::int64_t number, Writer& json);

/// Appends any value that a `Layout` supports.
template <typename Value>
void Append(const Value& value, Writer& json);

/// The names of a record's members, each with its colon: '"id":'.
template <typename Record>
const std::vector<std::wstring>& MemberNames() {
    static const std::vector<std::wstring> names = std::apply(
        [](const auto&... member) {
            std::vector<std::wstring> texts;
            const auto add = [&texts](std::string_view name) {
                Writer json(texts.emplace_back());
                AppendName(std::wstring(name.begin(), name.end()), json);
            };
            (add(member.name), ...);
            return texts;
        },
        Layout<Record>::members);
    return names;
}

template <typename Record, typename Owner, typename Value, typename Rule>
void AppendMember(const Record& record, const Member<Owner, Value, Rule>& member, Writer& json) {
    Append(record.*member.pointer, json);
}

template <typename Record>
void AppendMember(const Record&, const Version&, Writer& json) {
    Append(Version::newest, json);
}

template <typename Record, typename MemberType>
bool IsOmitted(const Record&, const MemberType&) {
    return false;
}

template <typename Record, typename Owner, typename Value, typename Rule>
bool IsOmitted(const Record& record, const OptionalMember<Owner, Value, Rule>& member) {
    static const Owner defaults{};
    return record.*member.pointer == defaults.*member.pointer;
}

/// Appends the members of a record, after "{" or after another member.
template <typename Record>
void AppendMembers(const Record& record, Writer& json) {
    auto name = MemberNames<Record>().begin();
    const auto append = [&](const auto& member) {
        if (!IsOmitted(record, member)) {
            if (json.Last() != L'{') {
                json.Put(L',');
            }
            json.Put(*name);
            AppendMember(record, member, json);
        }
        ++name;
    };
    std::apply([&](const auto&... member) { (append(member), ...); }, Layout<Record>::members);
}

template <typename Record>
void AppendRecord(const Record& record, Writer& json) {
    json.Put(L'{');
    AppendMembers(record, json);
    json.Put(L'}');
}

template <typename Value>
void AppendMap(const std::map<std::wstring, Value>& map, Writer& json) {
    json.Put(L'{');
    for (const auto& [name, value] : map) {
        if (json.Last() != L'{') {
            json.Put(L',');
        }
        AppendName(name, json);
        Append(value, json);
    }
    json.Put(L'}');
}

/// Lists can take megabytes: the memory for the whole list is reserved from the size of its first elements.
template <typename Element>
void AppendList(const std::vector<Element>& list, Writer& json) {
    constexpr std::size_t sample = 32;
    const std::size_t begin = json.Length();
    json.Put(L'[');
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (i == sample) {
            json.Reserve(json.Length() + (json.Length() - begin) / sample * (list.size() - i) * 17 / 16);
        }
        if (i > 0) {
            json.Put(L',');
        }
        Append(list[i], json);
    }
    json.Put(L']');
}

template <typename Value>
inline constexpr bool isList = false;
template <typename Element>
inline constexpr bool isList<std::vector<Element>> = true;

template <typename Value>
inline constexpr bool isOptional = false;
template <typename Value>
inline constexpr bool isOptional<std::optional<Value>> = true;

template <typename Value>
inline constexpr bool isMap = false;
template <typename Value>
inline constexpr bool isMap<std::map<std::wstring, Value>> = true;

template <typename Value>
void Append(const Value& value, Writer& json) {
    if constexpr (std::is_same_v<Value, std::wstring>) {
        AppendText(value, json);
    } else if constexpr (std::is_null_pointer_v<Value>) {
        json.Put(L"null");
    } else if constexpr (std::is_same_v<Value, bool>) {
        json.Put(value ? L"true" : L"false");
    } else if constexpr (std::integral<Value>) {
        AppendNumber(value, json);
    } else if constexpr (std::is_enum_v<Value>) {
        Append(static_cast<std::underlying_type_t<Value>>(value), json);
    } else if constexpr (isList<Value>) {
        AppendList(value, json);
    } else if constexpr (isMap<Value>) {
        AppendMap(value, json);
    } else if constexpr (isOptional<Value>) {
        // An `OptionalMember`, which is omitted without a value.
        Append(*value, json);
    } else {
        AppendRecord(value, json);
    }
}

// The same, behind the end of a text that others use as well.

inline void AppendText(std::wstring_view text, std::wstring& json) {
    Writer writer(json);
    AppendText(text, writer);
}

inline void AppendName(std::wstring_view name, std::wstring& json) {
    Writer writer(json);
    AppendName(name, writer);
}

inline void AppendNumber(std::int64_t number, std::wstring& json) {
    Writer writer(json);
    AppendNumber(number, writer);
}

template <typename Value>
void Append(const Value& value, std::wstring& json) {
    Writer writer(json);
    Append(value, writer);
}

template <typename Record>
void AppendMembers(const Record& record, std::wstring& json) {
    Writer writer(json);
    AppendMembers(record, writer);
}

template <typename Record, typename MemberType>
void AppendMember(const Record& record, const MemberType& member, std::wstring& json) {
    Writer writer(json);
    AppendMember(record, member, writer);
}

/// Returns a value as JSON.
template <typename Value>
std::wstring Write(const Value& value) {
    std::wstring json;
    Append(value, json);
    return json;
}

/// Returns a message: an object with one member.
template <typename Value>
std::wstring WriteEnvelope(std::wstring_view name, const Value& value) {
    std::wstring json = L"{";
    AppendName(name, json);
    Append(value, json);
    json += L'}';
    return json;
}

} // namespace json
