#include "formats/Provenance.h"

#include "formats/Boundary.h"
#include "formats/json/ProvenanceLayouts.h"
#include "formats/json/Reading.h"
#include "formats/json/Writing.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"

namespace provenance {
namespace {

/// Enough for `mostOutputs` files with long names. Units: bytes.
constexpr std::size_t largestRecord = std::size_t{64} << 20;

template <typename Value>
bool Read(const std::wstring& path, std::size_t limit, Value& value, std::wstring& problem) {
    if (platform::IsLink(path)) {
        problem = platform::ToNativeText(path) + L" is a link.";
        return false;
    }
    return json::ReadFile(path, limit, value, problem);
}

} // namespace

bool ReadRecord(const std::wstring& path, Record& record, std::wstring& problem) {
    return boundary::Guard("ReadRecord", [&] { return Read(path, largestRecord, record, problem); });
}

bool ReadContext(const std::wstring& path, RunContext& context, std::wstring& problem) {
    return boundary::Guard("ReadContext", [&] { return Read(path, json::largestSmallFile, context, problem); });
}

bool ReadUsedTools(const std::wstring& path, UsedTools& used, std::wstring& problem) {
    return boundary::Guard("ReadUsedTools", [&] {
        UsedTools read;
        if (!Read(path, json::largestSmallFile, read, problem)) {
            return false;
        }
        if (read.tools.size() > mostTools || read.files.size() > mostTools) {
            problem =
                platform::ToNativeText(path) + L" names more than " + std::to_wstring(mostTools) + L" tools or files.";
            return false;
        }
        used = std::move(read);
        return true;
    });
}

std::wstring Serialize(const Record& record) {
    return boundary::Guard("Serialize", [&] { return json::Write(record); });
}

std::wstring Serialize(const RunContext& context) {
    return boundary::Guard("Serialize", [&] { return json::Write(context); });
}

} // namespace provenance
