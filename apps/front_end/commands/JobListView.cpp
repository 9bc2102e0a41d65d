#include "front_end/commands/JobListView.h"

#include <algorithm>
#include <cstdint>
#include <map>

#include "front_end/commands/SchedulingOptions.h"
#include "front_end/output/JobTable.h"

namespace front_end {
namespace {

template <typename Ability>
const JobColumn* ColumnFor(const std::wstring& name, Ability JobColumn::*ability) {
    if (name.empty()) {
        return nullptr;
    }
    const JobColumn* const column = JobColumnsNamed({name}).front();
    if (column->*ability == nullptr) {
        throw UsageProblem{L"Usage/Column", name};
    }
    return column;
}

std::size_t LimitOf(const CommandContext& context, const Command& command) {
    const auto number = WholeNumberOf(command.limit, 1, 1000000000, L"Usage/Limit");
    const bool isUsual = !number && !command.showsAll && !command.asJson && context.console.IsTerminal();
    return isUsual ? usualLimit : static_cast<std::size_t>(number.value_or(0));
}

} // namespace

JobListView::JobListView(const CommandContext& context, const Command& command)
    : columns(command.columns.empty() ? UsualJobColumns() : JobColumnsNamed(command.columns)),
      sortColumn(ColumnFor(command.sortColumn, &JobColumn::precedes)),
      groupColumn(ColumnFor(command.groupColumn, &JobColumn::groupText)), isReversed(command.isReversed),
      limit(LimitOf(context, command)) {
    if (groupColumn != nullptr && command.asJson) {
        throw UsageProblem{L"Usage/IdleOption", L"--group-by"};
    }
}

std::size_t JobListView::Arrange(std::vector<ListedJob>& jobs) const {
    const std::size_t dropped = limit == 0 || jobs.size() <= limit ? 0 : jobs.size() - limit;
    const auto count = static_cast<std::ptrdiff_t>(dropped);
    if (sortColumn == nullptr) {
        jobs.erase(jobs.begin(), jobs.begin() + count);
    } else {
        std::stable_sort(jobs.begin(), jobs.end(), sortColumn->precedes);
    }
    if (isReversed) {
        std::reverse(jobs.begin(), jobs.end());
    }
    if (sortColumn != nullptr) {
        jobs.erase(jobs.end() - count, jobs.end());
    }
    return dropped;
}

void JobListView::WriteGroups(CommandContext& context, const std::vector<ListedJob>& jobs) const {
    std::vector<std::wstring> names;
    std::map<std::wstring, std::vector<ListedJob>> groups;
    for (const ListedJob& job : jobs) {
        const std::wstring name = groupColumn->groupText(context, job);
        std::vector<ListedJob>& group = groups[name];
        if (group.empty()) {
            names.push_back(name);
        }
        group.push_back(job);
    }
    std::wstring gap;
    for (const std::wstring& name : names) {
        const std::vector<ListedJob>& group = groups.at(name);
        context.console.Write(
            gap +
            context.texts.Format(L"Outcome/Group", {context.texts.Get(groupColumn->textKey), name.empty() ? L"-" : name,
                                                    std::to_wstring(group.size())}) +
            L"\n");
        WriteJobTable(context, JobModel(group).Views(), columns);
        gap = L"\n";
    }
}

void JobListView::Write(CommandContext& context, const std::vector<ListedJob>& jobs) const {
    if (groupColumn != nullptr && !jobs.empty()) {
        WriteGroups(context, jobs);
    } else {
        WriteJobTable(context, JobModel(jobs).Views(), columns);
    }
}

} // namespace front_end
