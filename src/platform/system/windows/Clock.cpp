#include "platform/system/Clock.h"

namespace platform {

std::tm UtcParts(std::int64_t time) {
    std::tm parts = {};
    _gmtime64_s(&parts, &time);
    return parts;
}

std::tm LocalParts(std::int64_t time) {
    std::tm parts = {};
    _localtime64_s(&parts, &time);
    return parts;
}

std::int64_t TimeOfLocalParts(std::tm parts) {
    parts.tm_isdst = 0;
    return _mktime64(&parts);
}

} // namespace platform
