#include <algorithm>
#include <utility>

#include "front_end/commands/Commands.h"
#include "front_end/commands/JobSelection.h"
#include "front_end/connection/HostSession.h"
#include "front_end/output/DisplayText.h"
#include "front_end/output/JobTable.h"
#include "front_end/output/JsonOutput.h"
#include "front_end/terminal/Links.h"
#include "platform/files/NativePath.h"

namespace front_end::commands {
namespace {

/// The lines "Name:  value" of one job. Empty values have no line.
class Details {
public:
    explicit Details(const CommandContext& commandContext) : context(commandContext) {}

    /// `textKey` is the key of the name.
    void Add(const wchar_t* textKey, const std::wstring& value) {
        if (!value.empty()) {
            lines.emplace_back(context.texts.Get(textKey), OneLine(value));
        }
    }

    void AddPath(const wchar_t* textKey, const std::wstring& path) {
        if (!path.empty()) {
            const std::wstring native = platform::ToNativeText(path);
            const std::wstring shown = OneLine(native);
            lines.emplace_back(context.texts.Get(textKey), context.console.HasLinks() ? LinkTo(native, shown) : shown);
        }
    }

    void AddPaths(const wchar_t* textKey, const std::vector<std::wstring>& paths) {
        for (const std::wstring& path : paths) {
            AddPath(textKey, path);
        }
    }

    std::wstring Text() const {
        std::size_t width = 0;
        for (const auto& [name, value] : lines) {
            width = std::max(width, DisplayWidth(name) + 1);
        }
        std::wstring text;
        for (const auto& [name, value] : lines) {
            text.append(name).append(L":").append(width + 1 - DisplayWidth(name), L' ').append(value).append(L"\n");
        }
        return text;
    }

private:
    const CommandContext& context;
    std::vector<std::pair<std::wstring, std::wstring>> lines;
};

void AddColumns(const CommandContext& context, const JobRow& row, Details& details) {
    for (const JobColumn* column : JobColumnsNamed({L"number", L"id", L"state", L"progress", L"scenario", L"argument",
                                                    L"priority", L"queued", L"started", L"ended", L"time"})) {
        details.Add(column->textKey, column->cell(context, row, ProgressKind::Percent).text);
    }
}

std::wstring NeedsText(const ListedJob& job) {
    std::wstring text;
    for (const auto& [name, amount] : job.needs) {
        text += (text.empty() ? L"" : L", ") + name + L"=" + std::to_wstring(amount);
    }
    return text;
}

std::wstring TextOf(const CommandContext& context, const JobRow& row) {
    Details details(context);
    AddColumns(context, row, details);
    details.Add(L"Show/Needs", NeedsText(row.job));
    details.Add(L"Show/Waits", WaitText(context.texts, row.job));
    details.AddPaths(L"Table/Input", row.job.inputFiles);
    details.AddPath(L"Show/OutputDirectory", row.outputFolder);
    details.AddPath(L"Show/WorkDirectory", row.workDirectory);
    details.AddPaths(L"Show/OutputFile", row.outputFiles);
    if (row.messages.empty()) {
        details.Add(L"Show/Message", row.message);
    }
    for (const std::wstring& message : row.messages) {
        details.Add(L"Show/Message", message);
    }
    return details.Text();
}

} // namespace

ExitCode Show(CommandContext& context, const Command& command) {
    HostSession session(context, StartOf(command));
    const JobModel jobs(JobsOf(context, session, command));
    if (command.asJson) {
        context.console.Write(JobsJson(jobs.Views()));
        return ExitCode::Success;
    }
    std::wstring gap;
    for (const JobRow& row : jobs.Views()) {
        context.console.Write(gap + TextOf(context, row));
        gap = L"\n";
    }
    return ExitCode::Success;
}

} // namespace front_end::commands
