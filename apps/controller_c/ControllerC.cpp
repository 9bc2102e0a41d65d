#include "controller_c/controller_c.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "controller_c/Documents.h"
#include "controller_c/Failure.h"
#include "controller_c/OwnedEngine.h"
#include "front_end/output/JsonOutput.h"
#include "text/Text.h"

using controller_c::Failure;
using controller_c::OwnedEngine;

namespace {

/// Reserves the process for one engine while it lives.
class Reservation {
public:
    Reservation() {
        if (IsTaken().test_and_set()) {
            throw Failure{CONTROLLER_RESULT_IN_USE, L"This process has an open engine; close it first."};
        }
    }
    ~Reservation() { IsTaken().clear(); }
    Reservation(const Reservation&) = delete;
    Reservation& operator=(const Reservation&) = delete;

private:
    static std::atomic_flag& IsTaken() {
        static std::atomic_flag flag;
        return flag;
    }
};

} // namespace

/// The state behind the handle of the header.
struct controller_engine {
    explicit controller_engine(const std::wstring& settingsFile) : owned(settingsFile) {}

    Reservation reservation;
    OwnedEngine owned;
};

namespace {

/// Of this thread's last call.
std::string& LastError() {
    static thread_local std::string text;
    return text;
}

void SetLastError(const char* text) noexcept {
    try {
        LastError() = text;
    } catch (...) {
        // Without memory even for the reason, the result has to do.
        LastError().clear();
    }
}

/// Runs the body of an exported function, which returns a result or throws.
template <typename Body>
std::int32_t Guard(Body&& body) noexcept {
    try {
        LastError().clear();
        return std::forward<Body>(body)();
    } catch (const Failure& failure) {
        SetLastError(text::ToUtf8(failure.text).c_str());
        return failure.result;
    } catch (const std::exception& failure) {
        SetLastError(failure.what());
    } catch (...) {
        SetLastError("an unknown exception");
    }
    return CONTROLLER_RESULT_SYSTEM;
}

void Require(const void* pointer, const wchar_t* name) {
    if (pointer == nullptr) {
        throw Failure{CONTROLLER_RESULT_BAD_ARGUMENT, std::wstring(L"The argument \"") + name + L"\" is null."};
    }
}

/// The engine and the place of the answer, which is cleared: a caller may free it after a failure.
OwnedEngine& Checked(controller_engine* engine, char** answer) {
    Require(answer, L"answer");
    *answer = nullptr;
    Require(engine, L"engine");
    return engine->owned;
}

std::wstring TextOf(const char* argument, const wchar_t* name) {
    Require(argument, name);
    if (auto text = text::FromStrictUtf8(argument)) {
        return *std::move(text);
    }
    throw Failure{CONTROLLER_RESULT_BAD_ARGUMENT, std::wstring(L"The argument \"") + name + L"\" is not UTF-8."};
}

/// Memory for `controller_c_free`. The line feed after documents of the command line is left out.
char* CopyOf(std::wstring_view document) {
    const std::string bytes = text::ToUtf8(document.substr(0, document.find_last_not_of(L'\n') + 1));
    char* const copy = static_cast<char*>(std::malloc(bytes.size() + 1));
    if (copy == nullptr) {
        throw std::bad_alloc();
    }
    std::memcpy(copy, bytes.c_str(), bytes.size() + 1);
    return copy;
}

char* JobsText(std::vector<ListedJob> jobs) {
    return CopyOf(front_end::JobsJson(front_end::ViewsOf(std::move(jobs))));
}

std::int32_t Open(const char* settingsFile, controller_engine** engine) {
    Require(engine, L"engine");
    *engine = nullptr;
    *engine =
        std::make_unique<controller_engine>(text::FromUtf8(settingsFile == nullptr ? "" : settingsFile)).release();
    return CONTROLLER_RESULT_OK;
}

std::int32_t Enqueue(OwnedEngine& engine, const char* jobsFile, char** answer) {
    Require(jobsFile, L"jobs_file_json");
    std::vector<OwnedEngine::EnqueuedJob> jobs = engine.Enqueue(jobsFile);
    const auto rejected = std::find_if(jobs.begin(), jobs.end(), [](const auto& job) { return job.id.empty(); });
    const std::wstring reason = rejected == jobs.end() ? std::wstring() : rejected->reason;
    const bool isRejected = rejected != jobs.end();
    *answer = CopyOf(controller_c::EnqueuedJson(std::move(jobs)));
    SetLastError(text::ToUtf8(reason).c_str());
    return isRejected ? CONTROLLER_RESULT_REJECTED : CONTROLLER_RESULT_OK;
}

std::int32_t Wait(OwnedEngine& engine, const char* names, std::int32_t timeout, char** answer) {
    const std::vector<ListedJob> jobs = engine.Rows(TextOf(names, L"jobs"));
    const bool haveEnded =
        engine.Wait(jobs, timeout < 0 ? std::nullopt : std::optional(std::chrono::milliseconds(timeout)));
    *answer = JobsText(engine.StillListed(jobs));
    SetLastError(haveEnded ? "" : "The time was over before all jobs had ended.");
    return haveEnded ? CONTROLLER_RESULT_OK : CONTROLLER_RESULT_TIMEOUT;
}

} // namespace

