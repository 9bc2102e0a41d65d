#include "controller_c/Documents.h"

#include <tuple>
#include <utility>

#include "formats/json/Layout.h"
#include "formats/json/Writing.h"

namespace controller_c {
namespace {

struct EnqueuedDocument {
    std::vector<OwnedEngine::EnqueuedJob> jobs;
};

struct DeletedDocument {
    std::vector<std::wstring> deleted;
};

} // namespace
} // namespace controller_c

namespace json {

template <>
struct Layout<controller_c::OwnedEngine::EnqueuedJob> {
    using Record = controller_c::OwnedEngine::EnqueuedJob;
    static constexpr auto members = std::make_tuple(Member{"number", &Record::number}, Member{"id", &Record::id},
                                                    OptionalMember{"reason", &Record::reason});
};

template <>
struct Layout<controller_c::EnqueuedDocument> {
    static constexpr auto members = std::make_tuple(Version(), Member{"jobs", &controller_c::EnqueuedDocument::jobs});
};

template <>
struct Layout<controller_c::DeletedDocument> {
    static constexpr auto members =
        std::make_tuple(Version(), Member{"deleted", &controller_c::DeletedDocument::deleted});
};

} // namespace json

namespace controller_c {

std::wstring EnqueuedJson(std::vector<OwnedEngine::EnqueuedJob> jobs) {
    return json::Write(EnqueuedDocument{std::move(jobs)});
}

std::wstring DeletedJson(std::vector<std::wstring> ids) {
    return json::Write(DeletedDocument{std::move(ids)});
}

} // namespace controller_c
