#include "kit/slurm/SlurmFixture.h"

#include <algorithm>

#include "kit/Deadline.h"
#include "kit/OtherProcesses.h"
#include "kit/SystemHelpers.h"
#include "platform/files/Directory.h"
#include "platform/files/FileLock.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Waiting.h"
#include "platform/system/Environment.h"
#include "text/Text.h"

SlurmFixture::SlurmFixture()
    : state(directory / L"cluster"), pathBefore(platform::GetEnvironment(L"PATH").value_or(L"")) {
    settings.module = ModulePath(L"slurm");
    settings.members = R"(,"slurm":{"lostAfterSeconds":2})";
    for (const wchar_t* const program : {L"srun", L"scancel", L"squeue"}) {
        WriteTextFile(state + L"\\" + program + L".calls", "");
        EXPECT_TRUE(MakeLink(FAKE_SLURM_PROGRAM, state + L"\\" + program));
    }
    platform::SetEnvironment(L"FAKE_SLURM", platform::ToNativeText(state));
    platform::SetEnvironment(L"PATH", platform::ToNativeText(state) + platform::pathListSeparator + pathBefore);
}

SlurmFixture::~SlurmFixture() {
    if (platform::IsProcessRunning(runner.Get())) {
        RequestStop();
        AwaitEnd();
    }
    platform::SetEnvironment(L"PATH", pathBefore);
    platform::SetEnvironment(L"FAKE_SLURM", L"");
}

void SlurmFixture::UseMode(const std::string& mode) const {
    WriteTextFile(state + L"\\mode", mode);
}

std::string SlurmFixture::CallsOf(const std::wstring& program) const {
    return ReadTextFile(state + L"\\" + program + L".calls");
}

std::wstring SlurmFixture::JobName() const {
    const std::string calls = CallsOf(L"srun");
    const std::string option = "--job-name=";
    const std::size_t begin = calls.rfind(option) + option.size();
    return text::FromUtf8(calls.substr(begin, calls.find(' ', begin) - begin));
}

platform::OwnedHandle SlurmFixture::NodeProcess() const {
    const std::string number = ReadTextFile(state + L"\\process-" + JobName());
    return test_support::OpenProcessByNumber(static_cast<std::uint32_t>(std::stoul(number)));
}

void SlurmFixture::Await(const std::string& what, const std::function<bool()>& condition) {
    const test_support::Deadline deadline(what);
    constexpr std::chrono::milliseconds interval{20};
    while (!condition()) {
        platform::WaitForAny({}, interval);
    }
}

bool SlurmFixture::HasLifeIn(const std::wstring& lifeDirectory) const {
    std::vector<platform::DirectoryEntry> entries;
    EXPECT_FALSE(platform::ListDirectory(lifeDirectory, entries));
    return std::any_of(entries.begin(), entries.end(), [&](const platform::DirectoryEntry& entry) {
        platform::FileLock lock;
        return static_cast<bool>(lock.Take(lifeDirectory + L"\\" + entry.name));
    });
}
