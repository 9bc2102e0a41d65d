#pragma once

#include "formats/json/Shape.h"

#include <string>
#include <string_view>

/// A value of a file that people write. A value that the rule rejects is reported with its line and column. A rule
/// defines the type, the default, the accepted values, and their description for people:
///
///     struct Days {
///         using Value = std::int32_t;
///         static constexpr Value initial = 30;
///         static constexpr auto expected = L"a whole number from 1 to 36500";
///         static bool Accepts(Value days) { return days >= 1 && days <= 36500; }
///     };
template <typename Rule>
struct CheckedValue {
    typename Rule::Value value{Rule::initial};
};

namespace json {

template <typename Rule>
struct ShapeOf<CheckedValue<Rule>> {
    using Value = typename Rule::Value;

    [[nodiscard]] static bool Read(void* object, std::string_view token) {
        Value& value = static_cast<CheckedValue<Rule>*>(object)->value;
        if constexpr (std::is_same_v<Value, std::wstring>) {
            value = text::FromTrustedWtf8(token);
            return Rule::Accepts(value);
        } else {
            return ParseWholeNumber(token, value) && Rule::Accepts(value);
        }
    }

    static constexpr bool isText = std::is_same_v<Value, std::wstring>;
    static constexpr Shape shape{
        .expected = Rule::expected, .text = isText ? Read : nullptr, .number = isText ? nullptr : Read};
};

} // namespace json
