#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "controller_web/http/Server.h"
#include "kit/Deadline.h"
#include "kit/OtherProcesses.h"
#include "kit/TemporaryDirectory.h"
#include "kit/TestProcess.h"
#include "kit/web/RawClient.h"
#include "kit/web/SignedInBrowser.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"

using test_support::Ending;
using test_support::LinkIn;
using Link = test_support::LoginLink;
using test_support::RawAnswer;
using test_support::RawClient;
using test_support::RunToEnd;

namespace {

/// The program with settings of its own.
class WebProgramTest : public testing::Test {
protected:
    WebProgramTest() { WriteSettings("{}"); }
    ~WebProgramTest() override { (void)RunToEnd(Program({L"--stop"})); }

    void WriteSettings(const std::string& web) const {
        WriteTextFile(directory / L"settings.json",
                      R"({"version":1,"workDirectory":"work","jobListFile":"job_list.json",)"
                      R"("logFile":"controller.log","web":)" +
                          web + "}");
    }

    platform::ProcessStart Program(const std::vector<std::wstring>& arguments) const {
        const std::wstring userDirectory = platform::ToNativeText(directory / L"user");
        platform::ProcessStart start;
        start.program = test_support::ProgramPath(L"controller_web");
        start.arguments = arguments;
        start.environment = {{L"CONTROLLER_SETTINGS_FILE", platform::ToNativeText(directory / L"settings.json")},
                             {L"LOCALAPPDATA", userDirectory},
                             {L"XDG_DATA_HOME", userDirectory}};
        return start;
    }

    Ending Background(std::vector<std::wstring> arguments = {}) const {
        arguments.insert(arguments.end(), {L"--background", L"--no-browser"});
        return RunToEnd(Program(arguments));
    }

    /// Returns when the server has printed its link.
    platform::OwnedHandle StartInForeground() const {
        platform::OwnedHandle server;
        platform::OutputPipe pipe;
        EXPECT_TRUE(pipe.Open());
        platform::ProcessStart start = Program({L"--no-browser"});
        start.output = pipe.WriteEnd();
        EXPECT_TRUE(platform::StartProcess(start, server));
        pipe.CloseWriteEnd();
        EXPECT_TRUE(test_support::ReadUntil(pipe, "login?token="));
        return server;
    }

    static RawAnswer Ask(std::uint16_t port, const std::string& method, const std::string& target,
                         const std::string& moreHeaders = "") {
        RawClient client(port);
        (void)client.Send(method + " " + target + " HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(port) + "\r\n" +
                          moreHeaders + "\r\n");
        return client.Receive(method != "HEAD");
    }

    /// The header of a browser that has opened the link.
    static std::string SessionOf(const Link& link) {
        const RawAnswer login = Ask(link.port, "GET", link.target);
        EXPECT_EQ(login.status, 303U);
        const std::string cookie = login.Header("Set-Cookie");
        return "Cookie: " + cookie.substr(0, cookie.find(';')) + "\r\n";
    }

    std::size_t ArrivingFiles() const {
        std::vector<platform::DirectoryEntry> entries;
        // There is no directory before the first upload.
        (void)platform::ListDirectory(directory / L"job_list.json.web\\arriving", entries);
        return entries.size();
    }

