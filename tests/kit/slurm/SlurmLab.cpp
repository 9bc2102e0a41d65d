#include "kit/slurm/SlurmLab.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

#include "kit/Deadline.h"
#include "kit/TestProcess.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Waiting.h"
#include "platform/system/Environment.h"
#include "slurm/ClusterCommands.h"
#include "text/Text.h"

namespace {

constexpr auto labVariable = L"SLURM_LAB";
constexpr auto configurationVariable = L"SLURM_CONF";
constexpr auto hiddenVariable = L"SLURM_LAB_HIDDEN";

std::string ContentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

SlurmLab::SlurmLab() : directory(platform::GetEnvironment(labVariable).value_or(L"")) {
    if (IsThere()) {
        platform::SetEnvironment(configurationVariable, directory + L"/slurm.conf");
    }
}

SlurmLab::~SlurmLab() {
    platform::SetEnvironment(configurationVariable, L"");
}

bool SlurmLab::IsThere() {
    return platform::GetEnvironment(labVariable).has_value();
}

void SlurmLab::Do(const std::vector<std::wstring>& command) const {
    platform::ProcessStart start;
    start.program = SLURM_LAB_PROGRAM;
    start.arguments = {directory};
    start.arguments.insert(start.arguments.end(), command.begin(), command.end());
    const test_support::Ending ending = test_support::RunToEnd(start);
    EXPECT_EQ(ending.exitCode, 0) << ending.output;
}

void SlurmLab::StartNodeWithout(const std::wstring& node, const std::wstring& hidden) const {
    platform::SetEnvironment(hiddenVariable, platform::ToNativeText(hidden));
    Do({L"start", L"slurmd", node});
    platform::SetEnvironment(hiddenVariable, L"");
}

std::vector<std::wstring> SlurmLab::Jobs() {
    return slurm::ListJobs(test_support::timeout).value_or(std::vector<std::wstring>{L"(no answer)"});
}

bool SlurmLab::Has(const std::wstring& name) {
    const std::vector<std::wstring> names = Jobs();
    return std::find(names.begin(), names.end(), name) != names.end();
}

void SlurmLab::AwaitIdle(const std::wstring& node) {
    const test_support::Deadline deadline("an idle node");
    platform::ProcessStart start;
    start.program = L"sinfo";
    start.searchPath = true;
    start.arguments = {L"--noheader", L"--nodes=" + node, L"--format=%t"};
    constexpr std::chrono::milliseconds interval{100};
    while (test_support::RunToEnd(start).output != "idle\n") {
        platform::WaitForAny({}, interval);
    }
}

std::uint32_t SlurmLab::StepProcessOf(const std::wstring& name) {
    const std::string ownArguments = text::ToUtf8(L"slurm_waiter|--node|" + name + L'|');
    for (const auto& process : std::filesystem::directory_iterator("/proc")) {
        std::string words = ContentOf(process.path() / "cmdline");
        std::replace(words.begin(), words.end(), '\0', '|');
        // Other processes have these words in the middle.
        const std::size_t begin = words.find(ownArguments);
        if (begin == std::string::npos || words.find('|') < begin) {
            continue;
        }
        std::ifstream state(process.path() / "stat");
        std::string skipped;
        std::uint32_t parent = 0;
        state >> skipped >> skipped >> skipped >> parent;
        return parent;
    }
    return 0;
}
