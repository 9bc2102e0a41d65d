#include "scenario_runner/FileHashing.h"

#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/system/Clock.h"
#include "platform/system/Sha256.h"

namespace scenario_runner {
namespace {

/// The coarsest times of the last write, those of FAT. Units: seconds.
constexpr std::int64_t coarsestTime = 2;

std::wstring ChangedText(const std::wstring& path) {
    return platform::ToNativeText(path) + L" was changed during the run.";
}

} // namespace

std::wstring HashFile(const std::wstring& path, const StopCheck& isStopped, provenance::FileRecord& record) {
    platform::Sha256 hash;
    std::int64_t size = 0;
    const platform::Error result = platform::ReadFileInBlocks(path, [&](std::string_view block) {
        hash.Add(block);
        size += static_cast<std::int64_t>(block.size());
        return isStopped() ? throw Stopped() : platform::Reading::GoOn;
    });
    if (!result) {
        return result.kind == platform::ErrorKind::InUse && result.systemCode == 0
                   ? ChangedText(path)
                   : platform::ToNativeText(path) + L" cannot be read: " + result.Text() + L".";
    }
    record.size = size;
    record.sha256 = hash.Finish();
    return {};
}

provenance::FileRecord SourceFiles::Add(const std::wstring& path) {
    Source source;
    source.record.path = path;
    const auto stamp = platform::StampOf(path);
    const std::wstring failure = HashFile(path, isStopped, source.record);
    if (!failure.empty() || !stamp) {
        Note(failure);
        return source.record;
    }
    source.stamp = *stamp;
    source.isFresh = platform::LastWriteTime(*stamp) + coarsestTime >= platform::Now();
    sources.push_back(source);
    return source.record;
}

void SourceFiles::CheckUnchanged() {
    for (const Source& source : sources) {
        CheckUnchanged(source);
    }
}

void SourceFiles::CheckUnchanged(const Source& source) {
    if (platform::StampOf(source.record.path) != source.stamp) {
        Note(ChangedText(source.record.path));
    } else if (source.isFresh) {
        provenance::FileRecord now;
        now.path = source.record.path;
        Note(HashFile(now.path, isStopped, now));
        Note(now == source.record ? L"" : ChangedText(now.path));
    }
}

void SourceFiles::Note(const std::wstring& newProblem) {
    if (problem.empty()) {
        problem = newProblem;
    }
}

} // namespace scenario_runner
