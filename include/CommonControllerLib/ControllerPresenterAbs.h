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

/// The base class of presenters: owns one handler per answer and registers the handlers with a transmitter, so that
/// each answer calls the operation of the same name. The derived class implements the operations.
///
/// Threads: the operations run on the transmitter's thread.
class CONTROLLER_API ControllerPresenterAbs : public IVanteloPresenter {
public:
    /// Creates the eleven handlers, bound to this presenter.
    ControllerPresenterAbs();
    /// The copy shares the handlers, which stay bound to the original presenter. Both destructors delete them, so the
    /// caller must ensure that only one of the two presenters is destroyed.
    ControllerPresenterAbs(const ControllerPresenterAbs& other);
    /// As the copy constructor; the handlers that this presenter had stay allocated.
    ControllerPresenterAbs& operator=(const ControllerPresenterAbs& other);
    /// Deletes the handlers except that of "CancelJobsFinish", which stays allocated: required by the published
    /// interface, held by ControllerPresenterAbsTest.TheHandlerOfCancelJobsFinishOutlivesThePresenter. Call
    /// `LeaveEventTransmitter` first if a transmitter may still deliver.
    virtual ~ControllerPresenterAbs();

    /// Registers the handlers with `transmitter`, which stores their addresses; the presenter does not store
    /// `transmitter`. Null is ignored.
    void SetEventTransmitter(EventTransmitter* transmitter);
    /// Removes the handlers from `transmitter`. After the return no handler runs, except one that this is called from.
    /// Null is ignored.
    void LeaveEventTransmitter(EventTransmitter* transmitter);

private:
    /// The event names and their handlers, in order of registration.
    std::array<std::pair<std::wstring, CallbackFunctor*>, 11> Handlers() const;

    // Owned. Plain pointers because a copy shares them.
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
