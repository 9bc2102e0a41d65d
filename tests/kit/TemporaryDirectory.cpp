#include "kit/TemporaryDirectory.h"

#include <cstddef>
#include <random>
#include <stdexcept>

#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/RemoveTree.h"
#include "platform/files/ReplaceFile.h"
#include "platform/system/Environment.h"
#include "text/Text.h"

namespace {

constexpr std::size_t largestTestFile = std::size_t{1} << 30;

void RequireSuccess(const platform::Error& result, const std::string& action, const std::wstring& path) {
    if (!result) {
        throw std::runtime_error(action + " " + text::ToUtf8(path) + ": " + text::ToUtf8(result.Text()));
    }
}

std::wstring UniquePath() {
    std::random_device random;
    return platform::TemporaryDirectory() + L"\\controller-test-" + std::to_wstring(random()) +
           std::to_wstring(random());
}

} // namespace

TemporaryDirectory::TemporaryDirectory() : path(UniquePath()) {
    RequireSuccess(platform::CreateNewDirectory(path), "cannot make the folder", path);
}

TemporaryDirectory::~TemporaryDirectory() {
    // Files that a test still holds open stay.
    (void)platform::RemoveTree(path);
}

std::wstring TemporaryDirectory::operator/(const std::wstring& name) const {
    return path + L"\\" + name;
}

void WriteTextFile(const std::wstring& path, std::string_view bytes) {
    RequireSuccess(platform::ReplaceFile(path, bytes), "cannot write", path);
}

std::string ReadTextFile(const std::wstring& path) {
    std::string bytes;
    RequireSuccess(platform::ReadFile(path, largestTestFile, bytes), "cannot read", path);
    return bytes;
}
