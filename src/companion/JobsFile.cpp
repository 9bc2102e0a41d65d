#include "companion/ControllerCSWrapper.h"

#include "companion/MessageText.h"
#include "companion/json/RecordLayouts.h"
#include "platform/Directories.h"
#include "platform/FileSystem.h"
#include "platform/NativePath.h"

namespace {

struct JobsFile {
    std::vector<EnqueueJobsInfo> requests;
};

std::wstring FolderOf(const std::wstring& jobsFile) {
    return platform::ParentFolder(platform::ResolveAgainst(platform::CurrentFolder(), jobsFile));
}

void Resolve(const std::wstring& folder, std::wstring& path) {
    if (!path.empty() && !platform::IsAbsolute(path)) {
        path = platform::ResolveAgainst(folder, path);
    }
}

/// An id of the catalogue stays as it is; so does a file name that is to be looked for in the scenario directories.
void ResolveScenario(const std::wstring& folder, std::wstring& id) {
    std::wstring path = id;
    Resolve(folder, path);
    if (path != id && platform::Exists(path) && !platform::IsFolder(path)) {
        id = std::move(path);
    }
}

void ResolvePaths(const std::wstring& folder, EnqueueJobsInfo& request) {
    Resolve(folder, request.outputDir);
    ResolveScenario(folder, request.scenario.id);
    for (auto& inputSet : request.inputFileSets) {
        for (auto& inputFile : inputSet) {
            Resolve(folder, inputFile);
        }
    }
}

} // namespace

namespace json {

template <>
struct Layout<JobsFile> {
    static constexpr auto members = std::make_tuple(Member{"EnqueueJobs", &JobsFile::requests, Presence::Required});
};

} // namespace json

bool ControllerCSWrapper::ReadEnqueueJobsFile(const std::wstring& path, std::vector<EnqueueJobsInfo>& infos) {
    return boundary::Guard("ReadEnqueueJobsFile", [&] {
        JobsFile file;
        std::wstring problem;
        if (!json::ReadFile(path, json::largestText, file, problem)) {
            WriteErrorLog(L"The jobs file cannot be read: " + problem);
            return false;
        }
        const std::wstring folder = FolderOf(path);
        for (auto& request : file.requests) {
            ResolvePaths(folder, request);
        }
        message_text::AppendAll(infos, std::move(file.requests));
        return true;
    });
}
