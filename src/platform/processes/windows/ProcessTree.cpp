#include "platform/processes/ProcessTree.h"

#include <chrono>
#include <utility>

#include <windows.h>

#include "platform/processes/windows/CreateProcess.h"
#include "platform/processes/windows/JobLimits.h"

namespace platform {
namespace {

/// Exit code of the processes that TerminateJobObject ends.
constexpr UINT endedByForce = 1;

} // namespace

struct ProcessTree::State {
    OwnedHandle job;
    /// Completion port that gets a message when the last process ends.
    OwnedHandle messages;
    OwnedHandle root;

    Error Open() {
        if (messages) {
            return {};
        }
        job = OwnedHandle(CreateJobObjectW(nullptr, nullptr));
        OwnedHandle port(CreateIoCompletionPort(INVALID_HANDLE_VALUE, nullptr, 0, 1));
        if (!job || !port) {
            return LastError();
        }
        // When this process ends, its handle to the job object is closed, and the system kills all processes in the
        // job.
        JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = JobLimitsOf({});
        JOBOBJECT_ASSOCIATE_COMPLETION_PORT association{job.Get(), port.Get()};
        if (SetInformationJobObject(job.Get(), JobObjectExtendedLimitInformation, &limits, sizeof limits) == 0 ||
            SetInformationJobObject(job.Get(), JobObjectAssociateCompletionPortInformation, &association,
                                    sizeof association) == 0) {
            return LastError();
        }
        messages = std::move(port);
        return {};
    }

    Error Limit(const ResourceLimits& limits) const {
        JOBOBJECT_EXTENDED_LIMIT_INFORMATION values = JobLimitsOf(limits);
        if (SetInformationJobObject(job.Get(), JobObjectExtendedLimitInformation, &values, sizeof values) == 0) {
            return LastError();
        }
        if (limits.cpuPercent == 0) {
            return {};
        }
        auto rate = CpuRateOf(limits, GetActiveProcessorCount(ALL_PROCESSOR_GROUPS));
        const bool isSet =
            SetInformationJobObject(job.Get(), JobObjectCpuRateControlInformation, &rate, sizeof rate) != 0;
        return isSet ? Error{} : LastError();
    }

    bool HasProcesses() const {
        JOBOBJECT_BASIC_ACCOUNTING_INFORMATION numbers{};
        return job &&
               QueryInformationJobObject(job.Get(), JobObjectBasicAccountingInformation, &numbers, sizeof numbers,
                                         nullptr) != 0 &&
               numbers.ActiveProcesses > 0;
    }

    /// Returns at a message of the job, or after a timeout, because the messages are not guaranteed.
    void WaitForMessage() const {
        constexpr DWORD longestMilliseconds = 100;
        DWORD message = 0;
        ULONG_PTR key = 0;
        LPOVERLAPPED process = nullptr;
        GetQueuedCompletionStatus(messages.Get(), &message, &key, &process, longestMilliseconds);
    }
};

ProcessTree::ProcessTree() : state(std::make_unique<State>()) {}

ProcessTree::~ProcessTree() {
    Kill();
}

bool ProcessTree::Limit(const ResourceLimits& limits, std::wstring& problem) {
    const Error opened = state->Open();
    if (const Error result = opened ? state->Limit(limits) : opened; !result) {
        problem = L"the job object refuses them: " + result.Text();
        return false;
    }
    return true;
}

bool ProcessTree::HasExceededMemory() const {
    return false;
}

Error ProcessTree::Start(const ProcessStart& start) {
    if (const Error result = state->Open(); !result) {
        return result;
    }
    return CreateChild(start, state->job.Get(), start.output, state->root);
}

void* ProcessTree::Root() const {
    return state->root.Get();
}

std::optional<std::int32_t> ProcessTree::RootExitCode() const {
    return ExitCode(state->root.Get());
}

void* ProcessTree::ChildExited() const {
    return nullptr;
}

void ProcessTree::ReapChildren() {}

void ProcessTree::RequestStop() {}

void ProcessTree::Kill() {
    constexpr std::chrono::seconds longest{10};
    const auto deadline = std::chrono::steady_clock::now() + longest;
    while (state->HasProcesses() && std::chrono::steady_clock::now() < deadline) {
        TerminateJobObject(state->job.Get(), endedByForce);
        state->WaitForMessage();
    }
}

/// Job objects need no preparation.
bool PrepareResourceLimits(std::wstring& /*problem*/) {
    return true;
}

} // namespace platform
