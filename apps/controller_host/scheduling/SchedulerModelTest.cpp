#include "controller_host/scheduling/Scheduler.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <random>
#include <tuple>

namespace {

using Needs = std::map<std::wstring, std::int64_t>;
using Job = Scheduler::WaitingJob;
using Kind = Scheduler::WaitReason::Kind;

/// The rules of the scheduler as a walk over all jobs, which is slow and obvious.
class Model {
public:
    Scheduler::Rules rules;
    std::vector<Job> waiting;
    std::map<std::wstring, Needs> running;

    void Wait(Job job) {
        Drop(job.id);
        std::erase_if(job.scheduling.needs, [](const auto& need) { return need.second <= 0; });
        waiting.push_back(std::move(job));
    }

    void Start(const std::wstring& id) {
        const Needs needs = Find(id)->scheduling.needs;
        Drop(id);
        running[id] = needs;
    }

    std::vector<Scheduler::Stranded> End(const std::wstring& ended, bool succeeded) {
        Drop(ended);
        std::vector<Scheduler::Stranded> stranded;
        std::vector<Scheduler::Stranded> wave = Resolve(ended, succeeded);
        while (!wave.empty()) {
            std::vector<Scheduler::Stranded> next;
            for (const auto& job : wave) {
                stranded.push_back(job);
                const auto followers = Resolve(job.id, false);
                next.insert(next.end(), followers.begin(), followers.end());
            }
            std::stable_sort(next.begin(), next.end(),
                             [&](const auto& a, const auto& b) { return orders[a.id] < orders[b.id]; });
            wave = next;
        }
        return stranded;
    }

    std::optional<std::wstring> Next(std::int64_t now) const {
        Needs free = Free();
        for (const Job& job : InKeyOrder()) {
            if (IsEligible(job, now, free)) {
                return job.id;
            }
            SetAside(job, now, free);
        }
        return std::nullopt;
    }

    Kind WhyWaiting(const Job& job, std::int64_t now) const {
        if (job.scheduling.hold) {
            return Kind::Hold;
        }
        if (job.scheduling.notBefore > now) {
            return Kind::Time;
        }
        if (IsSuccessor(job)) {
            return Kind::Predecessor;
        }
        Needs free = Free();
        for (const Job& before : InKeyOrder()) {
            if (before.id == job.id) {
                break;
            }
            SetAside(before, now, free);
        }
        return Fits(job.scheduling.needs, free) ? Kind::Turn : Kind::Resource;
    }

    std::optional<std::int64_t> NextTime(std::int64_t now) const {
        std::optional<std::int64_t> next;
        for (const Job& job : waiting) {
            const std::int64_t time = job.scheduling.notBefore;
            if (!job.scheduling.hold && !IsSuccessor(job) && time > now && (!next || time < *next)) {
                next = time;
            }
        }
        return next;
    }

    Needs Free() const {
        Needs free = rules.resources;
        for (const auto& [id, needs] : running) {
            for (const auto& [name, amount] : needs) {
                if (const auto resource = free.find(name); resource != free.end()) {
                    resource->second -= amount;
                }
            }
        }
        return free;
    }

    static bool Fits(const Needs& needs, const Needs& free) {
        return std::all_of(needs.begin(), needs.end(), [&](const auto& need) {
            const auto resource = free.find(need.first);
            return resource != free.end() && resource->second >= need.second;
        });
    }

    bool WaitsOnlyForResources(const Job& job, std::int64_t now) const {
        return !job.scheduling.hold && job.scheduling.notBefore <= now && !IsSuccessor(job) &&
               Fits(job.scheduling.needs, rules.resources);
    }

    bool IsOverdue(const Job& job, std::int64_t now) const { return KeyOf(job) + rules.ageingSeconds <= now; }

private:
    std::vector<Job>::iterator Find(const std::wstring& id) {
        return std::find_if(waiting.begin(), waiting.end(), [&](const Job& job) { return job.id == id; });
    }

    void Drop(const std::wstring& id) {
        running.erase(id);
        std::erase_if(waiting, [&](const Job& job) { return job.id == id; });
    }

