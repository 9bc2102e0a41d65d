#pragma once

#include "platform/Environment.h"
#include "platform/NativePath.h"

#include <string>
#include <utility>
#include <vector>

/// While it lives, the folder for temporary files is one of the test's own.
class ScopedTemporaryFolder {
public:
    explicit ScopedTemporaryFolder(const std::wstring& folder) {
        for (const wchar_t* const name : {L"TMPDIR", L"TMP"}) {
            before.emplace_back(name, platform::GetEnvironment(name).value_or(L""));
            platform::SetEnvironment(name, platform::ToNativeText(folder));
        }
    }
    ~ScopedTemporaryFolder() {
        for (const auto& [name, value] : before) {
            platform::SetEnvironment(name, value);
        }
    }
    ScopedTemporaryFolder(const ScopedTemporaryFolder&) = delete;
    ScopedTemporaryFolder& operator=(const ScopedTemporaryFolder&) = delete;

private:
    std::vector<std::pair<std::wstring, std::wstring>> before;
};
