#include "controller_web/api/Metrics.h"

#include "front_end/jobs/JobRow.h"
#include "text/Text.h"

namespace web {
namespace {

void Describe(const std::string& name, const char* type, const char* help, std::string& text) {
    text += "# HELP " + name + " " + help + "\n# TYPE " + name + " " + type + "\n";
}

void AddGauge(const std::string& name, const char* help, std::int64_t value, std::string& text) {
    Describe(name, "gauge", help, text);
    text += name + " " + std::to_string(value) + "\n";
}

void AddSample(const std::string& name, const std::string& label, const std::string& value, std::uint64_t number,
               std::string& text) {
    text += name + "{" + label + "=\"" + value + "\"} " + std::to_string(number) + "\n";
}

void AddCounts(const front_end::JobCounts& counts, std::string& text) {
    const std::string name = "controller_jobs";
    Describe(name, "gauge", "Listed jobs by state.", text);
    AddSample(name, "state", "queued", static_cast<std::uint64_t>(counts.queued), text);
    AddSample(name, "state", "running", static_cast<std::uint64_t>(counts.running), text);
    AddSample(name, "state", "succeeded", static_cast<std::uint64_t>(counts.succeeded), text);
    AddSample(name, "state", "failed", static_cast<std::uint64_t>(counts.failed), text);
    AddSample(name, "state", "cancelled", static_cast<std::uint64_t>(counts.cancelled), text);
}

} // namespace

void Metrics::Count(unsigned status) {
    const std::lock_guard lock(mutex);
    ++answers[status];
}

std::string Metrics::Text(const QueueTracker& tracker) const {
    const QueueStatus status = tracker.Status();
    std::string text;
    AddGauge("controller_host_running", "1 if a host runs.", status.host.isRunning ? 1 : 0, text);
    AddGauge("controller_queue_paused", "1 if no further job starts.", status.isPaused ? 1 : 0, text);
    AddCounts(status.counts, text);
    AddGauge("controller_web_event_clients", "Clients of the event stream.",
             static_cast<std::int64_t>(tracker.Events().ClientCount()), text);
    const std::string ended = "controller_jobs_ended_total";
    Describe(ended, "counter", "Jobs that have ended while this server watched, by status.", text);
    for (const auto& [jobStatus, number] : tracker.Ended()) {
        AddSample(ended, "status", text::ToUtf8(front_end::StatusName(jobStatus)), number, text);
    }
    const std::string requests = "controller_web_requests_total";
    Describe(requests, "counter", "Answered requests of the interface, by HTTP status.", text);
    const std::lock_guard lock(mutex);
    for (const auto& [code, number] : answers) {
        AddSample(requests, "code", std::to_string(code), number, text);
    }
    return text;
}

} // namespace web
