#pragma once

#include "CommonControllerLib/CallbackFunctor.h"
#include "CommonControllerLib/Export.h"

#include <string>

class IVanteloPresenter;

/// The handlers of the engine's answers, one class per answer. Each parses its payload, calls the presenter's operation
/// of the same name and returns its result. On failure to parse the payload it calls nothing and returns false.
///
/// Ownership: the presenter creates and owns its handlers and must outlive them. Threads: no locking; a handler runs on
/// the transmitter's thread.
class CONTROLLER_API ResponseFunctor : public CallbackFunctor {
public:
    /// `owner` is the presenter to call.
    explicit ResponseFunctor(IVanteloPresenter* owner) : presenter(owner) {}

protected:
    /// A copy calls the same presenter.
    ResponseFunctor(const ResponseFunctor&) = default;
    /// Calls the presenter of the other handler from now on.
    ResponseFunctor& operator=(const ResponseFunctor&) = default;
    ~ResponseFunctor() = default;

    /// Not owned.
    IVanteloPresenter* presenter;
};

/// Passes on the scenarios of the catalogue.
class CONTROLLER_API FetchScenariosResponseFunctor final : public ResponseFunctor {
public:
    using ResponseFunctor::ResponseFunctor;
    /// As of the base class.
    bool operator()(const std::wstring& payload) override;
};

/// Passes on the parameter sets of a scenario.
class CONTROLLER_API FetchScenarioParameterSetsResponseFunctor final : public ResponseFunctor {
public:
    using ResponseFunctor::ResponseFunctor;
    /// As of the base class.
    bool operator()(const std::wstring& payload) override;
};

/// Passes on the whole job list.
class CONTROLLER_API InitJobsResponseFunctor final : public ResponseFunctor {
public:
    using ResponseFunctor::ResponseFunctor;
    /// As of the base class.
    bool operator()(const std::wstring& payload) override;
};

/// Passes on the ids of deleted jobs.
class CONTROLLER_API DeleteJobsResponseFunctor final : public ResponseFunctor {
public:
    using ResponseFunctor::ResponseFunctor;
    /// As of the base class.
    bool operator()(const std::wstring& payload) override;
};

/// Passes on the texts of a culture.
class CONTROLLER_API FetchLocalizedStringsResponseFunctor final : public ResponseFunctor {
public:
    using ResponseFunctor::ResponseFunctor;
    /// As of the base class.
    bool operator()(const std::wstring& payload) override;
};

/// Passes on the selected culture.
class CONTROLLER_API InitCultureResponseFunctor final : public ResponseFunctor {
public:
    using ResponseFunctor::ResponseFunctor;
    /// As of the base class.
    bool operator()(const std::wstring& payload) override;
};

/// Accepts any payload.
class CONTROLLER_API TerminateResponseFunctor final : public ResponseFunctor {
public:
    using ResponseFunctor::ResponseFunctor;
    /// As of the base class.
    bool operator()(const std::wstring& payload) override;
};

/// Passes on the answer to an enqueue request.
class CONTROLLER_API EnqueueJobsFinishFunctor final : public ResponseFunctor {
public:
    using ResponseFunctor::ResponseFunctor;
    /// As of the base class.
    bool operator()(const std::wstring& payload) override;
};

/// Passes on jobs that have changed.
class CONTROLLER_API UpdateProgressFunctor final : public ResponseFunctor {
public:
    using ResponseFunctor::ResponseFunctor;
    /// As of the base class.
    bool operator()(const std::wstring& payload) override;
};

/// Passes on jobs that were cancelled.
class CONTROLLER_API CancelJobsFinishFunctor final : public ResponseFunctor {
public:
    using ResponseFunctor::ResponseFunctor;
    /// As of the base class.
    bool operator()(const std::wstring& payload) override;
};

/// Passes on the status of requested jobs.
class CONTROLLER_API CheckJobStatusResponseFunctor final : public ResponseFunctor {
public:
    using ResponseFunctor::ResponseFunctor;
    /// As of the base class.
    bool operator()(const std::wstring& payload) override;
};
