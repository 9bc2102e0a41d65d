#include "CommonControllerLib/ResponseFunctors.h"

#include "CommonControllerLib/IVanteloPresenter.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"

namespace {

template <typename Value>
bool Deliver(const std::wstring& payload, IVanteloPresenter* presenter,
             bool (IVanteloPresenter::*operation)(const Value&)) {
    Value value;
    return ControllerCSWrapper::Deserialize(payload, value) && (presenter->*operation)(value);
}

} // namespace

bool FetchScenariosResponseFunctor::operator()(const std::wstring& payload) {
    return Deliver(payload, presenter, &IVanteloPresenter::FetchScenariosResponse);
}

bool FetchScenarioParameterSetsResponseFunctor::operator()(const std::wstring& payload) {
    return Deliver(payload, presenter, &IVanteloPresenter::FetchScenarioParameterSetsResponse);
}

bool InitJobsResponseFunctor::operator()(const std::wstring& payload) {
    return Deliver(payload, presenter, &IVanteloPresenter::InitJobsResponse);
}

bool DeleteJobsResponseFunctor::operator()(const std::wstring& payload) {
    return Deliver(payload, presenter, &IVanteloPresenter::DeleteJobsResponse);
}

bool FetchLocalizedStringsResponseFunctor::operator()(const std::wstring& payload) {
    return Deliver(payload, presenter, &IVanteloPresenter::FetchLocalizedStringsResponse);
}

bool InitCultureResponseFunctor::operator()(const std::wstring& payload) {
    return Deliver(payload, presenter, &IVanteloPresenter::InitCultureResponse);
}

bool TerminateResponseFunctor::operator()(const std::wstring& /*payload*/) {
    return presenter->TerminateResponse();
}

bool EnqueueJobsFinishFunctor::operator()(const std::wstring& payload) {
    return Deliver(payload, presenter, &IVanteloPresenter::EnqueueJobsFinish);
}

bool UpdateProgressFunctor::operator()(const std::wstring& payload) {
    return Deliver(payload, presenter, &IVanteloPresenter::UpdateProgress);
}

bool CancelJobsFinishFunctor::operator()(const std::wstring& payload) {
    return Deliver(payload, presenter, &IVanteloPresenter::CancelJobsFinish);
}

bool CheckJobStatusResponseFunctor::operator()(const std::wstring& payload) {
    return Deliver(payload, presenter, &IVanteloPresenter::CheckJobStatusResponse);
}
