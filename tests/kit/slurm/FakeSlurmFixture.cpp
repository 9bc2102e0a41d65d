#include "kit/slurm/FakeSlurmFixture.h"

#include "kit/OtherProcesses.h"
#include "kit/SystemHelpers.h"
#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"

FakeSlurmFixture::FakeSlurmFixture()
    : state(directory / L"cluster"), pathBefore(platform::GetEnvironment(L"PATH").value_or(L"")) {
    for (const wchar_t* const program : {L"srun", L"scancel", L"squeue"}) {
        WriteTextFile(state + L"\\" + program + L".calls", "");
        EXPECT_TRUE(MakeLink(FAKE_SLURM_PROGRAM, state + L"\\" + program));
    }
    platform::SetEnvironment(L"FAKE_SLURM", platform::ToNativeText(state));
    platform::SetEnvironment(L"PATH", platform::ToNativeText(state) + platform::pathListSeparator + pathBefore);
}

FakeSlurmFixture::~FakeSlurmFixture() {
    if (platform::IsProcessRunning(runner.Get())) {
        RequestStop();
        AwaitEnd();
    }
    platform::SetEnvironment(L"PATH", pathBefore);
    platform::SetEnvironment(L"FAKE_SLURM", L"");
}

void FakeSlurmFixture::UseMode(const std::string& mode) const {
    WriteTextFile(state + L"\\mode", mode);
}

std::string FakeSlurmFixture::CallsOf(const std::wstring& program) const {
    return ReadTextFile(state + L"\\" + program + L".calls");
}

platform::OwnedHandle FakeSlurmFixture::NodeProcess() const {
    const std::string number = ReadTextFile(state + L"\\process-" + JobName());
    return test_support::OpenProcessByNumber(static_cast<std::uint32_t>(std::stoul(number)));
}
