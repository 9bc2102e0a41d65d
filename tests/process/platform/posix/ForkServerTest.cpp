#include "platform/processes/ForkServer.h"

#include <fstream>
#include <thread>

#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include "kit/OtherProcesses.h"
#include "kit/TestProcess.h"

using platform::ForkServer;
using platform::ProcessStart;

namespace {

ProcessStart Program(const std::wstring& path) {
    ProcessStart start;
    start.program = path;
    return start;
}

ProcessStart Server(const std::wstring& behaviour) {
    return test_support::TestProcess({L"serve", behaviour});
}

std::vector<std::uint32_t> Children() {
    return test_support::ChildrenOf(platform::OwnProcessNumber());
}

bool HasEndedUnreaped(std::uint32_t process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    std::string number;
    std::string name;
    std::string state;
    return file >> number >> name >> state && state == "Z";
}

/// Another process that traces one, as debuggers and leak checkers do, until it is told to end.
class Tracer {
public:
    explicit Tracer(pid_t traced) {
        int toTracer[2];
        int fromTracer[2];
        if (pipe(toTracer) == 0 && pipe(fromTracer) == 0) {
            process = fork();
        }
        if (process == 0) {
            close(toTracer[1]);
            Trace(traced, toTracer[0], fromTracer[1]);
        }
        close(toTracer[0]);
        close(fromTracer[1]);
        line = toTracer[1];
        char answer = 0;
        isTracing = read(fromTracer[0], &answer, 1) == 1 && answer != 0;
        close(fromTracer[0]);
    }
    ~Tracer() { End(); }
    Tracer(const Tracer&) = delete;
    Tracer& operator=(const Tracer&) = delete;

    bool IsTracing() const { return isTracing; }

    void End() {
        if (process > 0) {
            close(line);
            waitpid(process, nullptr, 0);
            process = 0;
        }
    }

private:
    [[noreturn]] static void Trace(pid_t traced, int from, int to) {
        char isTracing = ptrace(PTRACE_SEIZE, traced, nullptr, nullptr) == 0;
        const bool isSaid = write(to, &isTracing, 1) == 1;
        _exit(isSaid && read(from, &isTracing, 1) == 0 ? 0 : 1);
    }

    pid_t process = 0;
    int line = -1;
    bool isTracing = false;
};

/// During its lifetime new threads need a stack larger than any address space, so that none can be started.
class NoFurtherThreads {
public:
    NoFurtherThreads() {
        pthread_getattr_default_np(&usual);
        pthread_attr_t attributes;
        pthread_getattr_default_np(&attributes);
        pthread_attr_setstacksize(&attributes, std::size_t{1} << 60);
        pthread_setattr_default_np(&attributes);
        pthread_attr_destroy(&attributes);
    }
    ~NoFurtherThreads() {
        pthread_setattr_default_np(&usual);
        pthread_attr_destroy(&usual);
    }
    NoFurtherThreads(const NoFurtherThreads&) = delete;
    NoFurtherThreads& operator=(const NoFurtherThreads&) = delete;

private:
    pthread_attr_t usual{};
};

} // namespace

TEST(ForkServerTest, EachRequestMakesACopy) {
    ForkServer server;
    ASSERT_TRUE(server.Start(Server(L"accept")));
    for (int time = 0; time < 2; ++time) {
        const platform::OwnedHandle copy = server.Fork("request");
        ASSERT_TRUE(copy);
        EXPECT_TRUE(test_support::WaitUntilSignalled(copy.Get()));
        EXPECT_EQ(platform::ExitCode(copy.Get()), 7);
    }
    EXPECT_TRUE(server.IsRunning());
}

TEST(ForkServerTest, ACopyThatIsNotPreparedIsReapedWithTheServer) {
    ForkServer server;
    ASSERT_TRUE(server.Start(Server(L"refuse")));
    EXPECT_FALSE(server.Fork("request"));
    EXPECT_TRUE(Children().empty());
}

TEST(ForkServerTest, ACopyThatIsPreparedTooLateIsReapedWithTheServer) {
    ForkServer server;
    ASSERT_TRUE(server.Start(Server(L"late")));
    EXPECT_FALSE(server.Fork("request"));
    EXPECT_TRUE(Children().empty());
}

TEST(ForkServerTest, AServerThatIsTracedWhenItEndsIsReaped) {
    ForkServer server;
    ASSERT_TRUE(server.Start(Server(L"accept")));
    const std::uint32_t process = Children().at(0);
    Tracer tracer(static_cast<pid_t>(process));
    if (!tracer.IsTracing()) {
        GTEST_SKIP() << "This user may not trace processes.";
    }
    std::thread ending([&] { server.End(); });
    while (!HasEndedUnreaped(process)) {
        std::this_thread::yield();
    }
    tracer.End();
    ending.join();
    EXPECT_TRUE(Children().empty());
}

TEST(ForkServerTest, AServerForWhichThereIsNoThreadIsEndedAndReaped) {
    ForkServer server;
    {
        const NoFurtherThreads limit;
        EXPECT_FALSE(server.Start(Server(L"accept")));
    }
    EXPECT_TRUE(Children().empty());
    EXPECT_FALSE(server.IsRunning());
    EXPECT_TRUE(server.Start(Server(L"accept")));
    EXPECT_TRUE(server.IsRunning());
}

TEST(ForkServerTest, WithoutAServerThereIsNoCopy) {
    ForkServer server;
    EXPECT_FALSE(server.IsRunning());
    EXPECT_FALSE(server.Fork("request"));
}

TEST(ForkServerTest, AProgramThatIsMissingIsNoServer) {
    ForkServer server;
    EXPECT_EQ(server.Start(Program(L"\\no\\such\\program")).kind, platform::ErrorKind::NotFound);
    EXPECT_FALSE(server.IsRunning());
    EXPECT_FALSE(server.Fork("request"));
}

TEST(ForkServerTest, AProgramThatEndsAtOnceMakesNoCopy) {
    ForkServer server;
    ASSERT_TRUE(server.Start(Program(L"\\bin\\true")));
    EXPECT_FALSE(server.Fork("request"));
    EXPECT_FALSE(server.IsRunning());
}

TEST(ForkServerTest, AProgramThatDoesNotAnswerMakesNoCopyAndIsEnded) {
    ForkServer server;
    ProcessStart start = Program(L"\\bin\\sh");
    start.arguments = {L"-c", L"while :; do sleep 1; done"};
    ASSERT_TRUE(server.Start(start));
    EXPECT_TRUE(server.IsRunning());
    EXPECT_FALSE(server.Fork("request"));
    EXPECT_FALSE(server.IsRunning());
}

TEST(ForkServerTest, ARequestThatIsTooLongIsNotSent) {
    ForkServer server;
    ASSERT_TRUE(server.Start(Program(L"\\bin\\true")));
    EXPECT_FALSE(server.Fork(std::string(std::size_t{1} << 20, 'x')));
}

TEST(ForkServerTest, AVariableThatTheProcessWasNotStartedWithIsNotOverwritten) {
    EXPECT_FALSE(platform::OverwriteStartVariable(L"CONTROLLER_NO_SUCH_VARIABLE", L"value"));
    EXPECT_FALSE(platform::OverwriteStartVariable(L"CONTROLLER_NO_SUCH_VARIABLE", L""));
}
