#pragma once

#include <array>
#include <charconv>
#include <concepts>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "formats/json/Layout.h"
#include "text/Wtf8.h"

/// Type descriptions for the reader, so that one function reads all types.
namespace json {

struct TypeDescriptor;

/// The destination of the next value. A value without a descriptor is ignored.
struct Slot {
    const TypeDescriptor* descriptor = nullptr;
    void* object = nullptr;
};

struct MemberDescriptor {
    std::string_view name;
    Slot (*slot)(void* record);
    Presence presence;
};

/// How a type reads each kind of JSON value. A null function rejects the kind; a function that returns false rejects
/// the value.
struct TypeDescriptor {
    /// The description of the accepted values, for error messages.
    const wchar_t* expected;
    bool (*text)(void* object, std::string_view marked) = nullptr;
    bool (*number)(void* object, std::string_view digits) = nullptr;
    bool (*boolean)(void* object, bool value) = nullptr;
    /// Lists: adds one element and returns its slot.
    Slot (*element)(void* object) = nullptr;
    /// Records: at most 64 members.
    const MemberDescriptor* members = nullptr;
    std::size_t memberCount = 0;
    /// Objects with members of any name: adds one member and returns its slot, which has no descriptor if the member is
    /// one too many.
    Slot (*entry)(void* object, std::string_view marked) = nullptr;
    /// Objects: returns false if a required part is missing at the end; `incomplete` then describes what was found.
    bool (*isComplete)(const void* object) = nullptr;
    const wchar_t* incomplete = nullptr;
};

template <typename Value, typename Rule = AnyValue>
struct TypeDescriptorOf;

template <typename Rule = AnyValue, typename Value>
Slot SlotOf(Value& value) {
    return {&TypeDescriptorOf<Value, Rule>::descriptor, &value};
}
template <typename Rule = AnyValue, typename Value>
Slot SlotOf(std::optional<Value>& value) {
    return SlotOf<Rule>(value.emplace());
}
/// The list in the text takes the place of the elements that the default has.
template <typename Rule = AnyValue, typename Element>
Slot SlotOf(std::vector<Element>& list) {
    list.clear();
    return {&TypeDescriptorOf<std::vector<Element>, Rule>::descriptor, &list};
}

/// Parses a whole number; returns false if `digits` is not one or the type cannot hold it.
template <std::integral Number>
[[nodiscard]] bool ParseWholeNumber(std::string_view digits, Number& number) {
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return result.ec == std::errc() && result.ptr == digits.data() + digits.size();
}

template <typename Number>
constexpr const wchar_t* expectedNumber = L"a whole number";
template <>
inline constexpr const wchar_t* expectedNumber<std::int32_t> = L"a whole number from -2147483648 to 2147483647";
template <>
inline constexpr const wchar_t* expectedNumber<std::int64_t> =
    L"a whole number from -9223372036854775808 to 9223372036854775807";

template <std::integral Number>
struct TypeDescriptorOf<Number> {
    [[nodiscard]] static bool Read(void* object, std::string_view digits) {
        return ParseWholeNumber(digits, *static_cast<Number*>(object));
    }
    static constexpr TypeDescriptor descriptor{.expected = expectedNumber<Number>, .number = Read};
};

template <typename Enumeration>
requires std::is_enum_v<Enumeration>
struct TypeDescriptorOf<Enumeration> {
    using Number = std::underlying_type_t<Enumeration>;
    [[nodiscard]] static bool Read(void* object, std::string_view digits) {
        Number number = 0;
        const bool isNumber = ParseWholeNumber(digits, number);
        *static_cast<Enumeration*>(object) = static_cast<Enumeration>(number);
        return isNumber;
    }
    static constexpr TypeDescriptor descriptor{.expected = expectedNumber<Number>, .number = Read};
};

template <>
struct TypeDescriptorOf<bool> {
    [[nodiscard]] static bool Read(void* object, bool value) {
        *static_cast<bool*>(object) = value;
        return true;
    }
    static constexpr TypeDescriptor descriptor{.expected = L"true or false", .boolean = Read};
};

/// Reads a text that no JSON string can represent, written as a list of its elements.
struct CodePoint {
    [[nodiscard]] static bool Read(void* text, std::string_view digits);
    static Slot Next(void* text) { return {&descriptor, text}; }
    static Slot List(void* text) { return {&listDescriptor, text}; }

