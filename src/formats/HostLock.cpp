#include "formats/HostLock.h"

#include "formats/Boundary.h"
#include "formats/json/Layout.h"
#include "formats/json/Reading.h"
#include "formats/json/Writing.h"
#include "platform/files/FileLock.h"
#include "platform/processes/ForeignProcess.h"
#include "platform/system/Clock.h"
#include "text/Text.h"

namespace json {

template <>
struct Layout<host_lock::Holder> {
    using Record = host_lock::Holder;
    static constexpr auto members = std::make_tuple(
        Version(), Member{"process", &Record::process}, Member{"processStart", &Record::processStart},
        Member{"since", &Record::since}, Member{"settingsFile", &Record::settingsFile},
        Member{"jobListFile", &Record::jobListFile}, Member{"eventTransmitter", &Record::eventTransmitter},
        Member{"transmitterName", &Record::transmitterName}, Member{"place", &Record::place},
        Member{"isReady", &Record::isReady});
};

} // namespace json

namespace host_lock {
namespace {

constexpr std::size_t largestFile = std::size_t{64} << 10;

void AppendPart(const std::wstring& part, std::wstring& text) {
    text += (text.empty() ? L"" : L", ") + part;
}

} // namespace

std::wstring FileFor(const std::wstring& jobListFile) {
    return jobListFile + L".lock";
}

Holder OwnHolder() {
    const platform::ProcessIdentity own = platform::OwnProcessIdentity();
    Holder holder;
    holder.process = own.number;
    holder.processStart = own.start;
    holder.since = platform::Now();
    return holder;
}

std::string Serialize(const Holder& holder) {
    return boundary::Guard("Serialize", [&] { return text::ToUtf8(json::Write(holder)) + "\n"; });
}

/// Accepts only a file written by a running host: a file left by a host that has ended does not identify the current
/// one.
Holder ReadHolder(const std::wstring& file) {
    return boundary::Guard("ReadHolder", [&] {
        Holder holder;
        std::wstring problem;
        const bool isRead = json::ReadFile(file, largestFile, holder, problem);
        return isRead && OpenHolder(holder) ? holder : Holder();
    });
}

bool FindHolder(const std::wstring& jobListFile, Holder& holder) {
    return boundary::Guard("FindHolder", [&] {
        const std::wstring lockFile = FileFor(jobListFile);
        // The file is read before the lock is tested, so that the test does not disturb a host that starts while the
        // lock is free.
        Holder found = ReadHolder(lockFile);
        if (!platform::IsLocked(lockFile)) {
            return false;
        }
        holder = std::move(found);
        return true;
    });
}

platform::OwnedHandle OpenHolder(const Holder& holder) {
    return boundary::Guard("OpenHolder", [&] {
        return platform::OpenProcess({static_cast<std::uint32_t>(holder.process), holder.processStart});
    });
}

std::wstring Describe(const Holder& holder) {
    return boundary::Guard("Describe", [&] {
        std::wstring text;
        if (holder.process != 0) {
            AppendPart(L"process " + std::to_wstring(holder.process), text);
        }
        if (holder.since != 0) {
            AppendPart(L"since " + platform::UtcText(holder.since), text);
        }
        if (!holder.place.empty()) {
            AppendPart(L"at " + holder.place, text);
        }
        return text;
    });
}

} // namespace host_lock