    static bool IsSuccessor(const Job& job) {
        return !job.scheduling.after.empty() || !job.scheduling.afterEnd.empty();
    }

    std::int64_t KeyOf(const Job& job) const { return job.queuedTime - job.scheduling.priority * rules.ageingSeconds; }

    std::vector<Job> InKeyOrder() const {
        std::vector<Job> jobs = waiting;
        std::sort(jobs.begin(), jobs.end(), [this](const Job& a, const Job& b) {
            return std::make_tuple(KeyOf(a), a.order) < std::make_tuple(KeyOf(b), b.order);
        });
        return jobs;
    }

    bool IsEligible(const Job& job, std::int64_t now, const Needs& free) const {
        return WaitsOnlyForResources(job, now) && Fits(job.scheduling.needs, free);
    }

    /// A job that is behind an overdue one of equal needs sets nothing aside.
    void SetAside(const Job& job, std::int64_t now, Needs& free) const {
        const auto isAhead = [&](const Job& other) {
            return WaitsOnlyForResources(other, now) && other.scheduling.needs == job.scheduling.needs &&
                   std::make_tuple(KeyOf(other), other.order) < std::make_tuple(KeyOf(job), job.order);
        };
        if (!WaitsOnlyForResources(job, now) || Fits(job.scheduling.needs, free) || !IsOverdue(job, now) ||
            std::any_of(waiting.begin(), waiting.end(), isAhead)) {
            return;
        }
        for (const auto& [name, amount] : job.scheduling.needs) {
            free[name] = std::max<std::int64_t>(0, free[name] - amount);
        }
    }

    /// Removes `ended` from the predecessors of all jobs, and the jobs that it strands from the list.
    std::vector<Scheduler::Stranded> Resolve(const std::wstring& ended, bool succeeded) {
        std::vector<Scheduler::Stranded> stranded;
        std::sort(waiting.begin(), waiting.end(), [](const Job& a, const Job& b) { return a.order < b.order; });
        for (Job& job : waiting) {
            std::erase(job.scheduling.afterEnd, ended);
            if (std::erase(job.scheduling.after, ended) > 0 && !succeeded) {
                stranded.push_back({job.id, ended, job.scheduling.skipIfAfterFails});
                orders[job.id] = job.order;
            }
        }
        for (const auto& job : stranded) {
            Drop(job.id);
        }
        return stranded;
    }

    std::map<std::wstring, std::uint64_t> orders;
};

/// Applies the same random changes to the scheduler and to the model.
class SchedulerModelTest : public testing::TestWithParam<unsigned> {
protected:
    std::int64_t Draw(std::int64_t below) { return static_cast<std::int64_t>(random() % static_cast<unsigned>(below)); }

    std::wstring DrawId() { return L"job " + std::to_wstring(Draw(60)); }

    std::vector<std::wstring> DrawIds(std::int64_t oneIn) {
        std::vector<std::wstring> ids;
        while (Draw(oneIn) == 0) {
            ids.push_back(DrawId());
        }
        return ids;
    }

    Needs DrawNeeds() {
        Needs needs;
        for (const wchar_t* name : {L"gpu", L"seat", L"disk", L"unknown"}) {
            if (Draw(name[0] == L'u' ? 20 : 3) == 0) {
                needs[name] = Draw(6) - 1;
            }
        }
        return needs;
    }

    Job DrawJob() {
        Job job{DrawId(), ++order, now - Draw(50), {}};
        if (Draw(8) == 0) {
            job.queuedTime -= 3 * model.rules.ageingSeconds;
        }
        job.scheduling.priority = static_cast<std::int32_t>(Draw(5) - 2);
        job.scheduling.hold = Draw(10) == 0;
        job.scheduling.after = DrawIds(5);
        job.scheduling.afterEnd = DrawIds(6);
        job.scheduling.skipIfAfterFails = Draw(2) == 0;
        job.scheduling.notBefore = Draw(5) == 0 ? now + Draw(40) - 10 : 0;
        job.scheduling.needs = DrawNeeds();
        return job;
    }

