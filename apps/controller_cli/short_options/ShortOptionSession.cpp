#include "controller_cli/short_options/ShortOptionSession.h"

#include <algorithm>

#include "CommonControllerLib/EventTransmitter.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/Events.h"
#include "formats/Messages.h"
#include "front_end/connection/ConnectionInterval.h"

namespace front_end {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

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

bool EnqueueAnswers::operator()(const std::wstring& payload) {
    JobEnqueueResult result;
    if (!ControllerCSWrapper::Deserialize(payload, result)) {
        return false;
    }
    {
        const std::lock_guard lock(mutex);
        reasons[result.requestId] = result.inputSetResults;
    }
    return presenter.EnqueueJobsFinish(result);
}

std::wstring EnqueueAnswers::RefusalReason(const std::wstring& requestId, std::size_t inputSet) const {
    const std::lock_guard lock(mutex);
    const auto found = reasons.find(requestId);
    const bool isKnown = found != reasons.end() && inputSet < found->second.size() && !found->second[inputSet].empty();
    return isKnown ? found->second[inputSet].front() : std::wstring();
}

ShortOptionSession::ShortOptionSession(CommandContext& context, Start start)
    : connection(ConnectToHost(context, start)),
      presenter(context.host.TransmitterId(), context.host.TransmitterModule()), cancelAnswers(presenter),
      enqueueAnswers(presenter) {
    connection.transmitter.AddEventHandler(events::cancelJobsFinish.name, &cancelAnswers);
    connection.transmitter.AddEventHandler(events::enqueueJobsFinish.name, &enqueueAnswers);
}

ShortOptionSession::~ShortOptionSession() {
    presenter.LeaveEventTransmitter(&connection.transmitter);
}

bool ShortOptionSession::Enqueue(ScheduledRequest& request, std::vector<int>& seqIds) {
    return presenter.EnqueueJobs(request, seqIds, [&] {
        // A request that could not be sent is detected by the missing answer.
        (void)connection.transmitter.SendEvent(events::enqueueJobs.name,
                                               messages::Serialize(events::enqueueJobs, request));
    });
}

bool ShortOptionSession::IsConnected() const {
    return connection.IsOpen();
}

std::size_t ShortOptionSession::WaitForCancelAnswers(std::size_t expected, milliseconds timeout) {
    const auto deadline = steady_clock::now() + timeout;
    while (cancelAnswers.Count() < expected && IsConnected()) {
        const auto left = std::chrono::ceil<milliseconds>(deadline - steady_clock::now());
        if (left <= milliseconds(0)) {
            break;
        }
        platform::WaitForAny({cancelAnswers.Readable()}, std::min(left, connectionInterval));
        cancelAnswers.Clear();
    }
    return cancelAnswers.Count();
}

} // namespace front_end
