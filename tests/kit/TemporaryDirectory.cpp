#include "kit/TemporaryDirectory.h"

#include <cstddef>
#include <random>

#include "kit/Require.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/RemoveTree.h"
#include "platform/files/ReplaceFile.h"
#include "platform/system/Environment.h"
#include "text/Text.h"

namespace {

constexpr std::size_t largestTestFile = std::size_t{1} << 30;

std::wstring UniquePath() {
    std::random_device random;
    return platform::TemporaryDirectory() + L"\\controller-test-" + std::to_wstring(random()) +
           std::to_wstring(random());
}

} // namespace

TemporaryDirectory::TemporaryDirectory() : path(UniquePath()) {
    test_support::Require(platform::CreateNewDirectory(path), "cannot make the folder " + text::ToUtf8(path));
}

TemporaryDirectory::~TemporaryDirectory() {
    // Files that a test still holds open stay.
    (void)platform::RemoveTree(path);
}

std::wstring TemporaryDirectory::operator/(const std::wstring& name) const {
    return path + L"\\" + name;
}

void WriteTextFile(const std::wstring& path, std::string_view bytes) {
    test_support::Require(platform::ReplaceFile(path, bytes), "cannot write " + text::ToUtf8(path));
}

std::string ReadTextFile(const std::wstring& path) {
    std::string bytes;
    test_support::Require(platform::ReadFile(path, largestTestFile, bytes), "cannot read " + text::ToUtf8(path));
    return bytes;
}
