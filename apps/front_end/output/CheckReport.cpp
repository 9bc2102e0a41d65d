#include "front_end/output/CheckReport.h"

#include <algorithm>

#include "front_end/output/DisplayText.h"
#include "front_end/terminal/Colour.h"

namespace front_end {
namespace {

std::wstring LineOf(const CommandContext& context, const CheckResult& result) {
    const std::wstring mark = context.texts.Get(result.isFine ? L"Doctor/Fine" : L"Doctor/Wrong");
    const Colour colour = result.isFine ? Colour::Green : Colour::Red;
    return (context.console.HasColours() ? Coloured(mark, colour) : mark) + L"  " + result.name + L": " +
           OneLine(result.message) + L"\n";
}

} // namespace

ExitCode ReportChecks(CommandContext& context, const std::vector<CheckResult>& results, bool asJson) {
    if (asJson) {
        context.console.Write(ChecksJson(results));
    }
    for (std::size_t i = 0; i < results.size() && !asJson; ++i) {
        context.console.Write(LineOf(context, results[i]));
    }
    const bool isWell = std::all_of(results.begin(), results.end(), [](const CheckResult& one) { return one.isFine; });
    return isWell ? ExitCode::Success : ExitCode::JobFailed;
}

} // namespace front_end
