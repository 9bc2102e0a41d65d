#include "formats/WebRequests.h"

#include <algorithm>
#include <string_view>
#include <tuple>

#include "formats/Boundary.h"
#include "formats/json/Reading.h"
#include "formats/json/SchedulingLayouts.h"

namespace web_requests {
namespace {

struct JobsNamed {
    std::vector<std::wstring> ids;
};

struct EditBody : JobsEdit {};

/// Of numbers and ids.
struct NameRule {
    static constexpr auto expected = L"the id or number of a job";
    static bool Accepts(const std::wstring& name) {
        return !name.empty() && name.size() <= 64 && std::all_of(name.begin(), name.end(), IsNameCharacter);
    }
    static bool IsNameCharacter(wchar_t character) {
        return (character >= L'0' && character <= L'9') || (character >= L'a' && character <= L'z') ||
               (character >= L'A' && character <= L'Z');
    }
};

} // namespace
} // namespace web_requests

namespace json {

template <>
struct Layout<web_requests::JobsNamed> {
    static constexpr auto members =
        std::make_tuple(Member{"ids", &web_requests::JobsNamed::ids, rule<web_requests::NameRule>, Presence::Required});
};

template <>
struct Layout<web_requests::EditBody> {
    using Record = web_requests::EditBody;
    static constexpr auto members = std::make_tuple(
        Member{"ids", &JobsEdit::jobs, rule<web_requests::NameRule>, Presence::Required},
        OptionalMember{"priority", &JobsEdit::priority, rule<PriorityRule>}, OptionalMember{"hold", &JobsEdit::hold},
        OptionalMember{"notBefore", &JobsEdit::notBefore, rule<NotBeforeRule>},
        OptionalMember{"needs", &JobsEdit::needs, rule<NeedRule>});
};

} // namespace json

namespace web_requests {
namespace {

template <typename Body>
bool ReadBody(std::string bytes, Body& body, std::wstring& problem) {
    std::vector<std::wstring> unknownMembers;
    if (!json::Read(std::move(bytes), body, problem, &unknownMembers)) {
        return false;
    }
    if (!unknownMembers.empty()) {
        problem = unknownMembers.front();
    }
    return unknownMembers.empty();
}

bool HasJobs(const std::vector<std::wstring>& jobs, std::wstring& problem) {
    const bool isRight = !jobs.empty() && jobs.size() <= mostJobs;
    if (!isRight) {
        problem = L"ids: expected 1 to " + std::to_wstring(mostJobs) + L" jobs, found " + std::to_wstring(jobs.size());
    }
    return isRight;
}

} // namespace

bool ReadJobs(std::string body, std::vector<std::wstring>& jobs, std::wstring& problem) {
    return boundary::Guard("ReadJobs", [&] {
        JobsNamed named;
        if (!ReadBody(std::move(body), named, problem) || !HasJobs(named.ids, problem)) {
            return false;
        }
        jobs = std::move(named.ids);
        return true;
    });
}

bool ReadEdit(std::string body, JobsEdit& edit, std::wstring& problem) {
    return boundary::Guard("ReadEdit", [&] {
        EditBody read;
        if (!ReadBody(std::move(body), read, problem) || !HasJobs(read.jobs, problem)) {
            return false;
        }
        if (!(read.priority || read.hold || read.notBefore || read.needs)) {
            problem = L"expected priority, hold, notBefore or needs beside ids";
            return false;
        }
        edit = std::move(read);
        return true;
    });
}

bool ReadQueueState(std::string body, QueueState& state, std::wstring& problem) {
    return boundary::Guard("ReadQueueState", [&] {
        QueueState read;
        if (!ReadBody(std::move(body), read, problem)) {
            return false;
        }
        state = read;
        return true;
    });
}

} // namespace web_requests
