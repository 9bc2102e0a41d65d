#pragma once

#include <cstdint>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "formats/RunProtocol.h"
#include "formats/json/Layout.h"

/// The JSON layouts of the files in a job's work directory.
namespace run_protocol {

struct ProgressFile {
    std::wstring jobId;
    /// The last report is the current one.
    std::vector<ProgressReport> reports;
};

} // namespace run_protocol

namespace json {

template <>
struct Layout<run_protocol::RunScenarioInfo> {
    using Record = run_protocol::RunScenarioInfo;
    static constexpr auto members =
        std::make_tuple(Version(), Member{"jobId", &Record::jobId}, Member{"scenarioPath", &Record::scenarioPath},
                        Member{"inputFiles", &Record::inputFiles}, Member{"outputFolder", &Record::outputFolder},
                        Member{"workDir", &Record::workDir}, Member{"runArgument", &Record::runArgument});
};

template <>
struct Layout<run_protocol::ProgressReport> {
    using Record = run_protocol::ProgressReport;
    static constexpr auto members =
        std::make_tuple(Member{"progress", &Record::progress}, Member{"message", &Record::message});
};

template <>
struct Layout<run_protocol::ProgressFile> {
    using Record = run_protocol::ProgressFile;
    static constexpr auto members =
        std::make_tuple(Version(), Member{"jobId", &Record::jobId}, Member{"progressInfoList", &Record::reports});
};

/// A message of a scenario: its code and its text.
template <>
struct Layout<std::pair<int, std::wstring>> {
    using Record = std::pair<int, std::wstring>;
    static constexpr auto members = std::make_tuple(Member{"code", &Record::first}, Member{"text", &Record::second});
};

template <>
struct Layout<run_protocol::RunScenarioResult> {
    using Record = run_protocol::RunScenarioResult;
    static constexpr auto members =
        std::make_tuple(Version(), Member{"jobId", &Record::jobId}, Member{"succeeded", &Record::succeeded},
                        Member{"messages", &Record::messages}, Member{"outputFiles", &Record::outputFiles});
};

} // namespace json
