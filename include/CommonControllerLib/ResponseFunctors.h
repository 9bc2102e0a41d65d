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

/// Accepts any payload.
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