    static const TypeDescriptor descriptor;
    static const TypeDescriptor listDescriptor;
    static const std::array<MemberDescriptor, 1> members;
};

template <>
struct TypeDescriptorOf<std::wstring> {
    [[nodiscard]] static bool Read(void* object, std::string_view marked) {
        text::AppendTrustedWtf8(marked, *static_cast<std::wstring*>(object));
        return true;
    }
    static bool HasCodePoints(const void* object) { return !static_cast<const std::wstring*>(object)->empty(); }
    static const TypeDescriptor descriptor;
};

template <typename Rule>
concept RestrictsNames = requires(const std::wstring& name) {
    Rule::AcceptsName(name);
};

template <typename Element, typename Rule>
struct TypeDescriptorOf<std::vector<Element>, Rule> {
    static Slot Append(void* object) {
        return SlotOf<Rule>(static_cast<std::vector<Element>*>(object)->emplace_back());
    }
    static constexpr TypeDescriptor descriptor{.expected = L"a list", .element = Append};
};

template <typename Value, typename Rule>
struct TypeDescriptorOf<std::map<std::wstring, Value>, Rule> {
    static Slot Insert(void* object, std::string_view marked) {
        const std::wstring name = text::FromTrustedWtf8(marked);
        if constexpr (RestrictsNames<Rule>) {
            static constexpr TypeDescriptor badNameDescriptor{.expected = Rule::expectedName};
            if (!Rule::AcceptsName(name)) {
                return {&badNameDescriptor, object};
            }
        }
        const auto [entry, isNew] = static_cast<std::map<std::wstring, Value>*>(object)->try_emplace(name);
        return isNew ? SlotOf<Rule>(entry->second) : Slot();
    }
    static constexpr TypeDescriptor descriptor{.expected = L"an object", .entry = Insert};
};

template <typename Rule>
concept RestrictsValues = requires {
    Rule::expected;
};

/// A text, number or word that a rule restricts.
template <typename Value, RestrictsValues Rule>
struct TypeDescriptorOf<Value, Rule> {
    static constexpr bool isText = std::is_same_v<Value, std::wstring>;
    static constexpr bool hasWords = requires(Value & value, std::string_view word) { Rule::ReadText(value, word); };

    [[nodiscard]] static bool ReadText(void* object, std::string_view marked) {
        Value& value = *static_cast<Value*>(object);
        if constexpr (hasWords) {
            return Rule::ReadText(value, marked);
        } else if constexpr (isText) {
            value = text::FromTrustedWtf8(marked);
            return Rule::Accepts(value);
        } else {
            return false;
        }
    }

    [[nodiscard]] static bool ReadNumber(void* object, std::string_view digits) {
        Value& value = *static_cast<Value*>(object);
        if constexpr (std::integral<Value>) {
            return ParseWholeNumber(digits, value) && Rule::Accepts(value);
        } else {
            return false;
        }
    }

    static constexpr TypeDescriptor descriptor{.expected = Rule::expected,
                                               .text = isText || hasWords ? ReadText : nullptr,
                                               .number = std::integral<Value> ? ReadNumber : nullptr};
};

/// A record with a `Layout`, or with the members that a rule says.
template <typename Record, typename Rule>
struct TypeDescriptorOf {
    using Fields = std::conditional_t<std::is_same_v<Rule, AnyValue>, Layout<Record>, Rule>;

    template <std::size_t index>
    static Slot MemberSlot(void* record) {
        constexpr auto member = std::get<index>(Fields::members);
        if constexpr (std::is_same_v<decltype(member), const Version>) {
            return {&versionDescriptor, record};
        } else {
            return SlotOf<typename decltype(member)::Rule>(static_cast<Record*>(record)->*member.pointer);
        }
    }

    [[nodiscard]] static bool ReadVersion(void*, std::string_view digits) {
        std::int32_t version = 0;
        return ParseWholeNumber(digits, version) && version >= 1 && version <= Version::newest;
    }

    static constexpr std::size_t memberCount = std::tuple_size_v<decltype(Fields::members)>;
    static_assert(memberCount <= 64);

    template <std::size_t... index>
    static constexpr std::array<MemberDescriptor, memberCount> Members(std::index_sequence<index...>) {
        return {MemberDescriptor{std::get<index>(Fields::members).name, MemberSlot<index>,
                                 std::get<index>(Fields::members).presence}...};
    }

    static constexpr TypeDescriptor versionDescriptor{.expected = L"version 1, the newest that this program knows",
                                                      .number = ReadVersion};
    static constexpr std::array<MemberDescriptor, memberCount> members =
        Members(std::make_index_sequence<memberCount>());
    static constexpr TypeDescriptor descriptor{
        .expected = L"an object", .members = members.data(), .memberCount = memberCount};
};

/// A message: an object with exactly one member of any name.
template <typename Value>
struct Envelope {
    std::optional<Value> content;
};

template <typename Value>
struct TypeDescriptorOf<Envelope<Value>> {
    static Slot Open(void* object, std::string_view) {
        auto& content = static_cast<Envelope<Value>*>(object)->content;
        return content ? Slot() : SlotOf(content);
    }
    static bool IsOpened(const void* object) {
        return static_cast<const Envelope<Value>*>(object)->content.has_value();
    }
    static constexpr TypeDescriptor descriptor{.expected = L"an object with one member",
                                               .entry = Open,
                                               .isComplete = IsOpened,
                                               .incomplete = L"an empty object"};
};

} // namespace json
