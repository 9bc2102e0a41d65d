#include <algorithm>
#include <string>
#include <vector>

#include "formats/JobsFile.h"
#include "formats/json/SchedulingLayouts.h"
#include "formats/json/Writing.h"
#include "fuzz/support/Before.h"
#include "fuzz/support/ByteSource.h"
#include "fuzz/support/Require.h"
#include "fuzz/support/Scratch.h"
#include "platform/files/NativePath.h"
#include "text/StrictUtf8.h"

namespace {

using Requests = std::vector<ScheduledRequest>;

/// Reads into a list that already has a request. Returns the requests read.
bool ReadFile(std::string_view bytes, Requests& requests) {
    const Requests before = {fuzz::Before().Request()};
    Requests list = before;
    std::wstring problem;
    const bool isRead = jobs_file::Read(fuzz::ScratchFile(L"jobs.json", bytes), list, problem);
    fuzz::Require(!list.empty() && list[0] == before[0], "what stood in the list stays");
    fuzz::Require(isRead || list == before, "a refused file leaves the output as it was");
    requests.assign(list.begin() + 1, list.end());
    return isRead;
}

bool IsEmptyOrAbsolute(const std::wstring& path) {
    return path.empty() || platform::IsAbsolute(path);
}

void CheckPaths(const EnqueueJobsInfo& request) {
    fuzz::Require(IsEmptyOrAbsolute(request.outputDir), "the output folder is absolute");
    for (const auto& inputSet : request.inputFileSets) {
        fuzz::Require(std::all_of(inputSet.begin(), inputSet.end(), IsEmptyOrAbsolute), "inputs are absolute");
    }
}

Requests CheckWritten(const Requests& requests) {
    std::string utf8;
    std::size_t badAt = 0;
    Requests read;
    fuzz::Require(text::EncodeUtf8(json::WriteEnvelope(L"EnqueueJobs", requests), utf8, badAt), "JSON is characters");
    fuzz::Require(ReadFile(utf8, read), "a written file is read");
    std::for_each(read.begin(), read.end(), CheckPaths);
    return read;
}

} // namespace

/// Reads the input as a jobs file, then writes one with requests made from it. The paths read are final: writing and
/// reading them again does not change them.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = fuzz::BytesOf(data, size);
    Requests requests;
    if (ReadFile(bytes, requests)) {
        std::for_each(requests.begin(), requests.end(), CheckPaths);
        fuzz::Require(CheckWritten(requests) == requests, "requests are read as they were written");
    }
    fuzz::ByteSource source(bytes);
    const RecordMaker make = source.Records();
    const Requests made = {make.Request(), make.Request()};
    const Requests read = CheckWritten(made);
    fuzz::Require(CheckWritten(read) == read, "resolved requests are read as they were written");
    fuzz::Require(read[0].runArgument == made[0].runArgument && read[1].extraText == made[1].extraText,
                  "texts that are no paths are read as they were written");
    return 0;
}
