#include "formats/json/TypeDescriptor.h"

#include <limits>

#include "text/CodeUnits.h"

namespace json {
namespace {

/// The largest value that one element of a wide text, or a surrogate pair, can hold.
constexpr std::uint32_t largestElement =
    text::hasUtf16Elements ? text::lastCodePoint : std::numeric_limits<std::uint32_t>::max();

} // namespace

bool CodePoint::Read(void* text, std::string_view digits) {
    std::uint32_t codePoint = 0;
    if (!ParseWholeNumber(digits, codePoint) || codePoint > largestElement) {
        return false;
    }
    text::AppendWide(*static_cast<std::wstring*>(text), codePoint);
    return true;
}

const TypeDescriptor CodePoint::descriptor{.expected = L"a code point", .number = Read};
const TypeDescriptor CodePoint::listDescriptor{.expected = L"a list", .element = Next};
const std::array<MemberDescriptor, 1> CodePoint::members = {MemberDescriptor{"codePoints", List, Presence::Optional}};

const TypeDescriptor TypeDescriptorOf<std::wstring>::descriptor{.expected = L"text",
                                                                .text = Read,
                                                                .members = CodePoint::members.data(),
                                                                .memberCount = CodePoint::members.size(),
                                                                .isComplete = HasCodePoints,
                                                                .incomplete = L"an object"};

} // namespace json
