#pragma once

#include "controller_web/api/queue/QueueTracker.h"
#include "front_end/commands/CommandContext.h"
#include "front_end/connection/HostSession.h"
#include "platform/processes/Waiting.h"

#include <chrono>
#include <deque>
#include <exception>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <type_traits>
#include <utility>

namespace web {

/// Thrown if too many requests wait for the host.
struct TooManyRequests {};

/// The thread that owns the connection to the host. It keeps the jobs up to date while a host runs, and sends the
/// requests of handlers one after another.
class HostThread {
public:
    /// The most requests that wait.
    static constexpr std::size_t mostWaiting = 100;

    /// What the context refers to, and the tracker, must outlive this object; nobody else uses them meanwhile.
    HostThread(const front_end::CommandContext& commandContext, QueueTracker& queueTracker);
    /// Waiting requests fail.
    ~HostThread();
    HostThread(const HostThread&) = delete;
    HostThread& operator=(const HostThread&) = delete;

    /// Has the thread call `operation(context, session)` and returns its result, which is not void. Throws what it
    /// throws, `TooManyRequests`, and what `HostSession` throws if there is no host. Returns only after the operation.
    /// Threads: any but that of this object.
    template <typename Operation>
    auto Run(front_end::Start start, const Operation& operation) {
        using Result = std::invoke_result_t<Operation, front_end::CommandContext&, front_end::HostSession&>;
        std::optional<Result> result;
        std::exception_ptr failure;
        // Owned by the task, too: this thread may go on while the other one still leaves `set_value`.
        const auto ended = std::make_shared<std::promise<void>>();
        Add({start, [&](front_end::HostSession& connected) { result.emplace(operation(context, connected)); },
             [&failure, ended](std::exception_ptr reason) {
                 failure = std::move(reason);
                 ended->set_value();
             }});
        ended->get_future().wait();
        if (failure) {
            std::rethrow_exception(std::move(failure));
        }
        return *std::move(result);
    }

private:
    /// A request of a handler. `end` is called once, after `run` if that is called, with what was thrown, if anything
    /// was. The exception then belongs to the waiting thread alone.
    struct Task {
        front_end::Start start;
        std::function<void(front_end::HostSession&)> run;
        std::function<void(std::exception_ptr)> end;
    };

    void Add(Task task);
    /// Nothing if none waits.
    std::optional<Task> TakeTask();
    void Loop();
    void RunTasks();
    std::exception_ptr RunTask(const Task& task);
    /// Each task gets an exception of its own.
    template <typename Failure>
    void FailAll(const Failure& failure) {
        while (const auto task = TakeTask()) {
            task->end(std::make_exception_ptr(failure));
        }
    }
    front_end::HostSession& SessionFor(front_end::Start start);
    void Follow();
    void TryToConnect();
    void Disconnect();

    platform::Event stop;
    platform::Event wake;
    front_end::CommandContext context;
    QueueTracker& tracker;
    std::mutex mutex;
    std::deque<Task> tasks;
    bool isStopping = false;

    // For the thread.
    std::optional<front_end::HostSession> session;
    std::chrono::steady_clock::time_point nextTry;
    std::thread thread;
};

} // namespace web
