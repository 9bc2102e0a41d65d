#include "CommonControllerLib/ControllerPresenterAbs.h"

#include "CommonControllerLib/EventTransmitter.h"
#include "CommonControllerLib/ResponseFunctors.h"

ControllerPresenterAbs::ControllerPresenterAbs()
    : fetchScenariosResponseHandler(new FetchScenariosResponseFunctor(this)),
      fetchScenarioParameterSetsResponseHandler(new FetchScenarioParameterSetsResponseFunctor(this)),
      initJobsResponseHandler(new InitJobsResponseFunctor(this)),
      deleteJobsResponseHandler(new DeleteJobsResponseFunctor(this)),
      fetchLocalizedStringsResponseHandler(new FetchLocalizedStringsResponseFunctor(this)),
      initCultureResponseHandler(new InitCultureResponseFunctor(this)),
      terminateResponseHandler(new TerminateResponseFunctor(this)),
      enqueueJobsFinishHandler(new EnqueueJobsFinishFunctor(this)),
      updateProgressHandler(new UpdateProgressFunctor(this)),
      cancelJobsFinishHandler(new CancelJobsFinishFunctor(this)),
      checkJobStatusResponseHandler(new CheckJobStatusResponseFunctor(this)) {}

ControllerPresenterAbs::ControllerPresenterAbs(const ControllerPresenterAbs& other) = default;

ControllerPresenterAbs& ControllerPresenterAbs::operator=(const ControllerPresenterAbs& other) = default;

ControllerPresenterAbs::~ControllerPresenterAbs() {
    // All but the handler of "CancelJobsFinish": the published interface requires that it stays allocated
    // (ControllerPresenterAbsTest.TheHandlerOfCancelJobsFinishOutlivesThePresenter).
    delete fetchScenariosResponseHandler;
    delete fetchScenarioParameterSetsResponseHandler;
    delete initJobsResponseHandler;
    delete deleteJobsResponseHandler;
    delete fetchLocalizedStringsResponseHandler;
    delete initCultureResponseHandler;
    delete terminateResponseHandler;
    delete enqueueJobsFinishHandler;
    delete updateProgressHandler;
    delete checkJobStatusResponseHandler;
}

void ControllerPresenterAbs::SetEventTransmitter(EventTransmitter* transmitter) {
    if (transmitter == nullptr) {
        return;
    }
    for (const auto& [eventName, handler] : Handlers()) {
        transmitter->AddEventHandler(eventName, handler);
    }
}

void ControllerPresenterAbs::LeaveEventTransmitter(EventTransmitter* transmitter) {
    if (transmitter == nullptr) {
        return;
    }
    for (const auto& [eventName, handler] : Handlers()) {
        transmitter->AddEventHandler(eventName, nullptr);
    }
}

std::array<std::pair<std::wstring, CallbackFunctor*>, 11> ControllerPresenterAbs::Handlers() const {
    return {{{L"FetchScenariosResponse", fetchScenariosResponseHandler},
             {L"FetchScenarioParameterSetsResponse", fetchScenarioParameterSetsResponseHandler},
             {L"InitJobsResponse", initJobsResponseHandler},
             {L"DeleteJobsResponse", deleteJobsResponseHandler},
             {L"FetchLocalizedStringsResponse", fetchLocalizedStringsResponseHandler},
             {L"InitCultureResponse", initCultureResponseHandler},
             {L"TerminateResponse", terminateResponseHandler},
             {L"EnqueueJobsFinish", enqueueJobsFinishHandler},
             {L"CancelJobsFinish", cancelJobsFinishHandler},
             {L"UpdateProgress", updateProgressHandler},
             {L"CheckJobStatusResponse", checkJobStatusResponseHandler}}};
}
