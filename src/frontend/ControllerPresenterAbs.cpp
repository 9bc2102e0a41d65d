#include "CommonControllerLib/ControllerPresenterAbs.h"

#include "CommonControllerLib/EventTransmitter.h"
#include "CommonControllerLib/ResponseFunctors.h"
#include "formats/Events.h"

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
    return {{{events::fetchScenariosResponse.name, fetchScenariosResponseHandler},
             {events::fetchScenarioParameterSetsResponse.name, fetchScenarioParameterSetsResponseHandler},
             {events::initJobsResponse.name, initJobsResponseHandler},
             {events::deleteJobsResponse.name, deleteJobsResponseHandler},
             {events::fetchLocalizedStringsResponse.name, fetchLocalizedStringsResponseHandler},
             {events::initCultureResponse.name, initCultureResponseHandler},
             {events::terminateResponse.name, terminateResponseHandler},
             {events::enqueueJobsFinish.name, enqueueJobsFinishHandler},
             {events::cancelJobsFinish.name, cancelJobsFinishHandler},
             {events::updateProgress.name, updateProgressHandler},
             {events::checkJobStatusResponse.name, checkJobStatusResponseHandler}}};
}
