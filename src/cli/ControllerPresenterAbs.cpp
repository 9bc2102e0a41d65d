#include "cli/ControllerPresenterAbs.h"

#include "cli/ResponseFunctors.h"
#include "modules/EventTransmitter.h"

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
    // All but the handler of "CancelJobsFinish", which stays allocated, on purpose.
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
    transmitter->AddEventHandler(L"FetchScenariosResponse", fetchScenariosResponseHandler);
    transmitter->AddEventHandler(L"FetchScenarioParameterSetsResponse", fetchScenarioParameterSetsResponseHandler);
    transmitter->AddEventHandler(L"InitJobsResponse", initJobsResponseHandler);
    transmitter->AddEventHandler(L"DeleteJobsResponse", deleteJobsResponseHandler);
    transmitter->AddEventHandler(L"FetchLocalizedStringsResponse", fetchLocalizedStringsResponseHandler);
    transmitter->AddEventHandler(L"InitCultureResponse", initCultureResponseHandler);
    transmitter->AddEventHandler(L"TerminateResponse", terminateResponseHandler);
    transmitter->AddEventHandler(L"EnqueueJobsFinish", enqueueJobsFinishHandler);
    transmitter->AddEventHandler(L"CancelJobsFinish", cancelJobsFinishHandler);
    transmitter->AddEventHandler(L"UpdateProgress", updateProgressHandler);
    transmitter->AddEventHandler(L"CheckJobStatusResponse", checkJobStatusResponseHandler);
}
