#pragma once

#include "CommonControllerLib/Export.h"
#include "CommonControllerLib/IVanteloPresenter.h"

#include <array>
#include <string>
#include <utility>

class CallbackFunctor;
class CancelJobsFinishFunctor;
class CheckJobStatusResponseFunctor;
class DeleteJobsResponseFunctor;
class EnqueueJobsFinishFunctor;
class EventTransmitter;
class FetchLocalizedStringsResponseFunctor;
class FetchScenarioParameterSetsResponseFunctor;
class FetchScenariosResponseFunctor;
class InitCultureResponseFunctor;
class InitJobsResponseFunctor;
class TerminateResponseFunctor;
class UpdateProgressFunctor;

/// The base of every presenter: owns one handler an answer and registers them with a transmitter, so that each answer
/// reaches the operation of the same name. What an answer does is the derived class's.
///
/// Threads: the operations run on the transmitter's thread.
class CONTROLLER_API ControllerPresenterAbs : public IVanteloPresenter {
public:
    /// Makes the eleven handlers, each bound to this presenter.
    ControllerPresenterAbs();
    /// The copy holds the same handlers, which stay bound to the first presenter and are released by each destructor:
    /// whoever copies sees to it that only one of the two is destroyed.
    ControllerPresenterAbs(const ControllerPresenterAbs& other);
    ControllerPresenterAbs& operator=(const ControllerPresenterAbs& other);
    /// Releases the handlers, except the one for "CancelJobsFinish", which stays allocated. A presenter outlives its
    /// registrations: a transmitter that may still deliver must have been left before.
    virtual ~ControllerPresenterAbs();

    /// Registers the handlers with `transmitter`, which keeps their addresses; it is not kept here. Null registers
    /// nothing.
    void SetEventTransmitter(EventTransmitter* transmitter);
    /// Takes the handlers away again; when it returns none of them runs, unless it is called out of one. Null is
    /// nothing to leave.
    void LeaveEventTransmitter(EventTransmitter* transmitter);

private:
    /// What is registered under which name, in order.
    std::array<std::pair<std::wstring, CallbackFunctor*>, 11> Handlers() const;

    // Owned; plain pointers, because a copy shares them.
    FetchScenariosResponseFunctor* fetchScenariosResponseHandler;
    FetchScenarioParameterSetsResponseFunctor* fetchScenarioParameterSetsResponseHandler;
    InitJobsResponseFunctor* initJobsResponseHandler;
    DeleteJobsResponseFunctor* deleteJobsResponseHandler;
    FetchLocalizedStringsResponseFunctor* fetchLocalizedStringsResponseHandler;
    InitCultureResponseFunctor* initCultureResponseHandler;
    TerminateResponseFunctor* terminateResponseHandler;
    EnqueueJobsFinishFunctor* enqueueJobsFinishHandler;
    UpdateProgressFunctor* updateProgressHandler;
    CancelJobsFinishFunctor* cancelJobsFinishHandler;
    CheckJobStatusResponseFunctor* checkJobStatusResponseHandler;
};
