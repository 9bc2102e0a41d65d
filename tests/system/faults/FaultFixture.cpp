#include "system/faults/FaultFixture.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "kit/OtherProcesses.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

FaultFixture::FaultFixture() {
    Place("job_list.json", "controller.log", "work");
}

void FaultFixture::Place(const std::string& jobList, const std::string& log, const std::string& workDirectory) {
    std::string settings = UsualSettings(jobList);
    const auto replace = [&settings](const std::string& from, const std::string& to) {
        settings.replace(settings.find(from), from.size(), to);
    };
    replace(R"("logFile":"")", R"("logFile":")" + log + "\"");
    replace(R"("workDirectory":"work")", R"("workDirectory":")" + workDirectory + "\"");
    WriteSettings(settings);
    listFile = platform::ResolveAgainst(directory.Path(), text::FromUtf8(jobList));
    logFile = platform::ResolveAgainst(directory.Path(), text::FromUtf8(log));
}

std::vector<JobListInfo> FaultFixture::SavedJobs() const {
    std::vector<JobListInfo> jobs;
    if (platform::Exists(listFile)) {
        EXPECT_TRUE(ControllerCSWrapper::ParseJobList(listFile, jobs));
    }
    return jobs;
}

std::string FaultFixture::Log() const {
    return platform::Exists(logFile) ? ReadTextFile(logFile) : std::string();
}

int FaultFixture::CountInLog(const std::string& part) const {
    const std::string log = Log();
    int count = 0;
    for (std::size_t place = log.find(part); place != std::string::npos; place = log.find(part, place + 1)) {
        ++count;
    }
    return count;
}

void FaultFixture::AwaitLog(const std::string& part) const {
    Await("the log line " + part, [&] { return CountInLog(part) > 0; });
}

void FaultFixture::ExpectJobs(TestClient& frontEnd, const std::string& steps, int count, JobStatus status) {
    for (const JobIdInfo& job : frontEnd.Enqueue(JobsFile(steps, count))) {
        frontEnd.AwaitStatus(job.id, status);
    }
}

void FaultFixture::RestartHost() {
    test_support::KillProcess(host.Get());
    AwaitHostEnd();
    StartHost();
}

std::vector<std::wstring> FaultFixture::BesideList(const std::wstring& part) const {
    std::vector<platform::DirectoryEntry> entries;
    EXPECT_TRUE(platform::ListDirectory(platform::ParentDirectory(listFile), entries));
    std::vector<std::wstring> paths;
    for (const auto& entry : entries) {
        if (entry.name.find(part) != std::wstring::npos) {
            paths.push_back(platform::ParentDirectory(listFile) + L"\\" + entry.name);
        }
    }
    return paths;
}
