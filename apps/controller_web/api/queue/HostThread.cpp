#include "controller_web/api/queue/HostThread.h"

#include "CommonControllerLib/ControllerLogManager.h"
#include "front_end/commands/HostStates.h"
#include "text/Text.h"

namespace web {
namespace {

using std::chrono::steady_clock;

/// No event reports that a host has been started.
constexpr std::chrono::seconds connectInterval{1};

bool IsHostGone(const front_end::CommandFailure& failure) {
    return failure.exitCode == front_end::ExitCode::NoHost || failure.exitCode == front_end::ExitCode::Interrupted;
}

} // namespace

HostThread::HostThread(const front_end::CommandContext& commandContext, QueueTracker& queueTracker)
    : context(commandContext), tracker(queueTracker) {
    context.stop = stop.Handle();
    thread = std::thread([this] { Loop(); });
}

HostThread::~HostThread() {
    {
        const std::lock_guard lock(mutex);
        isStopping = true;
    }
    stop.Raise();
    thread.join();
}

void HostThread::Add(Task task) {
    const std::lock_guard lock(mutex);
    if (tasks.size() >= mostWaiting || isStopping) {
        throw TooManyRequests{};
    }
    tasks.push_back(std::move(task));
    wake.Raise();
}

std::optional<HostThread::Task> HostThread::TakeTask() {
    const std::lock_guard lock(mutex);
    if (tasks.empty()) {
        wake.Clear();
        return std::nullopt;
    }
    Task first = std::move(tasks.front());
    tasks.pop_front();
    return first;
}

void HostThread::Loop() {
    while (!platform::WaitForAny({stop.Handle()}, std::chrono::milliseconds(0))) {
        RunTasks();
        try {
            Follow();
        } catch (const front_end::CommandFailure&) {
            Disconnect();
        } catch (const std::exception& failure) {
            ControllerLogManager::ErrorLog(L"The list of jobs cannot be followed: " + text::FromUtf8(failure.what()));
            Disconnect();
        }
    }
    FailAll(front_end::CommandFailure{front_end::ExitCode::Interrupted, {}});
    session.reset();
}

void HostThread::RunTasks() {
    while (const auto task = TakeTask()) {
        task->end(RunTask(*task));
    }
}

/// Returns what was thrown. After an answer that did not come in time, further requests would wait as long: those that
/// already wait fail, too. A late answer must not be taken for that of a later request, so the session ends.
std::exception_ptr HostThread::RunTask(const Task& task) {
    try {
        task.run(SessionFor(task.start));
    } catch (const front_end::NoAnswerInTime& failure) {
        FailAll(failure);
        Disconnect();
        return std::current_exception();
    } catch (const front_end::CommandFailure& failure) {
        if (IsHostGone(failure)) {
            Disconnect();
        }
        return std::current_exception();
    } catch (...) {
        return std::current_exception();
    }
    return nullptr;
}

front_end::HostSession& HostThread::SessionFor(front_end::Start start) {
    if (session && !session->IsOpen()) {
        Disconnect();
    }
    if (!session) {
        session.emplace(context, start);
        tracker.Begin(*session, front_end::StateOfHost(context));
    }
    return *session;
}

void HostThread::TryToConnect() {
    nextTry = steady_clock::now() + connectInterval;
    SessionFor(front_end::Start::Never);
}

void HostThread::Follow() {
    if (!session && steady_clock::now() >= nextTry) {
        TryToConnect();
    }
    if (session) {
        tracker.Apply(*session, session->WaitForUpdates(tracker.UntilDue(), wake.Handle()));
        tracker.PublishIfDue(*session);
    } else {
        platform::WaitForAny({stop.Handle(), wake.Handle()}, connectInterval);
    }
}

void HostThread::Disconnect() {
    if (session) {
        session.reset();
        tracker.End(front_end::StateOfHost(context));
    }
}

} // namespace web
