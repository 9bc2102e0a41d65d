#pragma once

#include <cstddef>
#include <string>

#include "formats/json/Writing.h"

namespace front_end {

/// Rewrites what `json::Append` has written from `begin` on without lone surrogates, which strict readers refuse even
/// as escapes. A text that has one becomes {"codePoints":[...]}; in a name U+FFFD replaces it.
void MakePortable(std::wstring& json, std::size_t begin = 0);

/// A value for programs of others.
template <typename Value>
std::wstring PortableJson(const Value& value) {
    std::wstring json = json::Write(value);
    MakePortable(json);
    return json;
}

/// A document for programs of others, on a line of its own.
template <typename Document>
std::wstring PortableLine(const Document& document) {
    return PortableJson(document) + L"\n";
}

} // namespace front_end
