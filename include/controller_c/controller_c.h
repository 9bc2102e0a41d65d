#ifndef CONTROLLER_C_H
#define CONTROLLER_C_H

#include <stdint.h>

/// @file
/// A job engine inside a program, for C and for all languages that can call C. It is the engine of `controller_host`
/// with its scheduling, retries and job list, without front ends and hooks: a program that wants to talk to a running
/// host uses `cadjobs --json` instead.
///
/// Results: functions that can fail return a `CONTROLLER_RESULT_...` value and describe a failure in
/// `controller_c_last_error`. No function throws or ends the program.
///
/// Texts: all are zero-terminated UTF-8. On Linux a path may contain any bytes. A text that a function returns through
/// a `char**` belongs to the caller, who frees it with `controller_c_free`, never with `free`. After a failure, unless
/// stated otherwise, it is null.
///
/// Jobs as JSON: one object, `{"version":1,"jobs":[...]}`, the document of `cadjobs --json`
/// (docs/cadjobs.md, "JSON"). Later versions may add members.
///
/// Names of jobs: the parameter `jobs` is "all", or numbers and ids of jobs with commas between them: "1,51f10dd4".
///
/// The functions have C linkage and the calling convention of C.
///
/// Threads: any. Calls for one engine may overlap, except `controller_engine_close`, which is the last one. The library
/// starts no thread: jobs are started and watched by `controller_engine_step` and `controller_engine_wait` only.

/// Marks the functions of the library. Only the library's own build defines CONTROLLER_C_BUILD.
#if !defined(_WIN32)
#define CONTROLLER_C_API __attribute__((visibility("default")))
#elif defined(CONTROLLER_C_BUILD)
#define CONTROLLER_C_API __declspec(dllexport)
#else
#define CONTROLLER_C_API __declspec(dllimport)
#endif

