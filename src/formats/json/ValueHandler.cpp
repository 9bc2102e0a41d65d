#include "formats/json/ValueHandler.h"

#include <algorithm>

#include "formats/json/NearestMember.h"
#include "text/Wtf8.h"

namespace json {

namespace {

/// Names and numbers quoted in error messages are cut to this length.
constexpr std::size_t longestQuote = 60;

std::wstring Quote(std::string_view marked) {
    std::wstring text = text::FromTrustedWtf8(marked);
    if (text.size() > longestQuote) {
        text.resize(longestQuote);
        text += L"...";
    }
    return text;
}

std::uint64_t Bit(std::size_t index) {
    return std::uint64_t{1} << index;
}

bool IsObject(const Shape& shape) {
    return shape.memberCount > 0 || shape.entry != nullptr;
}

/// Returns the index of the member of that name, `memberCount` if there is none. Starts at `hint`, because members
/// mostly come in their declared order.
std::size_t FindMember(const Shape& shape, std::string_view name, std::size_t hint) {
    for (std::size_t i = 0; i < shape.memberCount; ++i) {
        const std::size_t index = hint + i < shape.memberCount ? hint + i : hint + i - shape.memberCount;
        if (shape.members[index].name == name) {
            return index;
        }
    }
    return shape.memberCount;
}

} // namespace

bool ValueHandler::Null() {
    const Target target = TakeTarget();
    return !target.shape || RefuseType(*target.shape, L"null", 4);
}

bool ValueHandler::Bool(bool value) {
    const Target target = TakeTarget();
    if (target.shape && !(target.shape->boolean && target.shape->boolean(target.object, value))) {
        return RefuseType(*target.shape, value ? L"true" : L"false", value ? 4 : 5);
    }
    return true;
}

bool ValueHandler::RawNumber(const char* digits, rapidjson::SizeType length, bool) {
    const Target target = TakeTarget();
    if (!target.shape) {
        return true;
    }
    const std::string_view number(digits, length);
    if (!target.shape->number) {
        return RefuseType(*target.shape, L"a number");
    }
    if (!target.shape->number(target.object, number)) {
        return RefuseType(*target.shape, Quote(number));
    }
    return Keep(1);
}

bool ValueHandler::String(const char* marked, rapidjson::SizeType length, bool) {
    const Target target = TakeTarget();
    if (!target.shape) {
        return true;
    }
    if (!target.shape->text || !target.shape->text(target.object, {marked, length})) {
        return RefuseType(*target.shape, L"text");
    }
    return Keep(1);
}

bool ValueHandler::StartObject() {
    const Target target = TakeTarget();
    if (target.shape && !IsObject(*target.shape)) {
        return RefuseType(*target.shape, L"an object");
    }
    return Push(target);
}

bool ValueHandler::StartArray() {
    const Target target = TakeTarget();
    if (target.shape && !target.shape->element) {
        return RefuseType(*target.shape, L"a list");
    }
    return Push(target);
}

bool ValueHandler::Key(const char* marked, rapidjson::SizeType length, bool) {
    Level& level = levels[depth - 1];
    const Shape* const shape = level.target.shape;
    const std::string_view name(marked, length);
    level.member = Target();
    level.name = std::string_view();
    if (!shape) {
        return true;
    }
    return (shape->entry ? KeyOfEntry(level, name) : KeyOfRecord(level, name));
}

bool ValueHandler::KeyOfRecord(Level& level, std::string_view marked) {
    const Shape& shape = *level.target.shape;
    const std::size_t index = FindMember(shape, marked, level.next);
    if (index == shape.memberCount) {
        NoteUnknown(shape, marked);
        return true;
    }
    if ((level.seen & Bit(index)) != 0) {
        return Refuse(L"the member \"" + Quote(marked) + L"\" is repeated");
    }
    level.seen |= Bit(index);
    level.next = index + 1;
    level.name = shape.members[index].name;
    level.member = shape.members[index].target(level.target.object);
    return true;
}

void ValueHandler::NoteUnknown(const Shape& record, std::string_view marked) {
    if (unknownMembers.size() < mostUnknown) {
        const std::wstring path = Path();
        const std::wstring name = Quote(marked);
        unknownMembers.push_back(
            {stream.Tell(), (path.empty() ? L"" : path + L".") + name, name, Quote(NearestMember(record, marked))});
    }
}

bool ValueHandler::KeyOfEntry(Level& level, std::string_view marked) {
    level.member = level.target.shape->entry(level.target.object, marked);
    if (!level.member.shape) {
        return Refuse(L"the member \"" + Quote(marked) + L"\" is one too many");
    }
    level.ownName = marked;
    level.name = level.ownName;
    return true;
}

bool ValueHandler::EndObject(rapidjson::SizeType) {
    Level& level = levels[depth - 1];
    const Shape* const shape = level.target.shape;
    level.name = std::string_view();
    if (!shape) {
        return Pop();
    }
    for (std::size_t i = 0; i < shape->memberCount; ++i) {
        if (shape->members[i].presence == Presence::Required && (level.seen & Bit(i)) == 0) {
            return Refuse(L"the member \"" + Quote(shape->members[i].name) + L"\" is missing");
        }
    }
    if (shape->isComplete && !shape->isComplete(level.target.object)) {
        return RefuseType(*shape, shape->incomplete);
    }
    return Pop();
}

bool ValueHandler::EndArray(rapidjson::SizeType) {
    return Pop();
}

Target ValueHandler::TakeTarget() {
    if (depth == 0) {
        return root;
    }
    Level& level = levels[depth - 1];
    const Shape* const shape = level.target.shape;
    if (!shape || !shape->element) {
        return level.member;
    }
    ++level.next;
    return shape->element(level.target.object);
}

bool ValueHandler::Push(Target target) {
    if (depth == deepest) {
        return Refuse(L"nested deeper than " + std::to_wstring(deepest) + L" levels");
    }
    if (target.shape && !Keep(IsObject(*target.shape) ? recordWeight : 1)) {
        return false;
    }
    Level& level = levels[depth++];
    level.target = target;
    level.member = Target();
    level.next = 0;
    level.seen = 0;
    level.name = std::string_view();
    return true;
}

bool ValueHandler::Pop() {
    --depth;
    return true;
}

bool ValueHandler::Keep(std::size_t weight) {
    kept += weight;
    return kept <= mostKept || Refuse(L"more values than this program takes");
}

bool ValueHandler::Refuse(const std::wstring& what, std::size_t taken) {
    problemOffset = stream.Tell() - taken;
    const std::wstring path = Path();
    problem = path.empty() ? what : path + L": " + what;
    return false;
}

bool ValueHandler::RefuseType(const Shape& shape, const std::wstring& found, std::size_t taken) {
    return Refuse(std::wstring(L"expected ") + shape.expected + L", found " + found, taken);
}

std::wstring ValueHandler::Path() const {
    std::wstring path;
    for (std::size_t i = 0; i < depth; ++i) {
        const Level& level = levels[i];
        if (level.target.shape && level.target.shape->element) {
            path += L"[" + std::to_wstring(level.next - std::min<std::size_t>(level.next, 1)) + L"]";
        } else if (!level.name.empty()) {
            path += (path.empty() ? L"" : L".") + Quote(level.name);
        }
    }
    return path;
}

} // namespace json
