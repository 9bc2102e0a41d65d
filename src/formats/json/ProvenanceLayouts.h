#pragma once

#include <tuple>

#include "formats/Provenance.h"
#include "formats/json/Layout.h"

/// The JSON layouts of the files about the origin of results.
namespace json {

template <>
struct Layout<provenance::FileRecord> {
    using Record = provenance::FileRecord;
    static constexpr auto members = std::make_tuple(Member{"path", &Record::path}, Member{"size", &Record::size},
                                                    Member{"sha256", &Record::sha256});
};

template <>
struct Layout<provenance::ToolVersion> {
    using Record = provenance::ToolVersion;
    static constexpr auto members = std::make_tuple(Member{"name", &Record::name}, Member{"version", &Record::version});
};

template <>
struct Layout<provenance::ProgramRecord> {
    using Record = provenance::ProgramRecord;
    static constexpr auto members =
        std::make_tuple(Member{"path", &Record::path}, Member{"size", &Record::size},
                        Member{"lastWrite", &Record::lastWrite}, Member{"arguments", &Record::arguments});
};

template <>
struct Layout<provenance::JobName> {
    using Record = provenance::JobName;
    static constexpr auto members =
        std::make_tuple(Member{"jobId", &Record::jobId}, Member{"jobNumber", &Record::jobNumber});
};

template <>
struct Layout<provenance::Record> {
    using Record = provenance::Record;
    using Ingredients = provenance::Ingredients;
    static constexpr auto members = std::make_tuple(
        Version(), Member{"jobId", &Record::jobId}, Member{"attempt", &Record::attempt},
        Member{"succeeded", &Record::succeeded}, OptionalMember{"resultsOf", &Record::resultsOf},
        OptionalMember{"notReusable", &Record::notReusable}, Member{"machine", &Record::machine},
        Member{"user", &Record::user}, Member{"startTime", &Record::startTime}, Member{"endTime", &Record::endTime},
        Member{"controllerVersion", &Ingredients::controllerVersion}, Member{"scenario", &Ingredients::scenario},
        Member{"interpreter", &Ingredients::interpreter}, Member{"runArgument", &Ingredients::runArgument},
        Member{"inputs", &Ingredients::inputs}, Member{"toolVersions", &Ingredients::toolVersions},
        Member{"tools", &Record::tools}, Member{"usedFiles", &Record::usedFiles}, Member{"outputs", &Record::outputs},
        Member{"outputDirectories", &Record::outputDirectories}, Member{"resultFiles", &Record::resultFiles});
};

template <>
struct Layout<provenance::Candidate> {
    using Record = provenance::Candidate;
    static constexpr auto members = std::tuple_cat(
        Layout<provenance::JobName>::members, std::make_tuple(Member{"outputDirectory", &Record::outputDirectory}));
};

template <>
struct Layout<provenance::RunContext> {
    using Record = provenance::RunContext;
    static constexpr auto members =
        std::make_tuple(Version(), Member{"attempt", &Record::attempt}, Member{"candidates", &Record::candidates},
                        OptionalMember{"memoryLimitMiB", &Record::memoryLimitMiB},
                        OptionalMember{"cpuLimitPercent", &Record::cpuLimitPercent});
};

template <>
struct Layout<provenance::UsedTools> {
    using Record = provenance::UsedTools;
    static constexpr auto members =
        std::make_tuple(Version(), Member{"tools", &Record::tools}, Member{"files", &Record::files});
};

} // namespace json
