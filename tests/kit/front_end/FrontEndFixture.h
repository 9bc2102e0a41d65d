#pragma once

#include "front_end/commands/CommandContext.h"
#include "front_end/commands/CommandFailure.h"
#include "kit/TemporaryDirectory.h"
#include "kit/front_end/RecordedConsole.h"
#include "kit/front_end/ScriptedHost.h"
#include "platform/processes/Waiting.h"
#include "services/Settings.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

/// A front end with a scripted host. The clock shows 2026-03-05T07:10:00Z.
class FrontEndFixture : public testing::Test {
protected:
    FrontEndFixture() { UseSettings("{\"version\":1,\"logFile\":\"\"}"); }
    ~FrontEndFixture() override { settings::UseFile(L""); }

    void UseSettings(const std::string& json) {
        WriteTextFile(directory / L"settings.json", json);
        settings::UseFile(directory / L"settings.json");
    }

    /// The contents of these files of the directory, one after another.
    std::string ContentsOf(const std::vector<std::wstring>& names) const {
        std::string contents;
        for (const std::wstring& name : names) {
            contents += ReadTextFile(directory / name);
        }
        return contents;
    }

    using Program = front_end::ExitCode (*)(front_end::CommandContext& context,
                                            const std::vector<std::wstring>& arguments);

    /// The exit code of a program of this name, given these arguments.
    int RunProgram(const wchar_t* name, Program program, const std::vector<std::wstring>& arguments) {
        const front_end::Texts texts(stringResourceFile);
        front_end::CommandContext context{
            console, texts, host, stop.Handle(), timeout, [] { return std::int64_t{1772694600}; }, name};
        return static_cast<int>(program(context, arguments));
    }

    /// Steps after the first output, the second one, and so on; then the user presses Ctrl-C.
    void Script(std::vector<std::function<void()>> steps) {
        console.onWrite = [this, steps = std::move(steps), next = std::size_t{0}]() mutable {
            if (next < steps.size()) {
                steps[next++]();
            } else {
                stop.Raise();
            }
        };
    }

    static JobListInfo Job(std::int32_t number, const std::wstring& input, JobStatus status) {
        JobListInfo job;
        job.id = L"id" + std::to_wstring(number);
        job.seqId = number;
        job.status = status;
        job.scenario.displayName = L"Mesh report";
        job.inputFiles = {L"/in/" + input};
        return job;
    }

    static JobStatusInfo Status(std::int32_t number, JobStatus status, std::int32_t progress = 0) {
        JobStatusInfo info;
        info.id = L"id" + std::to_wstring(number);
        info.status = status;
        info.progress = progress;
        return info;
    }

    TemporaryDirectory directory;
    RecordedConsole console;
    ScriptedHost host;
    platform::Event stop;
    /// A missing file: the built-in texts apply.
    std::wstring stringResourceFile = directory / L"no strings.json";
    std::chrono::milliseconds timeout = std::chrono::seconds(60);
};
