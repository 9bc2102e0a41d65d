#include <string>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/RunProtocol.h"
#include "fuzz/support/Before.h"
#include "fuzz/support/ByteSource.h"
#include "fuzz/support/Require.h"
#include "fuzz/support/Scratch.h"
#include "text/Text.h"

namespace {

using run_protocol::RunScenarioResult;

/// The part of the outputs that was read, without the content before it.
RunScenarioResult Behind(const RunScenarioResult& outputs) {
    const RunScenarioResult before = fuzz::Before().RunResult();
    fuzz::Require(!outputs.messages.empty() && outputs.messages[0] == before.messages[0], "earlier messages stay");
    fuzz::Require(!outputs.outputFiles.empty() && outputs.outputFiles[0] == before.outputFiles[0],
                  "earlier files stay");
    return {outputs.jobId,
            outputs.succeeded,
            {outputs.messages.begin() + 2, outputs.messages.end()},
            {outputs.outputFiles.begin() + 2, outputs.outputFiles.end()}};
}

bool ReadText(const std::wstring& json, RunScenarioResult& result) {
    RunScenarioResult read = fuzz::Before().RunResult();
    const bool isRead = ControllerCSWrapper::ParseRunScenarioResultString(json, read.jobId, read.succeeded,
                                                                          read.messages, read.outputFiles);
    fuzz::Require(isRead || read == fuzz::Before().RunResult(), "a refused text leaves the outputs as they were");
    result = Behind(read);
    return isRead;
}

/// The file reader gives the same as the text reader.
void CheckFile(std::string_view bytes) {
    RunScenarioResult read = fuzz::Before().RunResult();
    RunScenarioResult expected;
    const bool isRead = ControllerCSWrapper::ParseRunScenarioResult(fuzz::ScratchFile(L"result.json", bytes),
                                                                    read.succeeded, read.messages, read.outputFiles);
    fuzz::Require(isRead || read == fuzz::Before().RunResult(), "a refused file leaves the outputs as they were");
    const auto text = text::FromStrictUtf8(bytes);
    fuzz::Require(text.has_value() || !isRead, "what is not UTF-8 is refused");
    fuzz::Require(!text || ReadText(*text, expected) == isRead, "file and text are taken alike");
    if (isRead) {
        read.jobId = expected.jobId;
        fuzz::Require(Behind(read) == expected, "file and text say the same");
    }
}

void CheckWritten(const RunScenarioResult& result) {
    RunScenarioResult read;
    fuzz::Require(ReadText(run_protocol::SerializeRunScenarioResult(result), read) && read == result,
                  "a result is read as it was written");
}

} // namespace

/// Reads the input as a result file and as text, then writes a result made from it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = fuzz::BytesOf(data, size);
    RunScenarioResult result;
    CheckFile(bytes);
    if (ReadText(text::FromUtf8(bytes), result)) {
        CheckWritten(result);
    }
    fuzz::ByteSource source(bytes);
    CheckWritten(source.Records().RunResult());
    return 0;
}
