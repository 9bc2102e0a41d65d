#include "system/crash/CrashCounts.h"

#include <iomanip>
#include <numeric>
#include <sstream>
#include <string_view>

namespace crash {
namespace {

void AddRow(std::ostringstream& table, std::string_view what, std::size_t count) {
    constexpr int width = 36;
    table << "  " << std::left << std::setw(width) << what << std::right << std::setw(7) << count << "\n";
}

} // namespace

std::size_t CrashCounts::Kills() const {
    return std::accumulate(struck.begin(), struck.end(), killedFromOutside + notReached);
}

std::string CrashCounts::Table() const {
    std::ostringstream table;
    table << "Hosts killed\n";
    for (std::size_t point = 0; point < faultPointCount; ++point) {
        AddRow(table, faultPointNames[point], struck[point]);
    }
    AddRow(table, "from outside, while they worked", killedFromOutside);
    AddRow(table, "from outside, fault not reached", notReached);
    AddRow(table, "all", Kills());
    table << "Looked at\n";
    AddRow(table, "hosts started", hostsStarted);
    AddRow(table, "hosts that ended when asked", endedAsAsked);
    AddRow(table, "lists parsed", listsParsed);
    AddRow(table, "jobs compared", jobsCompared);
    AddRow(table, "jobs acknowledged", jobsAcknowledged);
    AddRow(table, "deletions acknowledged", deletionsAcknowledged);
    AddRow(table, "work directories compared", workDirectoriesCompared);
    AddRow(table, "scenario processes looked for", processesLookedFor);
    AddRow(table, "longest wait for their end, ms", static_cast<std::size_t>(longestSurvival.count()));
    return table.str();
}

std::string CrashCounts::NeverStruck() const {
    std::string names;
    for (std::size_t point = 0; point < faultPointCount; ++point) {
        names += struck[point] == 0 ? std::string(names.empty() ? "" : "; ") + faultPointNames[point] : "";
    }
    return names;
}

} // namespace crash
