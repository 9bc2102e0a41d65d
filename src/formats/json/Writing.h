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

/// Writes records as JSON in wide text, without blanks. Reading restores every record exactly, whatever texts it
/// contains. Threads: any.
namespace json {

/// Appends a text as a JSON string, or as {"codePoints":[...]} if no JSON string can represent it.
CONTROLLER_API void AppendText(std::wstring_view text, std::wstring& json);

/// Appends the name of a member, in quotes and with its colon. A text that no JSON string can represent becomes the
/// most similar one.
CONTROLLER_API void AppendName(std::wstring_view name, std::wstring& json);

CONTROLLER_API void AppendNumber(std::int64_t number, std::wstring& json);

/// Reserves memory for a text that will be this long.
CONTROLLER_API void Reserve(std::size_t size, std::wstring& json);

/// Appends any value that a `Layout` supports.
template <typename Value>
void Append(const Value& value, std::wstring& json);

/// The names of a record's members, each with its colon: '"id":'.
template <typename Record>
const std::vector<std::wstring>& MemberNames() {
    static const std::vector<std::wstring> names = std::apply(
        [](const auto&... member) {
            std::vector<std::wstring> texts;
            const auto add = [&texts](std::string_view name) {
                AppendName(std::wstring(name.begin(), name.end()), texts.emplace_back());
            };
            (add(member.name), ...);
            return texts;
        },
        Layout<Record>::members);
    return names;
}

template <typename Record, typename Owner, typename Value, typename Rule>
void AppendMember(const Record& record, const Member<Owner, Value, Rule>& member, std::wstring& json) {
    Append(record.*member.pointer, json);
}

template <typename Record>
void AppendMember(const Record&, const Version&, std::wstring& json) {
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
void AppendMembers(const Record& record, std::wstring& json) {
    auto name = MemberNames<Record>().begin();
    const auto append = [&](const auto& member) {
        if (!IsOmitted(record, member)) {
            if (json.back() != L'{') {
                json += L',';
            }
            json += *name;
            AppendMember(record, member, json);
        }
        ++name;
    };
    std::apply([&](const auto&... member) { (append(member), ...); }, Layout<Record>::members);
}

template <typename Record>
void AppendRecord(const Record& record, std::wstring& json) {
    json += L'{';
    AppendMembers(record, json);
    json += L'}';
}

template <typename Value>
void AppendMap(const std::map<std::wstring, Value>& map, std::wstring& json) {
    json += L'{';
    for (const auto& [name, value] : map) {
        if (json.back() != L'{') {
            json += L',';
        }
        AppendName(name, json);
        Append(value, json);
    }
    json += L'}';
}

/// Lists can take megabytes: the memory for the whole list is reserved from the size of its first elements.
template <typename Element>
void AppendList(const std::vector<Element>& list, std::wstring& json) {
    constexpr std::size_t sample = 32;
    const std::size_t begin = json.size();
    json += L'[';
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (i == sample) {
            Reserve(json.size() + (json.size() - begin) / sample * (list.size() - i) * 17 / 16, json);
        }
        if (i > 0) {
            json += L',';
        }
        Append(list[i], json);
    }
    json += L']';
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
void Append(const Value& value, std::wstring& json) {
    if constexpr (std::is_same_v<Value, std::wstring>) {
        AppendText(value, json);
    } else if constexpr (std::is_null_pointer_v<Value>) {
        json += L"null";
    } else if constexpr (std::is_same_v<Value, bool>) {
        json += value ? L"true" : L"false";
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
