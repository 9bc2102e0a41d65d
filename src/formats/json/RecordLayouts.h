#pragma once

#include <tuple>

#include "CommonControllerLib/JobRecords.h"
#include "CommonControllerLib/ScenarioRecords.h"
#include "formats/json/Layout.h"

/// The JSON layouts of the controller's records in the job list file, jobs files, messages and scenario manifests.
namespace json {

template <>
struct Layout<InputFileSpec> {
    static constexpr auto members =
        std::make_tuple(Member{"cadName", &InputFileSpec::cadName}, Member{"extensions", &InputFileSpec::extensions});
};

template <>
struct Layout<ScenarioDirectory> {
    static constexpr auto members =
        std::make_tuple(Member{"path", &ScenarioDirectory::path}, Member{"label", &ScenarioDirectory::label});
};

template <>
struct Layout<ScenarioInfo> {
    static constexpr auto members =
        std::make_tuple(Member{"id", &ScenarioInfo::id}, Member{"relativePath", &ScenarioInfo::relativePath},
                        Member{"path", &ScenarioInfo::path}, Member{"displayName", &ScenarioInfo::displayName},
                        Member{"inputs", &ScenarioInfo::inputs});
};

template <>
struct Layout<ScenarioParameter> {
    static constexpr auto members =
        std::make_tuple(Member{"name", &ScenarioParameter::name}, Member{"type", &ScenarioParameter::type},
                        Member{"defaultValue", &ScenarioParameter::defaultValue},
                        Member{"allowedValues", &ScenarioParameter::allowedValues});
};

template <>
struct Layout<ScenarioParameterSetInfo> {
    static constexpr auto members = std::make_tuple(Member{"id", &ScenarioParameterSetInfo::id},
                                                    Member{"displayName", &ScenarioParameterSetInfo::displayName},
                                                    Member{"description", &ScenarioParameterSetInfo::description},
                                                    Member{"parameters", &ScenarioParameterSetInfo::parameters});
};

template <>
struct Layout<JobListInfo> {
    static constexpr auto members =
        std::make_tuple(Member{"id", &JobListInfo::id}, Member{"seqId", &JobListInfo::seqId},
                        Member{"progress", &JobListInfo::progress}, Member{"status", &JobListInfo::status},
                        Member{"outputDir", &JobListInfo::outputDir}, Member{"workDir", &JobListInfo::workDir},
                        Member{"startTime", &JobListInfo::startTime}, Member{"endTime", &JobListInfo::endTime},
                        Member{"scenario", &JobListInfo::scenario}, Member{"inputFiles", &JobListInfo::inputFiles},
                        Member{"runArgument", &JobListInfo::runArgument}, Member{"extraText", &JobListInfo::extraText});
};

template <>
struct Layout<EnqueueJobsInfo> {
    static constexpr auto members = std::make_tuple(
        Member{"requestId", &EnqueueJobsInfo::requestId}, Member{"inputFileSets", &EnqueueJobsInfo::inputFileSets},
        Member{"scenario", &EnqueueJobsInfo::scenario}, Member{"outputDir", &EnqueueJobsInfo::outputDir},
        Member{"runArgument", &EnqueueJobsInfo::runArgument}, Member{"extraText", &EnqueueJobsInfo::extraText},
        Member{"useTimeStampFolder", &EnqueueJobsInfo::useTimeStampFolder});
};

template <>
struct Layout<JobIdInfo> {
    static constexpr auto members = std::make_tuple(Member{"id", &JobIdInfo::id}, Member{"seqId", &JobIdInfo::seqId});
};

template <>
struct Layout<JobEnqueueResult> {
    static constexpr auto members =
        std::make_tuple(Member{"jobIds", &JobEnqueueResult::jobIds}, Member{"requestId", &JobEnqueueResult::requestId},
                        Member{"inputSetResults", &JobEnqueueResult::inputSetResults});
};

template <>
struct Layout<JobStatusInfo> {
    static constexpr auto members =
        std::make_tuple(Member{"id", &JobStatusInfo::id}, Member{"progress", &JobStatusInfo::progress},
                        Member{"status", &JobStatusInfo::status}, Member{"outputDir", &JobStatusInfo::outputDir},
                        Member{"workDir", &JobStatusInfo::workDir}, Member{"startTime", &JobStatusInfo::startTime},
                        Member{"endTime", &JobStatusInfo::endTime});
};

} // namespace json
