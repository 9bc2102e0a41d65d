#pragma once

#include "CommonControllerLib/CallbackFunctor.h"
#include "CommonControllerLib/Export.h"

#include <string>

class IVanteloPresenter;

/// The handlers of the engine's answers, one class an answer. Each reads its payload and calls the presenter's
/// operation of the same name; the result is the operation's, and false, without a call, for a payload that cannot be
/// read.
///
/// The presenter makes and owns its handlers and outlives them. They add no locking: a call runs on the transmitter's
/// thread.
class CONTROLLER_API ResponseFunctor : public CallbackFunctor {
public:
    explicit ResponseFunctor(IVanteloPresenter* owner) : presenter(owner) {}

protected:
    ResponseFunctor(const ResponseFunctor&) = default;
    ResponseFunctor& operator=(const ResponseFunctor&) = default;
    ~ResponseFunctor() = default;

    IVanteloPresenter* presenter;
};

class CONTROLLER_API FetchScenariosResponseFunctor final : public ResponseFunctor {
public:
    using ResponseFunctor::ResponseFunctor;
    bool operator()(const std::wstring& payload) override;
};

class CONTROLLER_API FetchScenarioParameterSetsResponseFunctor final : public ResponseFunctor {
public:
    using ResponseFunctor::ResponseFunctor;
    bool operator()(const std::wstring& payload) override;
};

class CONTROLLER_API InitJobsResponseFunctor final : public ResponseFunctor {
public:
    using ResponseFunctor::ResponseFunctor;
    bool operator()(const std::wstring& payload) override;
};

class CONTROLLER_API DeleteJobsResponseFunctor final : public ResponseFunctor {
public:
    using ResponseFunctor::ResponseFunctor;
    bool operator()(const std::wstring& payload) override;
};

class CONTROLLER_API FetchLocalizedStringsResponseFunctor final : public ResponseFunctor {
public:
    using ResponseFunctor::ResponseFunctor;
    bool operator()(const std::wstring& payload) override;
};

class CONTROLLER_API InitCultureResponseFunctor final : public ResponseFunctor {
public:
    using ResponseFunctor::ResponseFunctor;
    bool operator()(const std::wstring& payload) override;
};

/// Takes any payload.
class CONTROLLER_API TerminateResponseFunctor final : public ResponseFunctor {
public:
    using ResponseFunctor::ResponseFunctor;
    bool operator()(const std::wstring& payload) override;
};

class CONTROLLER_API EnqueueJobsFinishFunctor final : public ResponseFunctor {
public:
    using ResponseFunctor::ResponseFunctor;
    bool operator()(const std::wstring& payload) override;
};

class CONTROLLER_API UpdateProgressFunctor final : public ResponseFunctor {
public:
    using ResponseFunctor::ResponseFunctor;
    bool operator()(const std::wstring& payload) override;
};

class CONTROLLER_API CancelJobsFinishFunctor final : public ResponseFunctor {
public:
    using ResponseFunctor::ResponseFunctor;
    bool operator()(const std::wstring& payload) override;
};

class CONTROLLER_API CheckJobStatusResponseFunctor final : public ResponseFunctor {
public:
    using ResponseFunctor::ResponseFunctor;
    bool operator()(const std::wstring& payload) override;
};
