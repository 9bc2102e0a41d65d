#include <atomic>
#include <future>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "kit/SystemHelpers.h"
#include "kit/TemporaryDirectory.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/ReplaceFile.h"

namespace {

using platform::Error;
using platform::ErrorKind;
using platform::ReplaceFile;
using platform::ReplaceFileKeepingBackup;

class ReplaceFileTest : public testing::Test {
protected:
    std::vector<std::wstring> Names() const {
        std::vector<platform::DirectoryEntry> entries;
        EXPECT_TRUE(platform::ListDirectory(directory.Path(), entries));
        std::vector<std::wstring> names;
        for (const platform::DirectoryEntry& entry : entries) {
            names.push_back(entry.name);
        }
        return names;
    }

    Error Replace(std::string_view bytes) { return ReplaceFileKeepingBackup(list, bytes, backup); }

    /// On Windows a reader that almost always holds the file can outlast the retries of one call.
    Error ReplaceInTheEnd(std::string_view bytes) {
        Error result = Replace(bytes);
        for (int round = 0; round < 50 && result.kind == ErrorKind::AccessDenied && OnWindows(); ++round) {
            result = Replace(bytes);
        }
        return result;
    }

    TemporaryDirectory directory;
    const std::wstring list = directory / L"list.json";
    const std::wstring backup = directory / L"list.json.bak";
};

TEST_F(ReplaceFileTest, WritesExactlyTheseBytes) {
    const std::string table[] = {"", "text", std::string("a\0b\r\n\n\x1A\xFF", 8), std::string(3'000'000, 'x')};
    for (const std::string& content : table) {
        EXPECT_TRUE(ReplaceFile(list, content));
        EXPECT_TRUE(ReadTextFile(list) == content) << content.size();
    }
    EXPECT_THAT(Names(), testing::UnorderedElementsAre(L"list.json"));
}

TEST_F(ReplaceFileTest, MakesMissingParents) {
    EXPECT_TRUE(ReplaceFile(directory / L"a\\b/c.json", "x"));
    EXPECT_EQ(ReadTextFile(directory / L"a\\b\\c.json"), "x");
}

TEST_F(ReplaceFileTest, KeepsTheNarrowerPermissionsOfTheOldFile) {
    ASSERT_TRUE(ReplaceFile(list, "old"));
    SetPermissions(list, 0600);
    ASSERT_TRUE(ReplaceFile(list, "new"));
    EXPECT_EQ(PermissionsOf(list).value_or(0600), 0600u);
    SetPermissions(list, 0666);
    ASSERT_TRUE(ReplaceFile(list, "new"));
    EXPECT_EQ(PermissionsOf(list).value_or(0666), 0666u);
}

TEST_F(ReplaceFileTest, AFailureLeavesEverythingAsItWas) {
    WriteTextFile(directory / L"folder\\inside", "kept");
    WriteTextFile(directory / L"file", "kept");
    EXPECT_FALSE(ReplaceFile(directory / L"folder", "x"));
    EXPECT_EQ(ReplaceFile(directory / L"file\\below", "x").kind, ErrorKind::NotFound);
    EXPECT_EQ(ReplaceFile(directory.Path() + L"\\", "x").kind, ErrorKind::NotFound);
    EXPECT_EQ(ReplaceFile(L"", "x").kind, ErrorKind::NotFound);
    EXPECT_EQ(ReadTextFile(directory / L"folder\\inside"), "kept");
    EXPECT_EQ(ReadTextFile(directory / L"file"), "kept");
    EXPECT_THAT(Names(), testing::UnorderedElementsAre(L"file", L"folder"));
}

TEST_F(ReplaceFileTest, ReplacesALinkAndNotWhatItLeadsTo) {
    WriteTextFile(directory / L"elsewhere", "kept");
    if (!MakeLink(directory / L"elsewhere", list)) {
        GTEST_SKIP() << "no symbolic links here";
    }
    EXPECT_TRUE(ReplaceFile(list, "new"));
    EXPECT_EQ(ReadTextFile(directory / L"elsewhere"), "kept");
    EXPECT_EQ(ReadTextFile(list), "new");
}

TEST_F(ReplaceFileTest, AFileThatIsHeldOpenIsLeftAlone) {
    WriteTextFile(list, "old");
    const FileHold hold(list);
    const Error result = ReplaceFile(list, "new");
    EXPECT_NE(static_cast<bool>(result), FileHold::Protects());
    EXPECT_EQ(ReadTextFile(list), FileHold::Protects() ? "old" : "new");
    EXPECT_THAT(Names(), testing::UnorderedElementsAre(L"list.json"));
}

TEST_F(ReplaceFileTest, AFileThatIsSoonLetGoIsReplaced) {
    WriteTextFile(list, "old");
    auto hold = std::make_unique<FileHold>(list);
    std::promise<void> started;
    auto replaced = std::async(std::launch::async, [&] {
        started.set_value();
        return ReplaceFile(list, "new");
    });
    started.get_future().wait();
    hold.reset();
    EXPECT_TRUE(replaced.get());
    EXPECT_EQ(ReadTextFile(list), "new");
}

TEST_F(ReplaceFileTest, WhatKilledWritersLeftIsRemovedAndNothingElse) {
    WriteTextFile(directory / L"list.json.tmp-0123456789abcdef", "half");
    WriteTextFile(directory / L"list.json.tmp-0000000000000000", "");
    const wchar_t* const others[] = {L"list.json",
                                     L"other.json.tmp-0123456789abcdef",
                                     L"list.json.bak.tmp-0123456789abcdef",
                                     L"list.json.tmp-0123456789abcde",
                                     L"list.json.tmp-0123456789abcdeff",
                                     L"list.json.tmp-0123456789abcdeg",
                                     L".tmp-0123456789abcdef"};
    for (const wchar_t* const name : others) {
        WriteTextFile(directory / name, "kept");
    }
    platform::RemoveStaleTemporaries(list);
    EXPECT_THAT(Names(), testing::UnorderedElementsAreArray(others));
}

TEST_F(ReplaceFileTest, TheLongestNamesCanBeReplacedToo) {
    const std::wstring longest = directory / std::wstring(255, L'n');
    EXPECT_TRUE(ReplaceFile(longest, "one"));
    EXPECT_EQ(ReadTextFile(longest), "one");
    platform::RemoveStaleTemporaries(longest);
    EXPECT_EQ(Names().size(), 1U);
}

TEST_F(ReplaceFileTest, TheFirstFileHasNoBackup) {
    EXPECT_TRUE(Replace("one"));
    EXPECT_EQ(ReadTextFile(list), "one");
    EXPECT_THAT(Names(), testing::UnorderedElementsAre(L"list.json"));
}

TEST_F(ReplaceFileTest, TheBackupIsTheFileBefore) {
    for (const char* content : {"one", "two", "three"}) {
        EXPECT_TRUE(Replace(content));
    }
    EXPECT_EQ(ReadTextFile(list), "three");
    EXPECT_EQ(ReadTextFile(backup), "two");
    EXPECT_THAT(Names(), testing::UnorderedElementsAre(L"list.json", L"list.json.bak"));
}

TEST_F(ReplaceFileTest, ABackupThatIsTheSameFileAlreadyIsNoObstacle) {
    WriteTextFile(list, "one");
    ASSERT_TRUE(platform::LinkFile(list, backup)); // as if it crashed between the two steps
    EXPECT_TRUE(Replace("two"));
    EXPECT_EQ(ReadTextFile(list), "two");
    EXPECT_EQ(ReadTextFile(backup), "one");
    EXPECT_THAT(Names(), testing::UnorderedElementsAre(L"list.json", L"list.json.bak"));
}

TEST_F(ReplaceFileTest, ABackupThatCannotBeMadeStopsTheReplacement) {
    WriteTextFile(list, "one");
    WriteTextFile(directory / L"list.json.bak\\inside", "");
    EXPECT_FALSE(Replace("two"));
    EXPECT_EQ(ReadTextFile(list), "one");
    EXPECT_THAT(Names(), testing::UnorderedElementsAre(L"list.json", L"list.json.bak"));
}

/// Reads a file repeatedly until stopped, and counts contents that are not one of the complete ones.
class Reader {
public:
    explicit Reader(const std::wstring& filePath) : path(filePath), thread([this] { Run(); }) {}
    ~Reader() { Stop(); }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    void Stop() {
        stopped = true;
        if (thread.joinable()) {
            thread.join();
        }
    }
    int Missing() const { return missing; }
    int Broken() const { return broken; }

private:
    void Run() {
        while (!stopped) {
            std::string bytes;
            const Error result = platform::ReadFile(path, 1'000'000, bytes);
            missing += result.kind == ErrorKind::NotFound ? 1 : 0;
            const bool whole = bytes.size() == 10'000 && bytes.find_first_not_of(bytes[0]) == std::string::npos;
            broken += !result || whole ? 0 : 1;
        }
    }

    std::wstring path;
    std::atomic<bool> stopped = false;
    int missing = 0;
    int broken = 0;
    std::thread thread;
};

TEST_F(ReplaceFileTest, AReaderAlwaysFindsAWholeFile) {
    ASSERT_TRUE(Replace(std::string(10'000, 'a')));
    Reader reader(list);
    const int rounds = OnWindows() ? 10 : 200;
    for (int round = 0; round < rounds; ++round) {
        ASSERT_TRUE(ReplaceInTheEnd(std::string(10'000, static_cast<char>('a' + round % 26))));
    }
    reader.Stop();
    EXPECT_EQ(reader.Missing(), 0);
    EXPECT_EQ(reader.Broken(), 0);
}

} // namespace
