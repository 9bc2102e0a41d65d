#include "formats/JobListFile.h"

#include <algorithm>
#include <optional>
#include <regex>
#include <thread>

#include <gtest/gtest.h>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "kit/LogCapture.h"
#include "kit/TemporaryDirectory.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/RemoveTree.h"
#include "platform/files/ReplaceFile.h"
#include "services/Settings.h"

namespace {

std::vector<JobListInfo> Jobs(std::initializer_list<const wchar_t*> ids) {
    std::vector<JobListInfo> jobs;
    for (const wchar_t* id : ids) {
        jobs.emplace_back().id = id;
    }
    return jobs;
}

int CountOf(const std::string& part, const std::string& text) {
    int count = 0;
    for (std::size_t place = text.find(part); place != std::string::npos; place = text.find(part, place + 1)) {
        ++count;
    }
    return count;
}

/// A job with all members set.
JobListInfo RichJob() {
    JobListInfo job;
    job.id = L"3f9a0c1";
    job.seqId = 12;
    job.progress = 55;
    job.status = JobStatus::Running;
    job.outputDir = L"C:\\out\\\u00e9 \"quoted\"";
    job.workDir = L"C:\\work\\3f9a0c1";
    job.startTime = L"2024-02-29T23:59:59Z";
    job.endTime = L"2024-02-29T23:59:58Z";
    job.scenario.id = L"mesh.rb";
    job.scenario.path = L"C:\\s\\mesh.rb";
    job.scenario.inputs = {{L"STL", {L"stl", L"STL"}}};
    job.inputFiles = {L"a.stl", L"\u65e5\u672c.stl"};
    job.runArgument = L"{\"size\":640}\n";
    return job;
}

/// Writes the file without the controller, like another program.
void WriteQuickly(const std::wstring& path, const std::string& bytes) {
    ASSERT_TRUE(platform::ReplaceFile(path, bytes, platform::Durability::Unsynced));
}

class JobListFileTest : public testing::Test {
protected:
    JobListFileTest() {
        WriteTextFile(directory / L"settings.json", R"({"version":1,"jobListFile":"data/job_list.json"})");
        settings::UseFile(directory / L"settings.json");
    }
    ~JobListFileTest() override { settings::UseFile(L""); }

