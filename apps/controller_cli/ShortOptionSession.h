#pragma once

#include "CommonControllerLib/CLIPresenter.h"
#include "CommonControllerLib/CallbackFunctor.h"
#include "controller_cli/CommandContext.h"
#include "controller_cli/HostConnection.h"
#include "platform/processes/Waiting.h"

#include <atomic>
#include <cstddef>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace controller_cli {

/// Passes the answers to cancellations on to a presenter, and counts them.
class CancelAnswers final : public CallbackFunctor {
public:
    explicit CancelAnswers(CLIPresenter& answeredPresenter) : presenter(answeredPresenter) {}

    bool operator()(const std::wstring& payload) override;

    std::size_t Count() const { return count; }
    /// Signalled when an answer has come since `Clear`.
    void* Arrived() const { return arrived.Handle(); }
    void Clear() { arrived.Clear(); }

private:
    CLIPresenter& presenter;
    std::atomic<std::size_t> count = 0;
    platform::Event arrived;
};

/// Passes the answers to enqueue requests on to a presenter, and keeps the reasons for which the host has refused input
/// sets: the presenter keeps numbers alone. Answers come on the transmitter's thread.
class EnqueueAnswers final : public CallbackFunctor {
public:
    explicit EnqueueAnswers(CLIPresenter& answeredPresenter) : presenter(answeredPresenter) {}

    bool operator()(const std::wstring& payload) override;

    /// Empty where the host gave none, or has not answered.
    std::wstring RefusalReason(const std::wstring& requestId, std::size_t inputSet) const;

private:
    CLIPresenter& presenter;
    mutable std::mutex mutex;
    std::map<std::wstring, std::vector<std::vector<std::wstring>>> reasons;
};

/// A presenter with a host at the other end of its line, for the one-letter commands. Throws `CommandFailure` where
/// there is no host. What the host tells everybody reaches the presenter while it is made: a class derived from it
/// would not be whole then.
class ShortOptionSession {
public:
    ShortOptionSession(CommandContext& context, Start start);
    ~ShortOptionSession();
    ShortOptionSession(const ShortOptionSession&) = delete;
    ShortOptionSession& operator=(const ShortOptionSession&) = delete;

    CLIPresenter& Presenter() { return presenter; }
    bool IsConnected() const;

    /// Why the host has made no job of an input set of a request that it has answered; the first one's stands for a
    /// request without any. Empty where it does not say.
    std::wstring RefusalReason(const EnqueueJobsInfo& request, std::size_t inputSet) const {
        return enqueueAnswers.RefusalReason(request.requestId, inputSet);
    }

    /// Waits until so many cancellations are answered, the time is over, or the host has gone. How many are.
    std::size_t WaitForCancelAnswers(std::size_t expected, std::chrono::milliseconds patience);

private:
    const HostConnection connection;
    CLIPresenter presenter;
    CancelAnswers cancelAnswers;
    EnqueueAnswers enqueueAnswers;
};

} // namespace controller_cli
