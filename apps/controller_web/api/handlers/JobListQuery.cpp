#include "controller_web/api/handlers/JobListQuery.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <string_view>

#include "controller_web/api/Answers.h"
#include "front_end/command_line/NamesInText.h"
#include "text/Text.h"

namespace web {
namespace {

constexpr std::size_t usualLimit = 100;
constexpr std::size_t largestLimit = 10'000;

bool Always(const ListedJob& /*job*/) {
    return true;
}

template <typename Value>
int Compare(const Value& left, const Value& right) {
    return left < right ? -1 : (right < left ? 1 : 0);
}

/// Times are texts that are in the order of time.
constexpr std::array<SortColumn, 7> columns = {{
    {L"number", Always, [](const ListedJob& left, const ListedJob& right) { return Compare(left.seqId, right.seqId); }},
    {L"created", [](const ListedJob& job) { return job.queuedTime != 0; },
     [](const ListedJob& left, const ListedJob& right) { return Compare(left.queuedTime, right.queuedTime); }},
    {L"started", [](const ListedJob& job) { return !job.startTime.empty(); },
     [](const ListedJob& left, const ListedJob& right) { return left.startTime.compare(right.startTime); }},
    {L"finished", [](const ListedJob& job) { return !job.endTime.empty(); },
     [](const ListedJob& left, const ListedJob& right) { return left.endTime.compare(right.endTime); }},
    {L"priority", Always,
     [](const ListedJob& left, const ListedJob& right) { return Compare(left.priority, right.priority); }},
    {L"scenario", Always,
     [](const ListedJob& left, const ListedJob& right) {
         return left.scenario.displayName.compare(right.scenario.displayName);
     }},
    {L"status", Always,
     [](const ListedJob& left, const ListedJob& right) { return Compare(left.status, right.status); }},
}};

void RequireKnownNames(const Request& request) {
    constexpr std::array<std::string_view, 9> known = {"status", "scenario", "text",  "label", "sort",
                                                       "order",  "offset",   "limit", "fields"};
    for (const auto& [name, value] : request.query) {
        if (std::find(known.begin(), known.end(), name) == known.end()) {
            throw BadRequest(L"There is no parameter " + text::FromUtf8(name) + L".");
        }
    }
}

std::vector<std::wstring> ValuesOf(const Request& request, const std::string& name) {
    std::vector<std::wstring> values;
    const auto [first, end] = request.query.equal_range(name);
    std::transform(first, end, std::back_inserter(values),
                   [](const auto& parameter) { return text::FromUtf8(parameter.second); });
    return values;
}

front_end::JobConditions ConditionsOf(const Request& request) {
    front_end::JobConditions conditions;
    for (const std::wstring& name : ValuesOf(request, "status")) {
        const auto status = front_end::StatusNamed(name);
        if (!status) {
            throw BadRequest(L"status: expected the name of a status, found " + name + L".");
        }
        conditions.states.insert(*status);
    }
    for (const std::wstring& label : ValuesOf(request, "label")) {
        conditions.labels.push_back(front_end::LowerCase(label));
    }
    conditions.scenario = front_end::LowerCase(QueryValue(request, "scenario"));
    conditions.text = front_end::LowerCase(QueryValue(request, "text"));
    return conditions;
}

std::size_t NumberOf(const Request& request, const std::string& name, std::size_t usual, std::size_t most) {
    const std::string value = text::ToUtf8(QueryValue(request, name));
    std::size_t number = usual;
    const char* const end = value.data() + value.size();
    const auto result = std::from_chars(value.data(), end, number);
    if (!value.empty() && (result.ec != std::errc() || result.ptr != end || number > most)) {
        throw BadRequest(text::FromUtf8(name) + L": expected a whole number from 0 to " + std::to_wstring(most) +
                         L", found " + text::FromUtf8(value) + L".");
    }
    return number;
}

const SortColumn* ColumnOf(const Request& request) {
    const std::wstring name = QueryValue(request, "sort");
    const auto* const found =
        std::find_if(columns.begin(), columns.end(), [&](const SortColumn& column) { return column.name == name; });
    if (found == columns.end() && !name.empty()) {
        throw BadRequest(L"sort: there is no order " + name + L".");
    }
    return found == columns.end() ? &columns.front() : found;
}

bool IsDescending(const Request& request) {
    const std::wstring order = QueryValue(request, "order");
    if (!order.empty() && order != L"asc" && order != L"desc") {
        throw BadRequest(L"order: expected asc or desc, found " + order + L".");
    }
    return order == L"desc";
}

std::vector<std::wstring> Split(const std::wstring& list) {
    std::vector<std::wstring> names;
    for (std::size_t begin = 0; begin <= list.size();) {
        const std::size_t end = std::min(list.find(L',', begin), list.size());
        names.push_back(list.substr(begin, end - begin));
        begin = end + 1;
    }
    return names;
}

/// Names of members that need files select nothing: lists do not have them.
front_end::JobMembers MembersOf(const Request& request) {
    const std::wstring fields = QueryValue(request, "fields");
    if (fields.empty()) {
        return front_end::JobMembers::OfList();
    }
    std::wstring unknown;
    const auto members = front_end::JobMembers::Named(Split(fields), unknown);
    if (!members) {
        throw BadRequest(L"fields: jobs have no member " + unknown + L".");
    }
    return members->InLists();
}

/// Nothing is sorted that is in order already or is not shown.
void Sort(std::vector<const front_end::JobRow*>& rows, const JobListQuery& query) {
    const auto isBefore = [&](const front_end::JobRow* left, const front_end::JobRow* right) {
        const bool hasValue = query.sort->hasValue(left->job);
        if (hasValue != query.sort->hasValue(right->job)) {
            return hasValue;
        }
        const int compared = hasValue ? query.sort->compare(left->job, right->job) : 0;
        return compared == 0 ? left->job.seqId < right->job.seqId : (compared < 0) != query.isDescending;
    };
    const std::size_t shown = std::min(rows.size(), query.offset + query.limit);
    if (query.sort != &columns.front() || query.isDescending) {
        std::partial_sort(rows.begin(), rows.begin() + static_cast<std::ptrdiff_t>(shown), rows.end(), isBefore);
    }
}

} // namespace

JobListQuery ReadJobListQuery(const Request& request) {
    RequireKnownNames(request);
    return {ConditionsOf(request),
            ColumnOf(request),
            IsDescending(request),
            NumberOf(request, "offset", 0, std::numeric_limits<std::int32_t>::max()),
            NumberOf(request, "limit", usualLimit, largestLimit),
            MembersOf(request)};
}

JobPage PageOf(const Snapshot& snapshot, const JobListQuery& query) {
    JobPage page;
    page.rows.reserve(snapshot.rows->size());
    for (const Row& row : *snapshot.rows) {
        if (query.conditions.Matches(row->job)) {
            page.rows.push_back(row.get());
        }
    }
    page.total = page.rows.size();
    Sort(page.rows, query);
    const std::size_t first = std::min(query.offset, page.total);
    const std::size_t end = std::min(page.total, first + query.limit);
    page.rows = {page.rows.begin() + static_cast<std::ptrdiff_t>(first),
                 page.rows.begin() + static_cast<std::ptrdiff_t>(end)};
    return page;
}

} // namespace web
