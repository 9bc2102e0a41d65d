#include "system/crash/Fault.h"

#include <sstream>

namespace crash {

const std::array<const char*, faultPointCount> faultPointNames = {
    "before a file is created",
    "a file created",
    "a file written",
    "a file flushed",
    "the backup linked",
    "the backup in place",
    "a file renamed",
    "an entry of a folder removed",
    "start: the list read",
    "enqueue: jobs appended",
    "enqueue: jobs listed",
    "run: before the module call",
    "run: module called",
    "run: start listed",
    "poll: progress seen",
    "poll: end seen",
    "poll: result read",
    "poll: before the list",
    "poll: changes listed",
    "delete: before the work directory",
    "delete: work directory removed",
    "delete: before the list",
    "delete: listed",
    "cancel: status changed",
    "cancel: module called",
    "cancel: killprocess made",
    "cancel: before the list",
    "cancel: listed",
    "module: work directory made",
    "module: run request written",
    "module: runner started",
    "journal: change appended",
    "journal: flushed",
    "journal: snapshot written",
    "journal: begun",
    "journal: ended",
    "start: place taken",
    "start: leftovers stopped",
    "start: engine made",
    "start: ready",
    "before an answer",
    "after an answer",
    "changes told",
    "delete: noted",
    "delete: note to be removed",
    "delete: note removed",
    "end: jobs cancelled",
    "end: ended",
};

std::string FaultText(const Fault& fault) {
    return std::to_string(static_cast<int>(fault.point)) + " " + std::to_string(fault.pass);
}

std::optional<Fault> ParseFault(const std::string& text) {
    std::istringstream words(text);
    int point = 0;
    Fault fault;
    if (!(words >> point >> fault.pass) || point < 0 || point >= static_cast<int>(faultPointCount)) {
        return std::nullopt;
    }
    fault.point = static_cast<fault_points::FaultPoint>(point);
    return fault;
}

} // namespace crash
