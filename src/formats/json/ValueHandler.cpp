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

bool IsObject(const TypeDescriptor& descriptor) {
    return descriptor.memberCount > 0 || descriptor.entry != nullptr;
}

/// Returns the index of the member of that name, `memberCount` if there is none. Starts at `hint`, because members
/// mostly come in their declared order.
std::size_t FindMember(const TypeDescriptor& descriptor, std::string_view name, std::size_t hint) {
    for (std::size_t i = 0; i < descriptor.memberCount; ++i) {
        const std::size_t index = hint + i < descriptor.memberCount ? hint + i : hint + i - descriptor.memberCount;
        if (descriptor.members[index].name == name) {
            return index;
        }
    }
    return descriptor.memberCount;
}

} // namespace

bool ValueHandler::Null() {
    const Slot slot = TakeSlot();
    return !slot.descriptor || RefuseType(*slot.descriptor, L"null", 4);
}

bool ValueHandler::Bool(bool value) {
    const Slot slot = TakeSlot();
    if (slot.descriptor && !(slot.descriptor->boolean && slot.descriptor->boolean(slot.object, value))) {
        return RefuseType(*slot.descriptor, value ? L"true" : L"false", value ? 4 : 5);
    }
    return true;
}

bool ValueHandler::RawNumber(const char* digits, rapidjson::SizeType length, bool) {
    const Slot slot = TakeSlot();
    if (!slot.descriptor) {
        return true;
    }
    const std::string_view number(digits, length);
    if (!slot.descriptor->number) {
        return RefuseType(*slot.descriptor, L"a number");
    }
    if (!slot.descriptor->number(slot.object, number)) {
        return RefuseType(*slot.descriptor, Quote(number));
    }
    return Keep(1);
}

bool ValueHandler::String(const char* marked, rapidjson::SizeType length, bool) {
    const Slot slot = TakeSlot();
    if (!slot.descriptor) {
        return true;
    }
    if (!slot.descriptor->text || !slot.descriptor->text(slot.object, {marked, length})) {
        return RefuseType(*slot.descriptor, L"text");
    }
    return Keep(1);
}

bool ValueHandler::StartObject() {
    const Slot slot = TakeSlot();
    if (slot.descriptor && !IsObject(*slot.descriptor)) {
        return RefuseType(*slot.descriptor, L"an object");
    }
    return Push(slot);
}

bool ValueHandler::StartArray() {
    const Slot slot = TakeSlot();
    if (slot.descriptor && !slot.descriptor->element) {
        return RefuseType(*slot.descriptor, L"a list");
    }
    return Push(slot);
}

bool ValueHandler::Key(const char* marked, rapidjson::SizeType length, bool) {
    Level& level = levels[depth - 1];
    const TypeDescriptor* const descriptor = level.slot.descriptor;
    const std::string_view name(marked, length);
    level.member = Slot();
    level.name = std::string_view();
    if (!descriptor) {
        return true;
    }
    return (descriptor->entry ? KeyOfEntry(level, name) : KeyOfRecord(level, name));
}

bool ValueHandler::KeyOfRecord(Level& level, std::string_view marked) {
    const TypeDescriptor& descriptor = *level.slot.descriptor;
    const std::size_t index = FindMember(descriptor, marked, level.next);
    if (index == descriptor.memberCount) {
        NoteUnknown(descriptor, marked);
        return true;
    }
    if ((level.seen & Bit(index)) != 0) {
        return Refuse(L"the member \"" + Quote(marked) + L"\" is repeated");
    }
    level.seen |= Bit(index);
    level.next = index + 1;
    level.name = descriptor.members[index].name;
    level.member = descriptor.members[index].slot(level.slot.object);
    return true;
}

void ValueHandler::NoteUnknown(const TypeDescriptor& record, std::string_view marked) {
    if (unknownMembers.size() < mostUnknown) {
        const std::wstring path = Path();
        const std::wstring name = Quote(marked);
        unknownMembers.push_back(
            {stream.Tell(), (path.empty() ? L"" : path + L".") + name, name, Quote(NearestMember(record, marked))});
    }
}

bool ValueHandler::KeyOfEntry(Level& level, std::string_view marked) {
    level.member = level.slot.descriptor->entry(level.slot.object, marked);
    if (!level.member.descriptor) {
        return Refuse(L"the member \"" + Quote(marked) + L"\" is one too many");
    }
    level.ownName = marked;
    level.name = level.ownName;
    return true;
}

bool ValueHandler::EndObject(rapidjson::SizeType) {
    Level& level = levels[depth - 1];
    const TypeDescriptor* const descriptor = level.slot.descriptor;
    level.name = std::string_view();
    if (!descriptor) {
        return Pop();
    }
    for (std::size_t i = 0; i < descriptor->memberCount; ++i) {
        if (descriptor->members[i].presence == Presence::Required && (level.seen & Bit(i)) == 0) {
            return Refuse(L"the member \"" + Quote(descriptor->members[i].name) + L"\" is missing");
        }
    }
    if (descriptor->isComplete && !descriptor->isComplete(level.slot.object)) {
        return RefuseType(*descriptor, descriptor->incomplete);
    }
    return Pop();
}

bool ValueHandler::EndArray(rapidjson::SizeType) {
    return Pop();
}

Slot ValueHandler::TakeSlot() {
    if (depth == 0) {
        return root;
    }
    Level& level = levels[depth - 1];
    const TypeDescriptor* const descriptor = level.slot.descriptor;
    if (!descriptor || !descriptor->element) {
        return level.member;
    }
    ++level.next;
    return descriptor->element(level.slot.object);
}

bool ValueHandler::Push(Slot slot) {
    if (depth == deepest) {
        return Refuse(L"nested deeper than " + std::to_wstring(deepest) + L" levels");
    }
    if (slot.descriptor && !Keep(IsObject(*slot.descriptor) ? recordWeight : 1)) {
        return false;
    }
    Level& level = levels[depth++];
    level.slot = slot;
    level.member = Slot();
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

bool ValueHandler::RefuseType(const TypeDescriptor& descriptor, const std::wstring& found, std::size_t taken) {
    return Refuse(std::wstring(L"expected ") + descriptor.expected + L", found " + found, taken);
}

std::wstring ValueHandler::Path() const {
    std::wstring path;
    for (std::size_t i = 0; i < depth; ++i) {
        const Level& level = levels[i];
        if (level.slot.descriptor && level.slot.descriptor->element) {
            path += L"[" + std::to_wstring(level.next - std::min<std::size_t>(level.next, 1)) + L"]";
        } else if (!level.name.empty()) {
            path += (path.empty() ? L"" : L".") + Quote(level.name);
        }
    }
    return path;
}

} // namespace json
