#pragma once

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/Messages.h"
#include "kit/controller_host/HostFixture.h"

/// Responses without the host's loop: the test handles one request at a time.
class AnswersFixture : public HostFixture {
protected:
    void Ask(const std::wstring& name, const std::wstring& payload) {
        answers->Answer({7, name, payload});
        answers->SendAll();
    }
    void Ask(const std::wstring& name) { Ask(name, ControllerCSWrapper::Serialize(name)); }

    /// The response sent to the requester alone.
    template <class Value>
    Value Answered(const std::wstring& name) {
        const LineDouble::Sent sent = line.WaitFor(name);
        EXPECT_EQ(sent.peer, 7U);
        Value value;
        EXPECT_TRUE(messages::DeserializeContent(sent.payload, value));
        return value;
    }
    std::wstring Refusal() { return Answered<std::wstring>(L"RequestRefused"); }

    /// A request with one job per input file.
    EnqueueJobsInfo RequestFor(const std::wstring& scenario, const std::vector<std::wstring>& inputs) const {
        EnqueueJobsInfo request;
        request.requestId = L"r";
        request.scenario.id = scenario;
        request.outputDir = directory / L"output";
        for (const std::wstring& input : inputs) {
            request.inputFileSets.push_back({input});
        }
        return request;
    }
    JobEnqueueResult Enqueued(const EnqueueJobsInfo& request) {
        Ask(L"EnqueueJobs", ControllerCSWrapper::Serialize(L"EnqueueJobs", request));
        return Answered<JobEnqueueResult>(L"EnqueueJobsFinish");
    }
    std::vector<JobListInfo> Jobs() {
        std::vector<JobListInfo> jobs;
        engine->GetJobList(jobs);
        return jobs;
    }
};
