#include "formats/json/Shape.h"

namespace json {

bool CodePoint::Read(void* text, std::string_view digits) {
    std::uint32_t codePoint = 0;
    return ParseWholeNumber(digits, codePoint) && AppendCodePoint(codePoint, *static_cast<std::wstring*>(text));
}

const Shape CodePoint::shape{.expected = L"a code point", .number = Read};
const Shape CodePoint::listShape{.expected = L"a list", .element = Next};
const std::array<MemberShape, 1> CodePoint::members = {MemberShape{"codePoints", List, Presence::Optional}};

const Shape ShapeOf<std::wstring>::shape{.expected = L"text",
                                         .text = Read,
                                         .members = CodePoint::members.data(),
                                         .memberCount = CodePoint::members.size(),
                                         .isComplete = HasCodePoints,
                                         .incomplete = L"an object"};

} // namespace json
