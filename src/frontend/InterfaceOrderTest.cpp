#include "CommonControllerLib/CLIOrvelProxy.h"
#include "CommonControllerLib/ControllerPresenterAbs.h"
#include "CommonControllerLib/EventTransmitter.h"

#include "kit/MemberPlaces.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// The published interface requires the order of virtual operations: each interface is compared with one declared here.
// "Other" marks places where the order is free.
namespace {

using test_support::SlotOf;

namespace declared {

using Texts = std::vector<std::wstring>;
using Statuses = std::vector<JobStatusInfo>;

class IVanteloPresenter {
public:
    virtual bool EnqueueJobsFinish(const JobEnqueueResult&) = 0;
    virtual bool UpdateProgress(const Statuses&) = 0;
    virtual bool CancelJobsFinish(const Statuses&) = 0;
    virtual bool FetchScenariosResponse(const std::vector<ScenarioInfo>&) = 0;
    virtual bool FetchScenarioParameterSetsResponse(const std::vector<ScenarioParameterSetInfo>&) = 0;
    virtual bool InitJobsResponse(const std::vector<JobListInfo>&) = 0;
    virtual bool DeleteJobsResponse(const Texts&) = 0;
    virtual bool FetchLocalizedStringsResponse(const std::wstring&) = 0;
    virtual bool InitCultureResponse(const std::wstring&) = 0;
    virtual bool TerminateResponse() = 0;
    virtual bool Other10() = 0;
    virtual bool Other11() = 0;
    virtual bool Other12() = 0;
    virtual bool Other13() = 0;
    virtual bool Other14() = 0;
    virtual bool Other15() = 0;
    virtual bool Other16() = 0;
    virtual bool CheckJobStatusResponse(const Statuses&) = 0;
    virtual bool Other18() = 0;

protected:
    ~IVanteloPresenter() = default;
};

class IVanteloOrvelAbs {
public:
    virtual bool EnqueueJobs(EnqueueJobsInfo&) = 0;
    virtual bool CancelJobs(Texts&) = 0;
    virtual bool CancelAllJobs() = 0;
    virtual bool Other3() = 0;
    virtual bool Other4() = 0;
    virtual bool Other5() = 0;
    virtual bool Other6() = 0;
    virtual bool Other7() = 0;
    virtual bool Other8() = 0;
    virtual bool Other9() = 0;
    virtual bool Other10() = 0;
    virtual bool Other11() = 0;
    virtual bool Other12() = 0;
    virtual bool Other13() = 0;
    virtual bool Other14() = 0;
    virtual bool Other15() = 0;
    virtual bool Other16() = 0;
    virtual bool CheckJobStatusRequest(const Texts&) = 0;
    virtual bool Other18() = 0;

protected:
    ~IVanteloOrvelAbs() = default;
};

class EventTransmitter {
public:
    virtual void AddEventHandler(const std::wstring&, CallbackFunctor*) = 0;
    virtual bool SendEvent(const std::wstring&, const std::wstring&) = 0;

protected:
    ~EventTransmitter() = default;
};

class CallbackFunctor {
public:
    virtual bool operator()(const std::wstring&) = 0;

protected:
    ~CallbackFunctor() = default;
};

} // namespace declared

#define EXPECT_SAME_SLOT(Interface, operation)                                                                         \
    EXPECT_EQ(SlotOf(&Interface::operation), SlotOf(&declared::Interface::operation))

TEST(InterfaceOrderTest, APresentersAnswersStandInTheDeclaredSlots) {
    EXPECT_SAME_SLOT(IVanteloPresenter, EnqueueJobsFinish);
    EXPECT_SAME_SLOT(IVanteloPresenter, UpdateProgress);
    EXPECT_SAME_SLOT(IVanteloPresenter, CancelJobsFinish);
    EXPECT_SAME_SLOT(IVanteloPresenter, FetchScenariosResponse);
    EXPECT_SAME_SLOT(IVanteloPresenter, FetchScenarioParameterSetsResponse);
    EXPECT_SAME_SLOT(IVanteloPresenter, InitJobsResponse);
    EXPECT_SAME_SLOT(IVanteloPresenter, DeleteJobsResponse);
    EXPECT_SAME_SLOT(IVanteloPresenter, FetchLocalizedStringsResponse);
    EXPECT_SAME_SLOT(IVanteloPresenter, InitCultureResponse);
    EXPECT_SAME_SLOT(IVanteloPresenter, TerminateResponse);
    EXPECT_SAME_SLOT(IVanteloPresenter, CheckJobStatusResponse);
}

TEST(InterfaceOrderTest, ARequestersRequestsStandInTheDeclaredSlots) {
    EXPECT_SAME_SLOT(IVanteloOrvelAbs, EnqueueJobs);
    EXPECT_SAME_SLOT(IVanteloOrvelAbs, CancelJobs);
    EXPECT_SAME_SLOT(IVanteloOrvelAbs, CancelAllJobs);
    EXPECT_SAME_SLOT(IVanteloOrvelAbs, CheckJobStatusRequest);
}

TEST(InterfaceOrderTest, WhatModulesRelyOnStandsInTheDeclaredSlots) {
    EXPECT_SAME_SLOT(EventTransmitter, AddEventHandler);
    EXPECT_SAME_SLOT(EventTransmitter, SendEvent);
    EXPECT_SAME_SLOT(CallbackFunctor, operator());
}

} // namespace