    bool Write(const std::vector<JobListInfo>& jobs) const {
        return ControllerCSWrapper::CreateJsonFile(ControllerCSWrapper::Serialize(L"JobList", jobs), path);
    }
    /// The list read from the file, or nothing if there is no readable list.
    std::optional<std::vector<JobListInfo>> Read() const {
        std::vector<JobListInfo> jobs;
        return ControllerCSWrapper::ParseJobList(path, jobs) ? std::optional(jobs) : std::nullopt;
    }
    std::optional<std::vector<JobListInfo>> ReadBackup() const { return Records(backup); }
    static std::optional<std::vector<JobListInfo>> Records(const std::wstring& file) {
        std::vector<JobListInfo> jobs;
        return platform::Exists(file) && ControllerCSWrapper::Deserialize(Text(file), jobs) ? std::optional(jobs)
                                                                                            : std::nullopt;
    }
    static std::wstring Text(const std::wstring& file) {
        std::wstring text;
        EXPECT_TRUE(ControllerCSWrapper::ReadJsonFile(file, text));
        return text;
    }
    /// The quarantined files, sorted.
    std::vector<std::wstring> Corrupt() const {
        std::vector<platform::DirectoryEntry> entries;
        EXPECT_TRUE(platform::ListDirectory(directory / L"data", entries));
        std::vector<std::wstring> names;
        for (const auto& entry : entries) {
            if (entry.name.find(L".corrupt-") != std::wstring::npos) {
                names.push_back(entry.name);
            }
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    /// After this the list can be neither written nor read.
    void PutFileInPlaceOfDirectory() const {
        ASSERT_TRUE(platform::RenameFile(directory / L"data", directory / L"moved"));
        WriteTextFile(directory / L"data", "");
    }
    void PutDirectoryBack() const {
        ASSERT_TRUE(platform::RemoveFile(directory / L"data"));
        ASSERT_TRUE(platform::RenameFile(directory / L"moved", directory / L"data"));
    }

    const TemporaryDirectory directory;
    const std::wstring path = directory / L"data\\job_list.json";
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
    const std::wstring other = directory / L"other.json";
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
        EXPECT_EQ(ReadTextFile(directory / (L"data\\" + name)), "{");
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
    ASSERT_TRUE(platform::RemoveFile(path));
    EXPECT_EQ(Read(), std::nullopt);
    EXPECT_EQ(ReadBackup(), Jobs({L"a"}));
    EXPECT_NE(log.Text().find("There is no job list "), std::string::npos) << log.Text();
}

TEST_F(JobListFileTest, AListChangedByOthersIsKeptForGood) {
    ASSERT_TRUE(Write(Jobs({L"a"})));
    WriteTextFile(path, "{\"JobList\":[{\"id\":\"edited\"}]}");
    ASSERT_TRUE(Write(Jobs({L"b"})));
    ASSERT_TRUE(Write(Jobs({L"c"})));
    EXPECT_EQ(Records(path + L".replaced"), Jobs({L"edited"}));
    EXPECT_NE(log.Text().find("The job list has been changed by another program: "), std::string::npos) << log.Text();
}

TEST_F(JobListFileTest, WhatTheBackupGaveIsThereWhenTheListIsReadAgain) {
    ASSERT_TRUE(Write(Jobs({L"a"})));
    ASSERT_TRUE(Write(Jobs({L"b"})));
    WriteTextFile(path, "half a li");
    EXPECT_EQ(Read(), Jobs({L"a"}));
    EXPECT_EQ(Read(), Jobs({L"a"}));
    EXPECT_EQ(Corrupt().size(), 1U);
}

TEST_F(JobListFileTest, AListOfANewerVersionIsLeftAsItStands) {
    const std::string newer = R"({"version":99,"JobList":{"a":{"state":"waiting"}}})";
    ASSERT_TRUE(Write(Jobs({L"a"})));
    ASSERT_TRUE(Write(Jobs({L"b"})));
    WriteTextFile(path, newer);
    EXPECT_EQ(Read(), std::nullopt);
    EXPECT_EQ(ReadTextFile(path), newer);
    std::wstring problem;
    EXPECT_FALSE(job_list_file::CheckUsable(path, problem));
    EXPECT_NE(problem.find(L"version"), std::wstring::npos) << problem;

    ASSERT_TRUE(Write(Jobs({L"c"})));
    ASSERT_EQ(Corrupt().size(), 1U);
    EXPECT_EQ(ReadTextFile(directory / (L"data\\" + Corrupt()[0])), newer);
}

TEST_F(JobListFileTest, AListWithMembersOfANewerProgramOrWithoutThoseOfThisOneIsTaken) {
    WriteTextFile(path, R"({"version":1,"JobList":[{"id":"a","colour":{"level":3}},{"seqId":2}],"host":"x"})");
    const auto jobs = Read();
    ASSERT_TRUE(jobs);
    ASSERT_EQ(jobs->size(), 2U);
    EXPECT_EQ((*jobs)[0], Jobs({L"a"})[0]);
    EXPECT_EQ((*jobs)[1].seqId, 2);
    std::wstring problem;
    EXPECT_TRUE(job_list_file::CheckUsable(path, problem)) << problem;
}

TEST_F(JobListFileTest, AListThatIsMissingOrNoneIsNoObstacle) {
    std::wstring problem;
    EXPECT_TRUE(job_list_file::CheckUsable(path, problem)) << problem;
    WriteTextFile(path, "{");
    EXPECT_TRUE(job_list_file::CheckUsable(path, problem)) << problem;
    EXPECT_TRUE(Corrupt().empty());
}

TEST_F(JobListFileTest, AListBrokenByOthersIsKeptAsideBeforeTheNextWrite) {
    ASSERT_TRUE(Write(Jobs({L"a"})));
    ASSERT_TRUE(Write(Jobs({L"b"})));
    WriteTextFile(path, "half a li");
    ASSERT_TRUE(Write(Jobs({L"c"})));
    EXPECT_EQ(Read(), Jobs({L"c"}));
    EXPECT_EQ(ReadBackup(), Jobs({L"a"}));
    ASSERT_EQ(Corrupt().size(), 1U);
    EXPECT_EQ(ReadTextFile(directory / (L"data\\" + Corrupt()[0])), "half a li");
}

TEST_F(JobListFileTest, NoListIsEverHalfTaken) {
    ASSERT_TRUE(Write({RichJob(), RichJob()}));
    const std::string whole = ReadTextFile(path);
    ASSERT_TRUE(Write(Jobs({L"b"})));
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const std::string cut = whole.substr(0, length);
        WriteQuickly(path, cut);
        ASSERT_EQ(Read(), (std::vector{RichJob(), RichJob()})) << length;
        ASSERT_EQ(Corrupt().size(), 1U) << length;
        const std::wstring corrupt = directory / (L"data\\" + Corrupt()[0]);
        ASSERT_EQ(ReadTextFile(corrupt), cut);
        ASSERT_TRUE(platform::RemoveFile(corrupt));
    }
}

TEST_F(JobListFileTest, WhatAPowerFailureFilledWithZerosIsNoList) {
    ASSERT_TRUE(Write({RichJob()}));
    const std::string whole = ReadTextFile(path);
    ASSERT_TRUE(Write(Jobs({L"b"})));
    for (const std::size_t kept : {std::size_t{0}, std::size_t{1}, whole.size() / 2, whole.size() - 1, whole.size()}) {
        const std::size_t zeros = kept == whole.size() ? 512 : whole.size() - kept;
        WriteQuickly(path, whole.substr(0, kept) + std::string(zeros, '\0'));
        EXPECT_EQ(Read(), std::vector{RichJob()}) << kept;
        EXPECT_EQ(Corrupt().size(), 1U) << kept;
        ASSERT_TRUE(platform::RemoveFile(directory / (L"data\\" + Corrupt().at(0))));
    }
}

TEST_F(JobListFileTest, WritesThatFailInARowAreToldOnceAndTheirEndToo) {
    ASSERT_TRUE(Write(Jobs({L"a"})));
    PutFileInPlaceOfDirectory();
    for (const wchar_t* id : {L"b", L"c", L"d"}) {
        EXPECT_FALSE(Write(Jobs({id})));
    }
    EXPECT_EQ(CountOf("job_list.json: ", log.Text()), 1) << log.Text();
    EXPECT_EQ(CountOf("warning", log.Text()), 1) << log.Text();
    EXPECT_TRUE(job_list_file::IsUnwritten());

    PutDirectoryBack();
    EXPECT_TRUE(Write(Jobs({L"e"})));
    EXPECT_FALSE(job_list_file::IsUnwritten());
    EXPECT_EQ(CountOf("is written again, after failed attempts: 3", log.Text()), 1) << log.Text();
    EXPECT_EQ(Read(), Jobs({L"e"}));
}

TEST_F(JobListFileTest, ADirectoryThatWasRemovedIsMadeAgain) {
    ASSERT_TRUE(Write(Jobs({L"a"})));
    ASSERT_TRUE(platform::RemoveTree(directory / L"data"));
    ASSERT_TRUE(Write(Jobs({L"b"})));
    EXPECT_EQ(Read(), Jobs({L"b"}));
}

TEST_F(JobListFileTest, ADirectoryInItsPlaceIsKeptAside) {
    ASSERT_TRUE(Write(Jobs({L"a"})));
    ASSERT_TRUE(platform::RemoveFile(path));
    WriteTextFile(path + L"\\inside.txt", "mine");
    ASSERT_TRUE(Write(Jobs({L"b"})));
    EXPECT_EQ(Read(), Jobs({L"b"}));
    ASSERT_EQ(Corrupt().size(), 1U);
    EXPECT_EQ(ReadTextFile(directory / (L"data\\" + Corrupt()[0] + L"\\inside.txt")), "mine");
}

TEST_F(JobListFileTest, ADirectoryInItsPlaceIsNoList) {
    ASSERT_TRUE(platform::EnsureDirectory(path));
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

TEST_F(JobListFileTest, WhatWasKeptAsideIsNamedUntilItIsRemovedOrRenamed) {
    EXPECT_TRUE(job_list_file::KeptAside(directory / L"no folder\\job_list.json").empty());
    EXPECT_TRUE(job_list_file::KeptAside(path).empty());
    WriteTextFile(directory / L"data\\other.json.corrupt-20240101T000000Z", "of another list");
    WriteTextFile(path, "no list");
    EXPECT_EQ(Read(), std::nullopt);
    ASSERT_EQ(job_list_file::KeptAside(path), std::vector{directory / (L"data\\" + Corrupt().at(0))});
    WriteTextFile(path + L".corrupt-20010101T000000Z", "from before");
    const std::vector<std::wstring> both = job_list_file::KeptAside(path);
    ASSERT_EQ(both.size(), 2U);
    EXPECT_EQ(both[0], path + L".corrupt-20010101T000000Z");
    ASSERT_TRUE(platform::RemoveFile(both[0]));
    ASSERT_TRUE(platform::RenameFile(both[1], directory / L"data\\dealt with.json"));
    EXPECT_TRUE(job_list_file::KeptAside(path).empty());
}