int32_t controller_c_version(void) noexcept {
    return CONTROLLER_C_VERSION;
}

const char* controller_c_product_version(void) noexcept {
    return CONTROLLER_VERSION;
}

const char* controller_c_last_error(void) noexcept {
    return LastError().c_str();
}

void controller_c_free(char* text) noexcept {
    std::free(text);
}

int32_t controller_engine_open(const char* settings_file, controller_engine** engine) noexcept {
    return Guard([&] { return Open(settings_file, engine); });
}

int32_t controller_engine_close(controller_engine* engine) noexcept {
    return Guard([&] {
        const std::unique_ptr<controller_engine> owned(engine);
        if (owned) {
            owned->owned.Close();
        }
        return CONTROLLER_RESULT_OK;
    });
}

int32_t controller_engine_enqueue(controller_engine* engine, const char* jobs_file_json, char** answer_json) noexcept {
    return Guard([&] { return Enqueue(Checked(engine, answer_json), jobs_file_json, answer_json); });
}

int32_t controller_engine_step(controller_engine* engine, char** changed_json) noexcept {
    return Guard([&] {
        char* unused = nullptr;
        OwnedEngine& owned = Checked(engine, changed_json == nullptr ? &unused : changed_json);
        owned.Step();
        if (changed_json != nullptr) {
            *changed_json = JobsText(owned.TakeChanged());
        }
        return CONTROLLER_RESULT_OK;
    });
}

int32_t controller_engine_wait(controller_engine* engine, const char* jobs, int32_t timeout_milliseconds,
                               char** jobs_json) noexcept {
    return Guard([&] { return Wait(Checked(engine, jobs_json), jobs, timeout_milliseconds, jobs_json); });
}

int32_t controller_engine_status(controller_engine* engine, const char* jobs, char** jobs_json) noexcept {
    return Guard([&] {
        OwnedEngine& owned = Checked(engine, jobs_json);
        *jobs_json = JobsText(owned.Rows(TextOf(jobs, L"jobs")));
        return CONTROLLER_RESULT_OK;
    });
}

int32_t controller_engine_list(controller_engine* engine, char** jobs_json) noexcept {
    return controller_engine_status(engine, "all", jobs_json);
}

int32_t controller_engine_cancel(controller_engine* engine, const char* jobs, char** cancelled_json) noexcept {
    return Guard([&] {
        OwnedEngine& owned = Checked(engine, cancelled_json);
        *cancelled_json = JobsText(owned.Cancel(owned.Rows(TextOf(jobs, L"jobs"))));
        return CONTROLLER_RESULT_OK;
    });
}

int32_t controller_engine_delete(controller_engine* engine, const char* jobs, char** deleted_json) noexcept {
    return Guard([&] {
        OwnedEngine& owned = Checked(engine, deleted_json);
        *deleted_json = CopyOf(controller_c::DeletedJson(owned.Delete(owned.Rows(TextOf(jobs, L"jobs")))));
        return CONTROLLER_RESULT_OK;
    });
}

int32_t controller_engine_scenarios(controller_engine* engine, char** scenarios_json) noexcept {
    return Guard([&] {
        OwnedEngine& owned = Checked(engine, scenarios_json);
        *scenarios_json = CopyOf(front_end::ScenariosJson(owned.Scenarios()));
        return CONTROLLER_RESULT_OK;
    });
}