#ifdef __cplusplus
/// States to C++ that no function throws.
#define CONTROLLER_C_NOEXCEPT noexcept
extern "C" {
#else
#define CONTROLLER_C_NOEXCEPT
#endif

/// The version of this interface that the header describes. A new version only adds functions and results.
#define CONTROLLER_C_VERSION 1

/// Success.
#define CONTROLLER_RESULT_OK 0
/// A pointer is null, a text is not UTF-8 or not JSON of the expected layout, or a job or scenario is not known.
/// Nothing was done.
#define CONTROLLER_RESULT_BAD_ARGUMENT 1
/// At least one set of input files got no job.
#define CONTROLLER_RESULT_REJECTED 2
/// The time was over.
#define CONTROLLER_RESULT_TIMEOUT 3
/// The job list is in use, by a host or by an engine of another program; or this process has an open engine.
#define CONTROLLER_RESULT_IN_USE 4
/// Settings, function modules or job list cannot be used.
#define CONTROLLER_RESULT_FAILED 5
/// An error of the system, such as too little memory.
#define CONTROLLER_RESULT_SYSTEM 6

/// An open engine.
typedef struct controller_engine controller_engine;

/// Returns the version of the interface that the loaded library has, to be compared with `CONTROLLER_C_VERSION`.
CONTROLLER_C_API int32_t controller_c_version(void) CONTROLLER_C_NOEXCEPT;

/// Returns the version of the product, such as "1.0.0". Static storage.
CONTROLLER_C_API const char* controller_c_product_version(void) CONTROLLER_C_NOEXCEPT;

/// Returns the failure of this thread's last call, in sentences for people; empty after a success. Never null. Valid
/// until the thread's next call of a function that returns a result.
CONTROLLER_C_API const char* controller_c_last_error(void) CONTROLLER_C_NOEXCEPT;

/// Frees a text that a function returned. Null is ignored.
CONTROLLER_C_API void controller_c_free(char* text) CONTROLLER_C_NOEXCEPT;

/// Opens the engine: reads the settings, takes the lock of the job list, loads the function modules and the list.
/// `settings_file` is a path, relative to the current directory; null or empty: as for a host,
/// CONTROLLER_SETTINGS_FILE, then the user's settings, then the defaults. On success sets `*engine`; the caller closes
/// it. On failure sets it to null. A process has one open engine at a time, because settings and log file are those of
/// the process; a closed one may be followed by another.
CONTROLLER_C_API int32_t controller_engine_open(const char* settings_file,
                                                controller_engine** engine) CONTROLLER_C_NOEXCEPT;

/// Asks the running jobs to stop, waits until they have ended (at most `cancelGraceSeconds` of the settings and five
/// seconds), writes the job list and frees the engine. What becomes of waiting jobs is decided by `afterRestart` of the
/// settings. Null is ignored. A program that ends without this call loses no job: its running scenarios are stopped,
/// and the next engine finds the list as after the end of a host.
CONTROLLER_C_API int32_t controller_engine_close(controller_engine* engine) CONTROLLER_C_NOEXCEPT;

/// Enqueues the jobs of a jobs file (docs/jobs-file.md), which is given as text. Relative paths in it are relative to
/// the current directory. On success, and with `CONTROLLER_RESULT_REJECTED`, sets `*answer_json` to
/// `{"version":1,"jobs":[{"number":1,"id":"51f10dd4"},{"number":-1,"id":"","reason":"..."}]}`: one element for each set
/// of input files in the order of the file. A rejected one has the number -1 and a reason; a request without input
/// files has one such element. The accepted jobs are on the disk when the function returns.
CONTROLLER_C_API int32_t controller_engine_enqueue(controller_engine* engine, const char* jobs_file_json,
                                                   char** answer_json) CONTROLLER_C_NOEXCEPT;

/// Looks at the running jobs once and starts waiting ones, without waiting for them. Sets `*changed_json` to the jobs
/// that have changed since the last call, whichever call noticed it. `changed_json` may be null: the changes are then
/// reported by a later call. To be called regularly while jobs wait or run, such as every 200 milliseconds.
CONTROLLER_C_API int32_t controller_engine_step(controller_engine* engine, char** changed_json) CONTROLLER_C_NOEXCEPT;

/// Does the work of `controller_engine_step` until all `jobs` have ended or the time is over; wakes up when a process
/// of a job ends. On success, and with `CONTROLLER_RESULT_TIMEOUT`, sets `*jobs_json` to the jobs; jobs that were
/// deleted meanwhile are missing. A timeout of 0 only looks; a negative one is unlimited. A job on hold, and one that
/// waits for such a job, does not end by itself. Other threads may use the engine meanwhile.
CONTROLLER_C_API int32_t controller_engine_wait(controller_engine* engine, const char* jobs,
                                                int32_t timeout_milliseconds, char** jobs_json) CONTROLLER_C_NOEXCEPT;

/// Sets `*jobs_json` to the jobs as they were at the last step, in list order.
CONTROLLER_C_API int32_t controller_engine_status(controller_engine* engine, const char* jobs,
                                                  char** jobs_json) CONTROLLER_C_NOEXCEPT;

/// The same for all jobs, those of earlier engines with this job list included.
CONTROLLER_C_API int32_t controller_engine_list(controller_engine* engine, char** jobs_json) CONTROLLER_C_NOEXCEPT;

/// Cancels jobs: a waiting one becomes `Dequeued`; a running one is asked to stop (`Canceling`) and becomes `Canceled`
/// at the step that finds it ended. Others are left alone. Sets `*cancelled_json` to the jobs that were cancelled.
CONTROLLER_C_API int32_t controller_engine_cancel(controller_engine* engine, const char* jobs,
                                                  char** cancelled_json) CONTROLLER_C_NOEXCEPT;

/// Deletes jobs with their work directories, except running ones. Results stay where they are. Sets `*deleted_json` to
/// `{"version":1,"deleted":["51f10dd4"]}`, the ids of the deleted jobs.
CONTROLLER_C_API int32_t controller_engine_delete(controller_engine* engine, const char* jobs,
                                                  char** deleted_json) CONTROLLER_C_NOEXCEPT;

/// Searches the scenario directories of the settings and sets `*scenarios_json` to `{"version":1,"scenarios":[...]}` as
/// `cadjobs scenarios --json` has it.
CONTROLLER_C_API int32_t controller_engine_scenarios(controller_engine* engine,
                                                     char** scenarios_json) CONTROLLER_C_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif
