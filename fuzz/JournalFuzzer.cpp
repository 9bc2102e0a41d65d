#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include <zlib.h>

#include "formats/JobListJournal.h"
#include "fuzz/support/Before.h"
#include "fuzz/support/ByteSource.h"
#include "fuzz/support/Require.h"
#include "fuzz/support/Scratch.h"

namespace {

using job_list_journal::Found;
using Jobs = std::vector<ListedJob>;

/// Gives each line of the input the checksum that the reader expects. A last line without a line feed stays as it is.
std::string WithChecksums(std::string_view lines) {
    std::string journal;
    for (std::size_t end = lines.find('\n'); end != std::string_view::npos; end = lines.find('\n')) {
        const std::string_view json = lines.substr(0, end);
        const auto* const bytes = reinterpret_cast<const Bytef*>(json.data());
        char checksum[16] = {};
        (void)std::snprintf(checksum, sizeof checksum, "%08lx ", crc32_z(crc32_z(0, nullptr, 0), bytes, json.size()));
        journal.append(checksum).append(json).append("\n");
        lines.remove_prefix(end + 1);
    }
    return journal.append(lines);
}

Found Apply(const std::string& journal, Jobs& jobs) {
    std::wstring problem;
    const std::wstring path = fuzz::ScratchFile(L"list.journal", journal);
    const Found found = job_list_journal::Apply(path, L"one", jobs, problem);
    fuzz::Require(found != Found::Damaged || !problem.empty(), "damage has a reason");
    return found;
}

void CheckJournal(const std::string& journal) {
    const Jobs before = {fuzz::Before().Job()};
    Jobs jobs = before;
    const Found found = Apply(journal, jobs);
    fuzz::Require(found != Found::Nothing || jobs == before, "a journal of another snapshot has no effect");
    Jobs ofPart = before;
    const Found part = Apply(journal.substr(0, journal.size() / 2), ofPart);
    fuzz::Require(found == Found::Damaged || part != Found::Damaged, "a cut journal is not damaged");
}

} // namespace

/// Reads the input as a journal, as it is and with the checksums that let its lines reach the JSON reader.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = fuzz::BytesOf(data, size);
    CheckJournal(std::string(bytes));
    CheckJournal(WithChecksums(bytes));
    return 0;
}
