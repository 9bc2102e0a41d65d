#include "CommonControllerLib/JobEntry.h"

#include "platform/system/Clock.h"

#include <cwchar>

void JobEntry::SetStartTime(const std::int64_t& time) {
    info.startTime = CreateTimeString(time);
}

void JobEntry::SetEndTime(const std::int64_t& time) {
    info.endTime = CreateTimeString(time);
}

std::int64_t JobEntry::GetStartTime() {
    return ConvertTimeStringToStruct(info.startTime);
}

std::wstring JobEntry::CreateTimeString(const std::int64_t& time) {
    return platform::UtcTimestamp(time);
}

std::int64_t JobEntry::ConvertTimeStringToStruct(const std::wstring& text) {
    // Missing fields stay zero; a time with all fields missing lies before 1970 and yields -1.
    platform::CalendarTime fields;
    std::swscanf(text.c_str(), L"%04d-%02d-%02dT%02d:%02d:%02d", &fields.year, &fields.month, &fields.day, &fields.hour,
                 &fields.minute, &fields.second);
    return platform::FromLocal(fields);
}
