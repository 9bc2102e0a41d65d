#pragma once

#include <string_view>

#include "formats/json/Shape.h"

namespace json {

/// The member of a record that somebody may have meant by `name`, which no member has: the one with the fewest letters
/// to insert, remove or replace, without regard to the case of ASCII letters. Empty when none is like it.
std::string_view NearestMember(const Shape& record, std::string_view name);

} // namespace json
