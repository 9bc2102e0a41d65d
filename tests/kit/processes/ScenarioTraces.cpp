#include "kit/processes/ScenarioTraces.h"

#include "kit/Deadline.h"
#include "kit/OtherProcesses.h"
#include "kit/TestProcess.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Waiting.h"
#include "text/Text.h"

#include <cstdint>
#include <optional>

#include <gtest/gtest.h>

void AwaitFile(const std::wstring& workDir, const std::wstring& name) {
    const test_support::Deadline deadline("the file " + text::ToUtf8(name));
    platform::DirectoryWatch watch(workDir);
    while (!platform::Exists(platform::ResolveAgainst(workDir, name))) {
        platform::WaitForAny({watch.Handle()}, std::nullopt);
        watch.Rearm();
    }
}

std::vector<platform::OwnedHandle> OpenNotedProcesses(const std::wstring& workDir) {
    const std::wstring prefix = L"process-";
    std::vector<platform::DirectoryEntry> entries;
    EXPECT_TRUE(platform::ListDirectory(workDir, entries));
    std::vector<platform::OwnedHandle> processes;
    for (const platform::DirectoryEntry& entry : entries) {
        if (entry.name.starts_with(prefix)) {
            processes.push_back(test_support::OpenProcessByNumber(
                static_cast<std::uint32_t>(std::stoul(entry.name.substr(prefix.size())))));
        }
    }
    return processes;
}

void AwaitDeathOf(const std::vector<platform::OwnedHandle>& processes) {
    for (const platform::OwnedHandle& process : processes) {
        EXPECT_TRUE(!process || test_support::WaitUntilSignalled(process.Get()));
    }
}