    void Wait() {
        const Job job = DrawJob();
        scheduler.Wait(job);
        model.Wait(job);
    }

    void Edit() {
        if (model.waiting.empty()) {
            return;
        }
        Job job = model.waiting[static_cast<std::size_t>(Draw(static_cast<std::int64_t>(model.waiting.size())))];
        job.scheduling = DrawJob().scheduling;
        scheduler.Wait(job);
        model.Wait(job);
    }

    void SetRules() {
        Scheduler::Rules rules;
        rules.ageingSeconds = 1 + Draw(60);
        for (const wchar_t* name : {L"gpu", L"seat", L"disk"}) {
            if (Draw(6) > 0) {
                rules.resources[name] = Draw(7);
            }
        }
        scheduler.SetRules(rules);
        model.rules = rules;
    }

    void EndOne() {
        const bool isRunning = !model.running.empty() && Draw(3) > 0;
        const std::wstring id = isRunning ? model.running.begin()->first : DrawId();
        const bool succeeded = Draw(3) > 0;
        ASSERT_EQ(scheduler.End(id, succeeded), model.End(id, succeeded));
    }

    void StartNext() {
        const auto next = model.Next(now);
        ASSERT_EQ(scheduler.Next(now), next);
        if (next) {
            scheduler.Start(*next);
            model.Start(*next);
            ExpectNothingIsOversubscribed(model.running[*next]);
        } else {
            ExpectNoJobWaitsWithoutReason();
        }
    }

    /// Rules that shrink leave more taken than there is, but no job starts with such a resource.
    void ExpectNothingIsOversubscribed(const Needs& taken) const {
        for (const auto& [name, amount] : taken) {
            ASSERT_GE(model.Free().at(name), 0);
        }
    }

    void ExpectNoJobWaitsWithoutReason() const {
        const Needs free = model.Free();
        const auto couldStart = [&](const Job& job) {
            return model.WaitsOnlyForResources(job, now) && Model::Fits(job.scheduling.needs, free);
        };
        const auto hasReserved = [&](const Job& job) {
            return model.WaitsOnlyForResources(job, now) && model.IsOverdue(job, now) && !couldStart(job);
        };
        if (std::none_of(model.waiting.begin(), model.waiting.end(), hasReserved)) {
            ASSERT_TRUE(std::none_of(model.waiting.begin(), model.waiting.end(), couldStart));
        }
    }

    void ExpectTheSameAnswers() {
        ASSERT_EQ(scheduler.Next(now), model.Next(now));
        ASSERT_EQ(scheduler.NextTime(), model.NextTime(now));
        std::set<std::wstring> predecessors;
        for (const Job& job : model.waiting) {
            ASSERT_EQ(scheduler.WhyWaiting(job.id, now).value().kind, model.WhyWaiting(job, now));
            predecessors.insert(job.scheduling.after.begin(), job.scheduling.after.end());
            predecessors.insert(job.scheduling.afterEnd.begin(), job.scheduling.afterEnd.end());
        }
        ASSERT_EQ(scheduler.Predecessors(), std::vector<std::wstring>(predecessors.begin(), predecessors.end()));
    }

    void Step() {
        switch (Draw(16)) {
        case 0:
            return SetRules();
        case 1:
        case 2:
            now += Draw(20);
            return;
        case 3:
            now -= Draw(10);
            return;
        case 4:
            return Edit();
        case 5:
        case 6:
        case 7:
        case 8:
            return EndOne();
        case 9:
        case 10:
        case 11:
        case 12:
            return StartNext();
        default:
            return Wait();
        }
    }

