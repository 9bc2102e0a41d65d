#pragma once

#include "CommonControllerLib/CLIPresenter.h"
#include "CommonControllerLib/CallbackFunctor.h"
#include "formats/Scheduling.h"
#include "front_end/commands/CommandContext.h"
#include "front_end/connection/HostConnection.h"
#include "platform/processes/Waiting.h"

#include <atomic>
#include <cstddef>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace front_end {

/// Forwards the answers to cancellations to a presenter, and counts them.
class CancelAnswers final : public CallbackFunctor {
public:
    explicit CancelAnswers(CLIPresenter& answeredPresenter) : presenter(answeredPresenter) {}

    bool operator()(const std::wstring& payload) override;

    std::size_t Count() const { return count; }
    /// Signalled if an answer has arrived since `Clear`.
    void* Readable() const { return arrived.Handle(); }
    void Clear() { arrived.Clear(); }

private:
    CLIPresenter& presenter;
    std::atomic<std::size_t> count = 0;
    platform::Event arrived;
};

/// Forwards the answers to enqueue requests to a presenter, and keeps the host's reasons for rejected input sets,
/// because the presenter keeps only numbers. Answers arrive on the transmitter's thread.
class EnqueueAnswers final : public CallbackFunctor {
public:
    explicit EnqueueAnswers(CLIPresenter& answeredPresenter) : presenter(answeredPresenter) {}

    bool operator()(const std::wstring& payload) override;

    /// Empty if the host gave no reason or has not answered.
    std::wstring RefusalReason(const std::wstring& requestId, std::size_t inputSet) const;

private:
    CLIPresenter& presenter;
    mutable std::mutex mutex;
    std::map<std::wstring, std::vector<std::vector<std::wstring>>> reasons;
};

/// A presenter connected to a host, for the one-letter commands. Throws `CommandFailure` if there is no host.
/// Broadcasts of the host reach the presenter during construction, so no class may be derived from it: such an object
/// would be incomplete then.
class ShortOptionSession {
public:
    ShortOptionSession(CommandContext& context, Start start);
    ~ShortOptionSession();
    ShortOptionSession(const ShortOptionSession&) = delete;
    ShortOptionSession& operator=(const ShortOptionSession&) = delete;

    CLIPresenter& Presenter() { return presenter; }
    bool IsConnected() const;

    /// `CLIPresenter::EnqueueJobs` with what the user decides about the start of the jobs.
    [[nodiscard]] bool Enqueue(ScheduledRequest& request, std::vector<int>& seqIds);

    /// Why the host created no job for an input set of an answered request; for a request without input sets, use index
    /// 0. Empty if the host gave no reason.
    std::wstring RefusalReason(const EnqueueJobsInfo& request, std::size_t inputSet) const {
        return enqueueAnswers.RefusalReason(request.requestId, inputSet);
    }

    /// Waits until `expected` cancellations are answered, the timeout expires, or the host disconnects. Returns the
    /// number of answers.
    std::size_t WaitForCancelAnswers(std::size_t expected, std::chrono::milliseconds timeout);

private:
    const HostConnection connection;
    CLIPresenter presenter;
    CancelAnswers cancelAnswers;
    EnqueueAnswers enqueueAnswers;
};

} // namespace front_end
