#pragma once

#include <string_view>

#include "formats/json/TypeDescriptor.h"

namespace json {

/// Suggests a member for the unknown name `name`: the one with the fewest letters to insert, remove or replace,
/// ignoring the case of ASCII letters. Returns an empty name if no member is similar.
std::string_view NearestMember(const TypeDescriptor& record, std::string_view name);

} // namespace json