    std::mt19937 random{GetParam()};
    Scheduler scheduler;
    Model model;
    std::uint64_t order = 0;
    std::int64_t now = 1'000'000;
};

TEST_P(SchedulerModelTest, TheSchedulerDecidesAsAWalkOverAllJobs) {
    SetRules();
    for (int step = 0; step < 2000; ++step) {
        SCOPED_TRACE(step);
        Step();
        ASSERT_FALSE(HasFatalFailure());
        if (step % 5 == 0) {
            ExpectTheSameAnswers();
            ASSERT_FALSE(HasFatalFailure());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, SchedulerModelTest, testing::Range(1U, 9U));

/// Small jobs arrive in each second and run for some seconds, each needing one of the resources; more of them arrive
/// than can run.
class SchedulerModelTest_Starvation : public testing::Test {
protected:
    void Wait(const std::wstring& id, const Needs& needs, std::int32_t priority = 0) {
        Job job{id, ++order, now, {}};
        job.scheduling.needs = needs;
        job.scheduling.priority = priority;
        scheduler.Wait(job);
    }

    void EndWhatIsOver() {
        for (; !running.empty() && running.begin()->first <= now; running.erase(running.begin())) {
            ASSERT_TRUE(scheduler.End(running.begin()->second, true).empty());
        }
    }

    void StartAll() {
        while (const auto next = scheduler.Next(now)) {
            scheduler.Start(*next);
            running.emplace(now + 3 + static_cast<std::int64_t>(running.size() % 4), *next);
            started.insert(*next);
        }
    }

    /// Returns the number of seconds until `id` started; `limit` if it did not.
    std::int64_t SecondsUntilStart(const std::wstring& id, const std::vector<Needs>& stream, std::int64_t limit) {
        const std::int64_t begin = now;
        for (; now < begin + limit && !started.contains(id); ++now) {
            EndWhatIsOver();
            for (const Needs& needs : stream) {
                Wait(L"small " + std::to_wstring(order), needs, 1);
            }
            StartAll();
        }
        return now - begin;
    }

    static constexpr std::int64_t ageing = 100;
    Scheduler scheduler;
    std::int64_t now = 1'000'000;
    std::uint64_t order = 0;
    std::multimap<std::int64_t, std::wstring> running;
    std::set<std::wstring> started;
};

TEST_F(SchedulerModelTest_Starvation, AJobThatNeedsAllOfAResourceStartsDespiteAStreamOfSmallOnesOfHigherPriority) {
    scheduler.SetRules({{{L"gpu", 4}}, ageing});
    const std::vector<Needs> stream(2, Needs{{L"gpu", 1}});
    EXPECT_EQ(SecondsUntilStart(L"nobody", stream, 20), 20);
    Wait(L"big", {{L"gpu", 4}});
    EXPECT_LT(SecondsUntilStart(L"big", stream, 100 * ageing), 5 * ageing);
}

TEST_F(SchedulerModelTest_Starvation, AJobThatNeedsAllOfTwoResourcesStartsDespiteAStreamForEach) {
    scheduler.SetRules({{{L"gpu", 4}, {L"seat", 4}}, ageing});
    const std::vector<Needs> stream{{{L"gpu", 1}}, {{L"gpu", 1}}, {{L"seat", 1}}, {{L"seat", 1}}};
    EXPECT_EQ(SecondsUntilStart(L"nobody", stream, 20), 20);
    Wait(L"big", {{L"gpu", 4}, {L"seat", 4}});
    EXPECT_LT(SecondsUntilStart(L"big", stream, 100 * ageing), 5 * ageing);
}

TEST_F(SchedulerModelTest_Starvation, EachOfManyJobsWithRandomNeedsStarts) {
    scheduler.SetRules({{{L"gpu", 4}, {L"seat", 3}, {L"disk", 5}}, ageing});
    std::mt19937 random(7);
    const auto draw = [&](unsigned below) { return static_cast<std::int64_t>(random() % below); };
    for (int job = 0; job < 500; ++job) {
        Wait(std::to_wstring(job), {{L"gpu", draw(5)}, {L"seat", draw(4)}, {L"disk", draw(6)}},
             static_cast<std::int32_t>(draw(7) - 3));
    }
    EXPECT_EQ(SecondsUntilStart(L"nobody", {}, 10'000), 10'000);
    EXPECT_EQ(started.size(), 500U);
}

} // namespace
