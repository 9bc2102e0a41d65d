#pragma once

#include "cli/CLIPresenter.h"
#include "controller_cli/CommandContext.h"
#include "controller_cli/HostConnection.h"
#include "modules/CallbackFunctor.h"
#include "platform/Waiting.h"

#include <atomic>
#include <cstddef>

class EventTransmitter;

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

/// A presenter with a host at the other end of its line, for the one-letter commands. Throws `CommandFailure` where
/// there is no host. What the host tells everybody reaches the presenter while it is made: a class derived from it
/// would not be whole then.
class LetterSession {
public:
    LetterSession(CommandContext& context, Start start);
    ~LetterSession();
    LetterSession(const LetterSession&) = delete;
    LetterSession& operator=(const LetterSession&) = delete;

    CLIPresenter& Presenter() { return presenter; }
    bool IsConnected() const;

    /// Waits until so many cancellations are answered, the time is over, or the host has gone. How many are.
    std::size_t WaitForCancelAnswers(std::size_t expected, std::chrono::milliseconds patience);

private:
    EventTransmitter& transmitter;
    CLIPresenter presenter;
    CancelAnswers cancelAnswers;
};

} // namespace controller_cli
