#include "formats/json/MemberFinder.h"

#include "formats/json/Parsing.h"
#include "text/Wtf8.h"

namespace json {

bool MemberFinder::String(const char* marked, rapidjson::SizeType length, bool) {
    if (IsWanted()) {
        text = text::FromTrustedWtf8({marked, length});
    }
    return Begin(0);
}

bool MemberFinder::StartObject() {
    return Begin(0) && ++depth <= deepest;
}

bool MemberFinder::Key(const char* marked, rapidjson::SizeType length, bool) {
    if (depth > 1) {
        return true;
    }
    End();
    wanted = text::FromTrustedWtf8({marked, length}) == name;
    return !(wanted && IsFound());
}

bool MemberFinder::EndObject(rapidjson::SizeType) {
    if (depth == 1) {
        End();
    }
    --depth;
    return true;
}

bool MemberFinder::StartArray() {
    return Begin(0) && ++depth <= deepest;
}

bool MemberFinder::EndArray(rapidjson::SizeType) {
    --depth;
    return true;
}

bool MemberFinder::Begin(std::size_t taken) {
    if (IsWanted()) {
        begin = stream.Tell() - taken;
    }
    return true;
}

void MemberFinder::End() {
    if (wanted) {
        end = stream.Tell();
    }
    wanted = false;
}

} // namespace json
