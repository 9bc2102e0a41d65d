#include "formats/JobsFile.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/MessageText.h"
#include "formats/json/SchedulingLayouts.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"

namespace {

struct JobsFile {
    std::vector<ScheduledRequest> requests;
};

std::wstring DirectoryOf(const std::wstring& jobsFile) {
    return platform::ParentDirectory(platform::ResolveAgainst(platform::CurrentDirectory(), jobsFile));
}

void Resolve(const std::wstring& directory, std::wstring& path) {
    if (!path.empty() && !platform::IsAbsolute(path)) {
        path = platform::ResolveAgainst(directory, path);
    }
}

/// An id of the catalogue stays unchanged, and so does a file name to be searched in the scenario directories.
void ResolveScenario(const std::wstring& directory, std::wstring& id) {
    std::wstring path = id;
    Resolve(directory, path);
    if (path != id && platform::Exists(path) && !platform::IsDirectory(path)) {
        id = std::move(path);
    }
}

void ResolvePaths(const std::wstring& directory, EnqueueJobsInfo& request) {
    Resolve(directory, request.outputDir);
    ResolveScenario(directory, request.scenario.id);
    for (auto& inputSet : request.inputFileSets) {
        for (auto& inputFile : inputSet) {
            Resolve(directory, inputFile);
        }
    }
}

void AppendResolved(const std::wstring& directory, JobsFile file, std::vector<ScheduledRequest>& requests) {
    for (auto& request : file.requests) {
        ResolvePaths(directory, request);
    }
    message_text::AppendAll(requests, std::move(file.requests));
}

/// Returns one line per error. Unknown members come first, because one of them may be a misspelled required member.
std::wstring AllProblems(const std::wstring& path, const std::vector<std::wstring>& unknownMembers,
                         const std::wstring& problem) {
    std::wstring all;
    for (const std::wstring& member : unknownMembers) {
        all += json::ProblemInFile(path, member) + L"\n";
    }
    all += problem;
    all.erase(all.find_last_not_of(L'\n') + 1);
    return all;
}

} // namespace

namespace json {

template <>
struct Layout<JobsFile> {
    static constexpr auto members = std::make_tuple(Member{"EnqueueJobs", &JobsFile::requests, Presence::Required});
};

} // namespace json

bool jobs_file::Read(const std::wstring& path, std::vector<ScheduledRequest>& requests, std::wstring& problem) {
    JobsFile file;
    problem.clear();
    std::vector<std::wstring> unknownMembers;
    const bool isRead = json::ReadFile(path, json::largestText, file, problem, &unknownMembers);
    if (!isRead || !unknownMembers.empty()) {
        problem = AllProblems(path, unknownMembers, problem);
        return false;
    }
    AppendResolved(DirectoryOf(path), std::move(file), requests);
    return true;
}

bool jobs_file::ReadText(std::string bytes, const std::wstring& name, std::vector<ScheduledRequest>& requests,
                         std::wstring& problem, const std::wstring& directory) {
    JobsFile file;
    problem.clear();
    std::vector<std::wstring> unknownMembers;
    std::wstring place;
    const bool isRead = json::Read(std::move(bytes), file, place, &unknownMembers);
    if (!isRead || !unknownMembers.empty()) {
        problem = AllProblems(name, unknownMembers, isRead ? place : json::ProblemInFile(name, place));
        return false;
    }
    AppendResolved(directory.empty() ? platform::CurrentDirectory() : directory, std::move(file), requests);
    return true;
}

std::wstring jobs_file::PlaceOf(const std::wstring& path, std::size_t request, std::optional<std::size_t> inputSet) {
    return boundary::Guard("PlaceOf", [&] {
        std::vector<json::Step> way = {{"EnqueueJobs"}, {nullptr, request}};
        if (inputSet) {
            way.insert(way.end(), {{"inputFileSets"}, {nullptr, *inputSet}});
        }
        return json::PlaceInFile(path, json::largestText, way);
    });
}

bool ControllerCSWrapper::ReadEnqueueJobsFile(const std::wstring& path, std::vector<EnqueueJobsInfo>& infos) {
    return boundary::Guard("ReadEnqueueJobsFile", [&] {
        std::wstring problem;
        std::vector<ScheduledRequest> requests;
        if (!jobs_file::Read(path, requests, problem)) {
            WriteErrorLog(L"The jobs file cannot be read: " + problem);
            return false;
        }
        infos.reserve(infos.size() + requests.size());
        for (ScheduledRequest& request : requests) {
            infos.push_back(std::move(static_cast<EnqueueJobsInfo&>(request)));
        }
        return true;
    });
}
