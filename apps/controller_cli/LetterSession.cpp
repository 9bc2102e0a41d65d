#include "controller_cli/LetterSession.h"

#include <algorithm>

#include "companion/ControllerCSWrapper.h"
#include "controller_cli/ConnectionInterval.h"
#include "modules/EventTransmitter.h"

namespace controller_cli {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr wchar_t cancelEvent[] = L"CancelJobsFinish";

} // namespace

bool CancelAnswers::operator()(const std::wstring& payload) {
    std::vector<JobStatusInfo> infos;
    const bool isUsable = ControllerCSWrapper::Deserialize(payload, infos) && presenter.CancelJobsFinish(infos);
    if (isUsable) {
        ++count;
        arrived.Raise();
    }
    return isUsable;
}

LetterSession::LetterSession(CommandContext& context, Start start)
    : transmitter(ConnectToHost(context, start)),
      presenter(context.host.TransmitterId(), context.host.TransmitterModule()), cancelAnswers(presenter) {
    transmitter.AddEventHandler(cancelEvent, &cancelAnswers);
}

LetterSession::~LetterSession() {
    presenter.LeaveEventTransmitter(&transmitter);
}

bool LetterSession::IsConnected() const {
    return transmitter.IsConnected();
}

std::size_t LetterSession::WaitForCancelAnswers(std::size_t expected, milliseconds patience) {
    const auto deadline = steady_clock::now() + patience;
    while (cancelAnswers.Count() < expected && IsConnected()) {
        const auto left = std::chrono::ceil<milliseconds>(deadline - steady_clock::now());
        if (left <= milliseconds(0)) {
            break;
        }
        platform::WaitForAny({cancelAnswers.Arrived()}, std::min(left, connectionInterval));
        cancelAnswers.Clear();
    }
    return cancelAnswers.Count();
}

} // namespace controller_cli
