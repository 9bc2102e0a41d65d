#include "kit/front_end/CadjobsFixture.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"

namespace {

/// A quarantined list exists beside the job list.
class DamagedListTest : public CadjobsFixture {
protected:
    DamagedListTest() { UseSettings(R"({"version":1,"logFile":"","jobListFile":"job_list.json"})"); }

    void Damage() const { WriteTextFile(keptAside, "no list"); }

    std::string Notice() const {
        return "cadjobs: A job list that could not be read is kept as " +
               text::ToUtf8(platform::ToNativeText(keptAside)) +
               ": jobs may be missing. Remove or rename that file once you have dealt with it; until then every "
               "command "
               "says so.\n";
    }

    const std::wstring keptAside = directory / L"job_list.json.corrupt-20240305T070809Z";
};

TEST_F(DamagedListTest, EveryCommandSaysSoUntilTheFileIsDealtWith) {
    Damage();
    for (const std::vector<std::wstring>& command : {std::vector<std::wstring>{L"list"}, {L"list", L"--json"}}) {
        console.errors.clear();
        EXPECT_EQ(Run(command), 0);
        EXPECT_EQ(console.errors, Notice());
    }
    ASSERT_TRUE(platform::RemoveFile(keptAside));
    console.errors.clear();
    EXPECT_EQ(Run({L"list"}), 0);
    EXPECT_EQ(console.errors, "");
}

TEST_F(DamagedListTest, CommandsThatFailSaySoToo) {
    Damage();
    EXPECT_NE(Run({L"log", L"99"}), 0);
    EXPECT_EQ(console.errors.find(Notice()), 0U) << console.errors;
}

TEST_F(DamagedListTest, WhatTheHostFindsDuringTheCommandIsSaidAtItsEnd) {
    console.onWrite = [this] { Damage(); };
    EXPECT_EQ(Run({L"list"}), 0);
    EXPECT_EQ(console.errors, Notice());
}

TEST_F(DamagedListTest, HelpSaysNothingOfIt) {
    Damage();
    EXPECT_EQ(Run({L"--help"}), 0);
    EXPECT_EQ(Run({L"--version"}), 0);
    EXPECT_EQ(console.errors, "");
}

} // namespace