    const test_support::Deadline deadline{"a test of controller_web"};
    const TemporaryDirectory directory;
};

TEST_F(WebProgramTest, TheFirstStartPrintsALinkThatOpensThePage) {
    const Ending started = Background();
    EXPECT_EQ(started.exitCode, 0) << started.output;
    const Link link = LinkIn(started.output);
    const RawAnswer page = Ask(link.port, "GET", "/", SessionOf(link));
    EXPECT_EQ(page.status, 200U);
    EXPECT_TRUE(page.Header("Content-Type").starts_with("text/html"));
    EXPECT_EQ(Ask(link.port, "GET", link.target).status, 401U);
    EXPECT_EQ(Ask(link.port, "GET", "/").status, 401U);
}

TEST_F(WebProgramTest, ASecondStartGivesAnotherLinkToTheSameServer) {
    const Link first = LinkIn(Background().output);
    const Link second = LinkIn(Background().output);
    EXPECT_EQ(second.port, first.port);
    EXPECT_NE(second.target, first.target);
    EXPECT_NE(SessionOf(first), SessionOf(second));
}

TEST_F(WebProgramTest, StartsAtTheSameTimeUseOneServer) {
    std::vector<std::string> outputs(4);
    std::vector<std::thread> threads;
    for (std::string& output : outputs) {
        threads.emplace_back([this, &output] { output = Background().output; });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const std::string& output : outputs) {
        EXPECT_EQ(LinkIn(output).port, LinkIn(outputs[0]).port) << output;
        EXPECT_NE(SessionOf(LinkIn(output)), "");
    }
}

TEST_F(WebProgramTest, StopEndsTheServer) {
    const Link link = LinkIn(Background().output);
    EXPECT_EQ(RunToEnd(Program({L"--stop"})).exitCode, 0);
    // Its port is free.
    web::Server other;
    EXPECT_TRUE(other.Listen(link.port));
}

TEST_F(WebProgramTest, AStartRightAfterAStopRequestGivesALinkThatWorks) {
    (void)Background();
    WriteTextFile(directory / L"job_list.json.web\\stop", "");
    // The server may be ending or not have seen the request yet; in the latter case the link may be of no use any more.
    std::string output;
    while (platform::Exists(directory / L"job_list.json.web\\stop")) {
        output = Background().output;
    }
    output = Background().output;
    EXPECT_EQ(Ask(LinkIn(output).port, "GET", LinkIn(output).target).status, 303U);
}

TEST_F(WebProgramTest, StopWithoutAServerIsNoFailure) {
    EXPECT_EQ(RunToEnd(Program({L"--stop"})).exitCode, 0);
}

TEST_F(WebProgramTest, AStopRequestForAnEarlierServerDoesNotEndTheNext) {
    WriteTextFile(directory / L"job_list.json.web\\stop", "");
    const Link link = LinkIn(Background().output);
    EXPECT_EQ(Ask(link.port, "GET", "/", SessionOf(link)).status, 200U);
}

TEST_F(WebProgramTest, AServerInTheForegroundEndsWithSuccessWhenItIsAsked) {
    const platform::OwnedHandle server = StartInForeground();
    if (!platform::RequestTermination(server.Get())) {
        // Windows has no such request; another program asks.
        EXPECT_EQ(RunToEnd(Program({L"--stop"})).exitCode, 0);
    }
    ASSERT_TRUE(test_support::WaitUntilSignalled(server.Get()));
    EXPECT_EQ(platform::ExitCode(server.Get()), 0);
}

TEST_F(WebProgramTest, AServerThatWasKilledIsReplaced) {
    const platform::OwnedHandle server = StartInForeground();
    test_support::KillProcess(server.Get());
    ASSERT_TRUE(test_support::WaitUntilSignalled(server.Get()));
    const Link link = LinkIn(Background().output);
    EXPECT_EQ(Ask(link.port, "GET", "/", SessionOf(link)).status, 200U);
}

TEST_F(WebProgramTest, WhatAKilledServerWasReceivingIsRemovedByTheNext) {
    const platform::OwnedHandle server = StartInForeground();
    const Link link = LinkIn(Background().output);
    const std::string session = SessionOf(link);
    RawClient client(link.port);
    const std::string host = "127.0.0.1:" + std::to_string(link.port);
    EXPECT_TRUE(client.Send("POST /api/v1/uploads?name=part.stl HTTP/1.1\r\nHost: " + host + "\r\n" + session +
                            "Origin: http://" + host +
                            "\r\nContent-Type: application/octet-stream\r\nContent-Length: 9\r\n\r\nsolid"));
    while (ArrivingFiles() == 0) {
        EXPECT_EQ(Ask(link.port, "GET", "/", session).status, 200U);
    }
    test_support::KillProcess(server.Get());
    ASSERT_TRUE(test_support::WaitUntilSignalled(server.Get()));
    EXPECT_EQ(ArrivingFiles(), 1U);
    EXPECT_EQ(Background().exitCode, 0);
    EXPECT_EQ(ArrivingFiles(), 0U);
}

TEST_F(WebProgramTest, AReadOnlyServerRefusesChanges) {
    const Link link = LinkIn(Background({L"--read-only"}).output);
    const std::string headers = SessionOf(link) + "Origin: http://127.0.0.1:" + std::to_string(link.port) +
                                "\r\nContent-Type: application/json\r\n";
    EXPECT_NE(Ask(link.port, "POST", "/api/v1/jobs", headers).body.find("read_only"), std::string::npos);
}

TEST_F(WebProgramTest, ThePortOfTheCommandLineOverridesTheSetting) {
    web::Server other;
    ASSERT_TRUE(other.Listen(0));
    WriteSettings(R"({"port":)" + std::to_string(other.Port()) + "}");
    EXPECT_EQ(Background().exitCode, 1);
    EXPECT_NE(ReadTextFile(directory / L"controller.log").find("another program has it"), std::string::npos);
    EXPECT_EQ(Background({L"--port", L"0"}).exitCode, 0);
}

TEST_F(WebProgramTest, BehindAProxyTheLinkIsPublic) {
    WriteSettings(R"({"publicAddress":"https://jobs.example.org/alice"})");
    EXPECT_TRUE(Background().output.starts_with("https://jobs.example.org/alice/login?token="));
}

TEST_F(WebProgramTest, WrongSettingsAndOptionsStartNothing) {
    WriteSettings(R"({"publicAddress":"https://"})");
    EXPECT_EQ(Background().exitCode, 1);
    WriteSettings(R"({"port":-1})");
    EXPECT_EQ(Background().exitCode, 1);
    EXPECT_EQ(RunToEnd(Program({L"--port", L"65536"})).exitCode, 2);
    EXPECT_EQ(RunToEnd(Program({L"--unknown"})).exitCode, 2);
    EXPECT_FALSE(platform::Exists(directory / L"job_list.json.web\\server.lock"));
}

TEST_F(WebProgramTest, HelpAndVersionArePrinted) {
    EXPECT_NE(RunToEnd(Program({L"--help"})).output.find("--read-only"), std::string::npos);
    EXPECT_TRUE(RunToEnd(Program({L"--version"})).output.starts_with("controller_web "));
}

} // namespace
