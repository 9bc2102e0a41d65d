#include <string>
#include <vector>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "fuzz/support/Before.h"
#include "fuzz/support/ByteSource.h"
#include "fuzz/support/Require.h"
#include "fuzz/support/Scratch.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/RemoveTree.h"

namespace {

using Jobs = std::vector<JobListInfo>;

/// Reads into a list that already has a job. Returns the jobs read.
bool ReadList(const std::wstring& path, Jobs& jobs) {
    const Jobs before = {fuzz::Before().Job()};
    Jobs list = before;
    const bool isRead = ControllerCSWrapper::ParseJobList(path, list);
    fuzz::Require(!list.empty() && list[0] == before[0], "what stood in the list stays");
    fuzz::Require(isRead || list == before, "a refused list leaves the output as it was");
    jobs.assign(list.begin() + 1, list.end());
    return isRead;
}

/// A written list is read back equal.
void CheckWritten(const Jobs& jobs, const std::wstring& path) {
    Jobs read;
    const std::wstring json = ControllerCSWrapper::Serialize(L"JobList", jobs);
    fuzz::Require(ControllerCSWrapper::CreateJsonFile(json, path), "a list can be written");
    fuzz::Require(ReadList(path, read) && read == jobs, "a list is read as it was written");
}

/// A refused list is quarantined byte by byte.
void CheckKeptAside(const std::wstring& directory, std::string_view bytes) {
    std::vector<platform::DirectoryEntry> entries;
    fuzz::Require(platform::ListDirectory(directory, entries) && entries.size() == 1, "one file is kept");
    std::string kept;
    const std::wstring path = directory + L"\\" + entries[0].name;
    fuzz::Require(platform::ReadFile(path, bytes.size(), kept) && kept == bytes, "a refused list is kept whole");
}

} // namespace

/// Reads the input as a job list file, then writes one with records made from it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = fuzz::BytesOf(data, size);
    const std::wstring directory = fuzz::Scratch() / L"list";
    fuzz::Require(static_cast<bool>(platform::CreateNewDirectory(directory)), "a folder can be made");
    Jobs jobs;
    if (ReadList(fuzz::ScratchFile(L"list\\job_list.json", bytes), jobs)) {
        CheckWritten(jobs, directory + L"\\job_list.json");
    } else {
        CheckKeptAside(directory, bytes);
    }
    fuzz::ByteSource source(bytes);
    const RecordMaker make = source.Records();
    CheckWritten({make.Job(), make.Job()}, directory + L"\\job_list.json");
    fuzz::Require(static_cast<bool>(platform::RemoveTree(directory)), "the scratch folder can be removed");
    return 0;
}
