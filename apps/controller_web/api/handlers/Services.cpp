#include "controller_web/api/handlers/Services.h"

#include <algorithm>

#include "controller_web/api/Answers.h"
#include "text/Text.h"

namespace web {
namespace {

/// Other texts would be errors of the host, or name several jobs.
std::wstring NameOf(const std::string& name) {
    constexpr std::string_view characters = "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
    constexpr std::size_t longest = 64;
    if (name.empty() || name.size() > longest || name.find_first_not_of(characters) != std::string::npos) {
        throw NotFound(L"There is no job with this id or number.");
    }
    return text::FromUtf8(name);
}

std::vector<ListedJob> Fetched(Services& services, const std::wstring& name) {
    return services.hosts.Run(
        front_end::Start::Never,
        [&](front_end::CommandContext&, front_end::HostSession& session) { return session.FetchJobs({{name}}); });
}

} // namespace

Row RequireJob(Services& services, const std::string& name) {
    const std::wstring wanted = NameOf(name);
    if (Row row = services.tracker.Jobs().Find(wanted)) {
        return row;
    }
    std::vector<ListedJob> jobs = Fetched(services, wanted);
    if (jobs.empty()) {
        throw NotFound(L"There is no job " + wanted + L".");
    }
    front_end::JobRow row;
    row.job = std::move(jobs.front());
    return std::make_shared<const front_end::JobRow>(std::move(row));
}

ListedJob FetchJob(Services& services, const std::string& name) {
    const std::wstring wanted = NameOf(name);
    try {
        std::vector<ListedJob> jobs = Fetched(services, wanted);
        if (!jobs.empty()) {
            return jobs.front();
        }
    } catch (const front_end::CommandFailure&) {
        if (Row row = services.tracker.Jobs().Find(wanted)) {
            return row->job;
        }
        throw;
    }
    throw NotFound(L"There is no job " + wanted + L".");
}

} // namespace web
