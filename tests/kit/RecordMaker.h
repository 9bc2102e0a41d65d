#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "CommonControllerLib/JobRecords.h"
#include "CommonControllerLib/ScenarioRecords.h"
#include "formats/RunProtocol.h"

/// Records whose texts all come from one source.
struct RecordMaker {
    std::function<std::wstring()> text;
    std::function<std::int32_t()> number;

    ScenarioInfo Scenario() const {
        return {text(), text(), text(), text(), {{text(), {text(), text()}}, {text(), {}}}};
    }
    JobListInfo Job() const {
        return {text(),     number(),         number(), static_cast<JobStatus>(number()),
                text(),     text(),           text(),   text(),
                Scenario(), {text(), text()}, text(),   text()};
    }
    EnqueueJobsInfo Request() const {
        return {text(), {{text(), text()}, {}, {text()}}, Scenario(), text(), text(), text(), number() % 2 == 0};
    }
    JobEnqueueResult Result() const {
        return {{{text(), number()}, {text(), number()}}, text(), {{text()}, {}, {text(), text()}}};
    }
    JobStatusInfo Status() const {
        return {text(), number(), static_cast<JobStatus>(number()), text(), text(), text(), text()};
    }
    ScenarioParameterSetInfo ParameterSet() const {
        return {text(), text(), text(), {{text(), text(), text(), {text(), text()}}, {}}};
    }
    run_protocol::RunScenarioInfo RunInfo() const { return {text(), text(), {text(), text()}, text(), text(), text()}; }
    run_protocol::RunScenarioResult RunResult() const {
        return {text(), number() % 2 == 0, {{number(), text()}, {number(), text()}}, {text(), text()}};
    }
};
