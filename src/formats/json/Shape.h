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

struct Shape;

/// The destination of the next value. A value without a shape is ignored.
struct Target {
    const Shape* shape = nullptr;
    void* object = nullptr;
};

struct MemberShape {
    std::string_view name;
    Target (*target)(void* record);
    Presence presence;
};

/// How a type reads each kind of JSON value. A null function rejects the kind; a function that returns false rejects
/// the value.
struct Shape {
    /// The description of the accepted values, for error messages.
    const wchar_t* expected;
    bool (*text)(void* object, std::string_view marked) = nullptr;
    bool (*number)(void* object, std::string_view digits) = nullptr;
    bool (*boolean)(void* object, bool value) = nullptr;
    /// Lists: adds one element and returns its target.
    Target (*element)(void* object) = nullptr;
    /// Records: at most 64 members.
    const MemberShape* members = nullptr;
    std::size_t memberCount = 0;
    /// Objects with members of any name: adds one member and returns its target, which has no shape if the member is
    /// one too many.
    Target (*entry)(void* object, std::string_view marked) = nullptr;
    /// Objects: returns false if a required part is missing at the end; `incomplete` then describes what was found.
    bool (*isComplete)(const void* object) = nullptr;
    const wchar_t* incomplete = nullptr;
};

template <typename Value, typename Rule = AnyValue>
struct ShapeOf;

template <typename Rule = AnyValue, typename Value>
Target TargetOf(Value& value) {
    return {&ShapeOf<Value, Rule>::shape, &value};
}
template <typename Rule = AnyValue, typename Value>
Target TargetOf(std::optional<Value>& value) {
    return TargetOf<Rule>(value.emplace());
}
/// The list in the text takes the place of the elements that the default has.
template <typename Rule = AnyValue, typename Element>
Target TargetOf(std::vector<Element>& list) {
    list.clear();
    return {&ShapeOf<std::vector<Element>, Rule>::shape, &list};
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
struct ShapeOf<Number> {
    [[nodiscard]] static bool Read(void* object, std::string_view digits) {
        return ParseWholeNumber(digits, *static_cast<Number*>(object));
    }
    static constexpr Shape shape{.expected = expectedNumber<Number>, .number = Read};
};

template <typename Enumeration>
requires std::is_enum_v<Enumeration>
struct ShapeOf<Enumeration> {
    using Number = std::underlying_type_t<Enumeration>;
    [[nodiscard]] static bool Read(void* object, std::string_view digits) {
        Number number = 0;
        const bool isNumber = ParseWholeNumber(digits, number);
        *static_cast<Enumeration*>(object) = static_cast<Enumeration>(number);
        return isNumber;
    }
    static constexpr Shape shape{.expected = expectedNumber<Number>, .number = Read};
};

template <>
struct ShapeOf<bool> {
    [[nodiscard]] static bool Read(void* object, bool value) {
        *static_cast<bool*>(object) = value;
        return true;
    }
    static constexpr Shape shape{.expected = L"true or false", .boolean = Read};
};

/// Reads a text that no JSON string can represent, written as a list of its elements.
struct CodePoint {
    [[nodiscard]] static bool Read(void* text, std::string_view digits);
    static Target Next(void* text) { return {&shape, text}; }
    static Target List(void* text) { return {&listShape, text}; }

    static const Shape shape;
    static const Shape listShape;
    static const std::array<MemberShape, 1> members;
};

template <>
struct ShapeOf<std::wstring> {
    [[nodiscard]] static bool Read(void* object, std::string_view marked) {
        text::AppendTrustedWtf8(marked, *static_cast<std::wstring*>(object));
        return true;
    }
    static bool HasCodePoints(const void* object) { return !static_cast<const std::wstring*>(object)->empty(); }
    static const Shape shape;
};

template <typename Rule>
concept RestrictsNames = requires(const std::wstring& name) {
    Rule::AcceptsName(name);
};

template <typename Element, typename Rule>
struct ShapeOf<std::vector<Element>, Rule> {
    static Target Append(void* object) {
        return TargetOf<Rule>(static_cast<std::vector<Element>*>(object)->emplace_back());
    }
    static constexpr Shape shape{.expected = L"a list", .element = Append};
};

template <typename Value, typename Rule>
struct ShapeOf<std::map<std::wstring, Value>, Rule> {
    static Target Insert(void* object, std::string_view marked) {
        const std::wstring name = text::FromTrustedWtf8(marked);
        if constexpr (RestrictsNames<Rule>) {
            static constexpr Shape badNameShape{.expected = Rule::expectedName};
            if (!Rule::AcceptsName(name)) {
                return {&badNameShape, object};
            }
        }
        const auto [entry, isNew] = static_cast<std::map<std::wstring, Value>*>(object)->try_emplace(name);
        return isNew ? TargetOf<Rule>(entry->second) : Target();
    }
    static constexpr Shape shape{.expected = L"an object", .entry = Insert};
};

template <typename Rule>
concept RestrictsValues = requires {
    Rule::expected;
};

/// A text, number or word that a rule restricts.
template <typename Value, RestrictsValues Rule>
struct ShapeOf<Value, Rule> {
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

    static constexpr Shape shape{.expected = Rule::expected,
                                 .text = isText || hasWords ? ReadText : nullptr,
                                 .number = std::integral<Value> ? ReadNumber : nullptr};
};

/// A record with a `Layout`, or with the members that a rule says.
template <typename Record, typename Rule>
struct ShapeOf {
    using Fields = std::conditional_t<std::is_same_v<Rule, AnyValue>, Layout<Record>, Rule>;

    template <std::size_t index>
    static Target MemberTarget(void* record) {
        constexpr auto member = std::get<index>(Fields::members);
        if constexpr (std::is_same_v<decltype(member), const Version>) {
            return {&versionShape, record};
        } else {
            return TargetOf<typename decltype(member)::Rule>(static_cast<Record*>(record)->*member.pointer);
        }
    }

    [[nodiscard]] static bool ReadVersion(void*, std::string_view digits) {
        std::int32_t version = 0;
        return ParseWholeNumber(digits, version) && version >= 1 && version <= Version::newest;
    }

    static constexpr std::size_t memberCount = std::tuple_size_v<decltype(Fields::members)>;
    static_assert(memberCount <= 64);

    template <std::size_t... index>
    static constexpr std::array<MemberShape, memberCount> Members(std::index_sequence<index...>) {
        return {MemberShape{std::get<index>(Fields::members).name, MemberTarget<index>,
                            std::get<index>(Fields::members).presence}...};
    }

    static constexpr Shape versionShape{.expected = L"version 1, the newest that this program knows",
                                        .number = ReadVersion};
    static constexpr std::array<MemberShape, memberCount> members = Members(std::make_index_sequence<memberCount>());
    static constexpr Shape shape{.expected = L"an object", .members = members.data(), .memberCount = memberCount};
};

/// A message: an object with exactly one member of any name.
template <typename Value>
struct Envelope {
    std::optional<Value> content;
};

template <typename Value>
struct ShapeOf<Envelope<Value>> {
    static Target Open(void* object, std::string_view) {
        auto& content = static_cast<Envelope<Value>*>(object)->content;
        return content ? Target() : TargetOf(content);
    }
    static bool IsOpened(const void* object) {
        return static_cast<const Envelope<Value>*>(object)->content.has_value();
    }
    static constexpr Shape shape{.expected = L"an object with one member",
                                 .entry = Open,
                                 .isComplete = IsOpened,
                                 .incomplete = L"an empty object"};
};

} // namespace json
