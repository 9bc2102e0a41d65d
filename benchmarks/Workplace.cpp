#include "Workplace.h"

#include <stdexcept>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "platform/files/ReplaceFile.h"
#include "services/Settings.h"
#include "text/Text.h"

Workplace::Workplace(int parallelJobs) {
    WriteTextFile(
        Path(L"settings.json"),
        R"({"version":1,"workDirectory":"work","jobListFile":"job_list.json","logFile":"controller.log",)"
        R"("scenarioDirectories":[{"path":"scenarios","label":""}],"interpreters":{".rb":["true"]},"parallelJobs":)" +
            std::to_string(parallelJobs) + "}");
    settings::UseFile(Path(L"settings.json"));
}

Workplace::~Workplace() {
    settings::UseFile(L"");
}

std::wstring Workplace::MakeFile(const std::wstring& name) const {
    // Not flushed: a benchmark makes thousands of them.
    if (!platform::ReplaceFile(Path(name), "something", platform::Durability::Unsynced)) {
        throw std::runtime_error("cannot write a file");
    }
    return Path(name);
}

void Workplace::WriteJobList(std::size_t rows) const {
    std::vector<JobListInfo> jobs;
    for (int number = 1; number <= static_cast<int>(rows); ++number) {
        jobs.push_back(FinishedJob(number));
    }
    if (!ControllerCSWrapper::CreateJsonFile(ControllerCSWrapper::Serialize(L"JobList", jobs), JobListFile())) {
        throw std::runtime_error("cannot write the job list");
    }
}

JobListInfo FinishedJob(int number) {
    JobListInfo job;
    job.id = std::to_wstring(0x10000000 + number);
    job.seqId = number;
    job.progress = 100;
    job.status = JobStatus::Success;
    job.outputDir = L"\\srv\\projects\\assembly\\output\\part_" + std::to_wstring(number);
    job.workDir = L"\\srv\\projects\\assembly\\work\\" + job.id;
    job.startTime = L"2024-03-05T07:08:09Z";
    job.endTime = L"2024-03-05T07:09:10Z";
    job.scenario.id = L"12345678901234567890";
    job.scenario.relativePath = L"reports\\mesh_report.rb";
    job.scenario.path = L"\\srv\\scenarios\\reports\\mesh_report.rb";
    job.scenario.displayName = L"mesh_report";
    job.scenario.inputs = {{L"STL", {L"stl"}}};
    job.inputFiles = {L"\\srv\\projects\\assembly\\input\\part_" + std::to_wstring(number) + L".stl"};
    job.runArgument = L"picture=640";
    return job;
}
