#include "formats/json/PlaceFinder.h"

#include <algorithm>

namespace json {

bool PlaceFinder::Key(const char* marked, rapidjson::SizeType length, bool) {
    if (onWay == depth && depth <= way.size()) {
        const char* const member = way[depth - 1].member;
        levels[depth - 1].isKeyMeant = member != nullptr && std::string_view(marked, length) == member;
    }
    return true;
}

bool PlaceFinder::IsStep() {
    if (depth == 0) {
        return true;
    }
    Level& level = levels[depth - 1];
    const std::size_t element = level.begun++;
    if (onWay < depth || depth > way.size()) {
        return false;
    }
    const Step& step = way[depth - 1];
    return level.isList ? step.member == nullptr && step.element == element : level.isKeyMeant;
}

bool PlaceFinder::Begin(std::size_t taken) {
    if (IsStep() && depth == way.size()) {
        offset = stream.Tell() - taken;
    }
    return !offset;
}

bool PlaceFinder::Open(bool isList) {
    const bool isStep = IsStep();
    if (isStep && depth == way.size()) {
        offset = stream.Tell();
    }
    if (offset || depth == deepest) {
        return false;
    }
    levels[depth++] = {isList, 0, false};
    onWay += isStep ? 1 : 0;
    return true;
}

bool PlaceFinder::Close() {
    onWay = std::min(onWay, --depth);
    return true;
}

} // namespace json
