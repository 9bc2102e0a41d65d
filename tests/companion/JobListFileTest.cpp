#include "companion/JobListFile.h"

#include <algorithm>
#include <optional>
#include <regex>
#include <thread>

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "companion/ControllerCSWrapper.h"
#include "companion/Settings.h"
#include "platform/FileSystem.h"
#include "support/TemporaryFolder.h"

namespace {

std::vector<JobListInfo> Jobs(std::initializer_list<const wchar_t*> ids) {
    std::vector<JobListInfo> jobs;
    for (const wchar_t* id : ids) {
        jobs.emplace_back().id = id;
    }
    return jobs;
}

class JobListFileTest : public testing::Test {
protected:
    JobListFileTest() {
        WriteTextFile(folder / L"settings.json", R"({"version":1,"jobListFile":"data/job_list.json"})");
        settings::UseFile(folder / L"settings.json");
    }
    ~JobListFileTest() override { settings::UseFile(L""); }

    bool Write(const std::vector<JobListInfo>& jobs) const {
        return ControllerCSWrapper::CreateJsonFile(ControllerCSWrapper::Serialize(L"JobList", jobs), path);
    }
    /// What is read from the file; nothing when there is no list to read.
    std::optional<std::vector<JobListInfo>> Read() const {
        std::vector<JobListInfo> jobs;
        return ControllerCSWrapper::ParseJobList(path, jobs) ? std::optional(jobs) : std::nullopt;
    }
    std::optional<std::vector<JobListInfo>> ReadBackup() const {
        std::vector<JobListInfo> jobs;
        return platform::Exists(backup) && ControllerCSWrapper::Deserialize(Text(backup), jobs) ? std::optional(jobs)
                                                                                                : std::nullopt;
    }
    static std::wstring Text(const std::wstring& file) {
        std::wstring text;
        EXPECT_TRUE(ControllerCSWrapper::ReadJsonFile(file, text));
        return text;
    }
    /// The files that were kept aside, sorted.
    std::vector<std::wstring> Corrupt() const {
        std::vector<platform::FolderEntry> entries;
        platform::ListFolder(folder / L"data", entries);
        std::vector<std::wstring> names;
        for (const auto& entry : entries) {
            if (entry.name.find(L".corrupt-") != std::wstring::npos) {
                names.push_back(entry.name);
            }
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    const TemporaryFolder folder;
    const std::wstring path = folder / L"data\\job_list.json";
    const std::wstring backup = path + L".bak";
    const LogCapture log;
};

} // namespace

TEST_F(JobListFileTest, AListIsReadAsItWasWritten) {
    EXPECT_EQ(ControllerCSWrapper::GetJobListFile(), path);
    ASSERT_TRUE(Write(Jobs({L"a", L"b"})));
    EXPECT_EQ(Read(), Jobs({L"a", L"b"}));
    EXPECT_EQ(log.Text(), "");
}

TEST_F(JobListFileTest, RecordsAreAppended) {
    ASSERT_TRUE(Write(Jobs({L"b"})));
    auto jobs = Jobs({L"a"});
    ASSERT_TRUE(ControllerCSWrapper::ParseJobList(path, jobs));
    EXPECT_EQ(jobs, Jobs({L"a", L"b"}));
}

TEST_F(JobListFileTest, AMissingListIsSilentlyNone) {
    EXPECT_EQ(Read(), std::nullopt);
    EXPECT_EQ(log.Text(), "");
}

TEST_F(JobListFileTest, EachWriteKeepsTheListBefore) {
    ASSERT_TRUE(Write(Jobs({L"a"})));
    EXPECT_EQ(ReadBackup(), std::nullopt);
    ASSERT_TRUE(Write(Jobs({L"b"})));
    EXPECT_EQ(ReadBackup(), Jobs({L"a"}));
    ASSERT_TRUE(Write(Jobs({L"c"})));
    EXPECT_EQ(ReadBackup(), Jobs({L"b"}));
    EXPECT_EQ(Read(), Jobs({L"c"}));
}

TEST_F(JobListFileTest, OtherFilesGetNoBackup) {
    const std::wstring other = folder / L"other.json";
    ASSERT_TRUE(ControllerCSWrapper::CreateJsonFile(L"{\"JobList\":[]}", other));
    ASSERT_TRUE(ControllerCSWrapper::CreateJsonFile(L"{\"JobList\":[]}", other));
    EXPECT_FALSE(platform::Exists(other + L".bak"));
}

TEST_F(JobListFileTest, AByteOrderMarkAndOtherMembersAreTaken) {
    WriteTextFile(path, "\xEF\xBB\xBF{\"comment\":[1],\"JobList\":[{\"id\":\"a\"}]}\n");
    EXPECT_EQ(Read(), Jobs({L"a"}));
}

TEST_F(JobListFileTest, WhatIsNoListIsKeptAside) {
    for (const char* bad : {"", "{}", "[]", "null", "{\"EnqueueJobs\":[]}", "{\"JobList\":{}}", "{\"JobList\":null}",
                            "{\"JobList\":[{\"id\":1}]}", "{\"JobList\":[]}\xFF", "{\"JobList\":[],\"JobList\":[]}",
                            "{\"JobList\":[{\"progress\":1e2}]}", "{\"JobList\":[{\"id\":\"\xED\xA0\x80\"}]}"}) {
        WriteTextFile(path, bad);
        const std::size_t before = Corrupt().size();
        EXPECT_EQ(Read(), std::nullopt) << bad;
        EXPECT_FALSE(platform::Exists(path)) << bad;
        EXPECT_EQ(Corrupt().size(), before + 1) << bad;
    }
}

TEST_F(JobListFileTest, TheNameOfAListThatIsKeptAsideTellsTheTime) {
    for (int i = 0; i < 3; ++i) {
        WriteTextFile(path, "{");
        EXPECT_EQ(Read(), std::nullopt);
    }
    const std::wregex form(L"job_list\\.json\\.corrupt-\\d{8}T\\d{6}Z(-[23])?");
    ASSERT_EQ(Corrupt().size(), 3U);
    for (const auto& name : Corrupt()) {
        EXPECT_TRUE(std::regex_match(name, form)) << name;
        EXPECT_EQ(ReadTextFile(folder / (L"data\\" + name)), "{");
    }
}

TEST_F(JobListFileTest, TheBackupIsReadInPlaceOfAnUnreadableList) {
    ASSERT_TRUE(Write(Jobs({L"a"})));
    ASSERT_TRUE(Write(Jobs({L"b"})));
    WriteTextFile(path, "{\"JobList\":\n[{\"id\":\"b\"},{]}");
    EXPECT_EQ(Read(), Jobs({L"a"}));
    EXPECT_EQ(Corrupt().size(), 1U);
    EXPECT_NE(log.Text().find("warning"), std::string::npos) << log.Text();
    EXPECT_NE(log.Text().find("job_list.json, line 2, column 14: not JSON: "), std::string::npos) << log.Text();
    EXPECT_NE(log.Text().find("The backup is used in its place: "), std::string::npos) << log.Text();

    ASSERT_TRUE(Write(Jobs({L"a", L"c"})));
    EXPECT_EQ(Read(), Jobs({L"a", L"c"}));
    EXPECT_EQ(ReadBackup(), Jobs({L"a"}));
}

TEST_F(JobListFileTest, WithoutAGoodBackupThereIsNoList) {
    WriteTextFile(path, "{");
    WriteTextFile(backup, "[");
    EXPECT_EQ(Read(), std::nullopt);
    EXPECT_EQ(ReadTextFile(backup), "[");
    EXPECT_NE(log.Text().find("There is no usable backup: "), std::string::npos) << log.Text();
}

TEST_F(JobListFileTest, AListThatSomebodyDeletedStaysDeleted) {
    ASSERT_TRUE(Write(Jobs({L"a"})));
    ASSERT_TRUE(Write(Jobs({L"b"})));
    ASSERT_FALSE(platform::RemoveFile(path));
    EXPECT_EQ(Read(), std::nullopt);
    EXPECT_EQ(ReadBackup(), Jobs({L"a"}));
    EXPECT_NE(log.Text().find("There is no job list "), std::string::npos) << log.Text();
}

TEST_F(JobListFileTest, AListChangedByOthersIsBackedUpWhenItIsGood) {
    ASSERT_TRUE(Write(Jobs({L"a"})));
    WriteTextFile(path, "{\"JobList\":[{\"id\":\"edited\"}]}");
    ASSERT_TRUE(Write(Jobs({L"b"})));
    EXPECT_EQ(ReadBackup(), Jobs({L"edited"}));
}

TEST_F(JobListFileTest, AListBrokenByOthersIsKeptAsideBeforeTheNextWrite) {
    ASSERT_TRUE(Write(Jobs({L"a"})));
    ASSERT_TRUE(Write(Jobs({L"b"})));
    WriteTextFile(path, "half a li");
    ASSERT_TRUE(Write(Jobs({L"c"})));
    EXPECT_EQ(Read(), Jobs({L"c"}));
    EXPECT_EQ(ReadBackup(), Jobs({L"a"}));
    ASSERT_EQ(Corrupt().size(), 1U);
    EXPECT_EQ(ReadTextFile(folder / (L"data\\" + Corrupt()[0])), "half a li");
}

TEST_F(JobListFileTest, NoListIsEverHalfTaken) {
    const std::string whole = R"({"JobList":[{"id":"a\u00e9"},{"seqId":12}]})";
    for (std::size_t length = 0; length < whole.size(); ++length) {
        WriteTextFile(path, whole.substr(0, length));
        EXPECT_EQ(Read(), std::nullopt) << length;
        platform::RemoveTree(folder / L"data");
    }
}

TEST_F(JobListFileTest, AFolderInItsPlaceIsNoList) {
    ASSERT_FALSE(platform::EnsureFolder(path));
    EXPECT_EQ(Read(), std::nullopt);
}

TEST_F(JobListFileTest, ManyThreadsReadWholeListsWhileOthersWrite) {
    ASSERT_TRUE(Write(Jobs({L"0", L"0"})));
    const auto write = [this](const wchar_t* id) {
        for (int i = 0; i < 15; ++i) {
            EXPECT_TRUE(Write(Jobs({id, id})));
        }
    };
    const auto read = [this] {
        for (int i = 0; i < 15; ++i) {
            const auto jobs = Read();
            ASSERT_TRUE(jobs);
            ASSERT_EQ(jobs->size(), 2U);
            EXPECT_EQ((*jobs)[0], (*jobs)[1]);
        }
    };
    std::vector<std::thread> threads;
    threads.emplace_back(write, L"1");
    threads.emplace_back(write, L"2");
    threads.emplace_back(read);
    threads.emplace_back(read);
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_TRUE(Corrupt().empty());
    EXPECT_TRUE(ReadBackup());
}
