#pragma once

#include <tuple>

#include "formats/json/Layout.h"
#include "front_end/output/StateJson.h"

/// The JSON layouts of states and reports, for documents that contain them.
namespace json {

template <>
struct Layout<front_end::JobReport> {
    using Record = front_end::JobReport;
    static constexpr auto members =
        std::make_tuple(Member{"number", &Record::number}, Member{"id", &Record::id}, Member{"status", &Record::status},
                        Member{"done", &Record::isDone}, Member{"message", &Record::message});
};

template <>
struct Layout<front_end::HostState> {
    using Record = front_end::HostState;
    static constexpr auto members =
        std::make_tuple(Member{"running", &Record::isRunning}, OptionalMember{"process", &Record::process},
                        OptionalMember{"since", &Record::since}, OptionalMember{"endpoint", &Record::endpoint},
                        Member{"jobListFile", &Record::jobListFile}, Member{"settingsFile", &Record::settingsFile});
};

template <>
struct Layout<front_end::JobCounts> {
    using Record = front_end::JobCounts;
    static constexpr auto members = std::make_tuple(
        Member{"queued", &Record::queued}, Member{"running", &Record::running}, Member{"succeeded", &Record::succeeded},
        Member{"failed", &Record::failed}, Member{"cancelled", &Record::cancelled});
};

} // namespace json
