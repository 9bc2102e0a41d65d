#include "formats/json/NearestMember.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "text/NearestName.h"

namespace json {

std::string_view NearestMember(const TypeDescriptor& record, std::string_view name) {
    std::vector<std::string_view> names;
    std::transform(record.members, record.members + record.memberCount, std::back_inserter(names),
                   [](const auto& member) { return std::string_view(member.name); });
    return text::NearestName(names, name);
}

} // namespace json
