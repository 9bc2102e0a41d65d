#include "kit/slurm/SlurmFixture.h"

#include <algorithm>

#include "kit/Deadline.h"
#include "platform/files/Directory.h"
#include "platform/files/FileLock.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Waiting.h"
#include "slurm/AttemptFiles.h"
#include "text/Text.h"

SlurmFixture::SlurmFixture() {
    settings.module = ModulePath(L"slurm");
    EXPECT_TRUE(platform::EnsureDirectory(directory / L"life"));
}

void SlurmFixture::UseLostAfter(int seconds, const std::string& options) {
    settings.members =
        R"(,"slurm":{"lostAfterSeconds":)" + std::to_string(seconds) + R"(,"options":[)" + options + "]}";
}

std::string SlurmFixture::Message() const {
    return text::ToUtf8(FirstMessage());
}

std::wstring SlurmFixture::JobName() const {
    const auto lease = slurm::AttemptFiles(job.workDir, L"").ReadLease();
    return lease ? lease->name : std::wstring();
}

std::string SlurmFixture::LiveStep() const {
    return "live in " + text::ToUtf8(platform::ToNativeText(directory / L"life")) + "\n";
}

bool SlurmFixture::HasLife() const {
    std::vector<platform::DirectoryEntry> entries;
    EXPECT_TRUE(platform::ListDirectory(directory / L"life", entries));
    return std::any_of(entries.begin(), entries.end(), [&](const platform::DirectoryEntry& entry) {
        platform::FileLock lock;
        return !lock.Take(directory / (L"life\\" + entry.name));
    });
}

void SlurmFixture::Await(const std::string& what, const std::function<bool()>& condition) {
    const test_support::Deadline deadline(what);
    constexpr std::chrono::milliseconds interval{20};
    while (!condition()) {
        platform::WaitForAny({}, interval);
    }
}
