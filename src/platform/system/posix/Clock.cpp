#include "platform/system/Clock.h"

namespace platform {

std::tm UtcParts(std::int64_t time) {
    std::tm parts = {};
    gmtime_r(&time, &parts);
    return parts;
}

std::tm LocalParts(std::int64_t time) {
    std::tm parts = {};
    // localtime_r, unlike localtime, is not required to read TZ again.
    tzset();
    localtime_r(&time, &parts);
    return parts;
}

std::int64_t TimeOfLocalParts(std::tm parts) {
    parts.tm_isdst = 0;
    return mktime(&parts);
}

} // namespace platform
