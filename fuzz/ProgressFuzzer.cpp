#include <string>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/RunProtocol.h"
#include "fuzz/support/ByteSource.h"
#include "fuzz/support/Require.h"
#include "fuzz/support/Scratch.h"
#include "text/Text.h"

namespace {

struct Report {
    std::wstring jobId = L"before";
    std::wstring message = L"before";
    int progress = -7;

    bool operator==(const Report&) const = default;
};

bool ReadText(const std::wstring& json, Report& report) {
    Report read;
    const bool isRead = ControllerCSWrapper::ParseProgressFileString(json, read.jobId, read.message, read.progress);
    fuzz::Require(isRead || read == Report(), "a refused text leaves the outputs as they were");
    report = read;
    return isRead;
}

/// The file reader gives the same as the text reader, up to its size limit.
void CheckFile(std::string_view bytes) {
    Report read;
    Report expected;
    const bool isRead =
        ControllerCSWrapper::ParseProgressFile(fuzz::ScratchFile(L"progress.json", bytes), read.message, read.progress);
    fuzz::Require(isRead || read == Report(), "a refused file leaves the outputs as they were");
    const auto text = text::FromStrictUtf8(bytes);
    fuzz::Require(text.has_value() || !isRead, "what is not UTF-8 is refused");
    fuzz::Require(!text || ReadText(*text, expected) == isRead, "file and text are taken alike");
    fuzz::Require(read.message == expected.message && read.progress == expected.progress, "file and text say the same");
}

void CheckWritten(const Report& report) {
    Report read;
    const std::wstring json = run_protocol::SerializeProgress(report.jobId, report.progress, report.message);
    fuzz::Require(ReadText(json, read) && read == report, "a report is read as it was written");
}

} // namespace

/// Reads the input as a progress file and as text, then writes a report made from it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = fuzz::BytesOf(data, size);
    Report report;
    CheckFile(bytes);
    if (ReadText(text::FromUtf8(bytes), report)) {
        CheckWritten(report);
    }
    fuzz::ByteSource source(bytes);
    CheckWritten({source.Text(), source.Text(), source.Number()});
    return 0;
}
