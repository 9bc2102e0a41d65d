#include <string>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/RunProtocol.h"
#include "fuzz/support/Before.h"
#include "fuzz/support/ByteSource.h"
#include "fuzz/support/Require.h"
#include "fuzz/support/Scratch.h"
#include "text/Text.h"

namespace {

using run_protocol::RunScenarioInfo;

/// A refusal has a reason and leaves the output unchanged.
bool CheckOutcome(bool isRead, const RunScenarioInfo& info, const std::wstring& problem) {
    fuzz::Require(isRead || info == fuzz::Before().RunInfo(), "a refused request leaves the output as it was");
    fuzz::Require(isRead == problem.empty(), "a refusal, and nothing else, says why");
    return isRead;
}

bool ReadText(const std::wstring& json, RunScenarioInfo& info) {
    std::wstring problem;
    info = fuzz::Before().RunInfo();
    return CheckOutcome(run_protocol::ParseRunScenarioInfo(json, info, problem), info, problem);
}

/// The file reader gives the same as the text reader.
void CheckFile(std::string_view bytes) {
    std::wstring problem;
    RunScenarioInfo read = fuzz::Before().RunInfo();
    RunScenarioInfo expected = fuzz::Before().RunInfo();
    const std::wstring path = fuzz::ScratchFile(L"run_info.json", bytes);
    const bool isRead = CheckOutcome(run_protocol::ReadRunScenarioInfoFile(path, read, problem), read, problem);
    const auto text = text::FromStrictUtf8(bytes);
    fuzz::Require(text.has_value() || !isRead, "what is not UTF-8 is refused");
    fuzz::Require(!text || ReadText(*text, expected) == isRead, "file and text are taken alike");
    fuzz::Require(read == expected, "file and text say the same");
}

/// Both writers write what was read.
void CheckWritten(const RunScenarioInfo& info) {
    RunScenarioInfo read;
    std::wstring json;
    fuzz::Require(ControllerCSWrapper::CreateRunScenarioInfoString(info.jobId, info.scenarioPath, info.inputFiles,
                                                                   info.outputFolder, info.workDir, info.runArgument,
                                                                   json),
                  "a request can be written");
    fuzz::Require(json == run_protocol::SerializeRunScenarioInfo(info), "both writers write the same");
    fuzz::Require(ReadText(json, read) && read == info, "a request is read as it was written");
}

} // namespace

/// Reads the input as a run request, file and text, then writes one made from it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = fuzz::BytesOf(data, size);
    RunScenarioInfo info;
    CheckFile(bytes);
    if (ReadText(text::FromUtf8(bytes), info)) {
        CheckWritten(info);
    }
    fuzz::ByteSource source(bytes);
    CheckWritten(source.Records().RunInfo());
    return 0;
}
