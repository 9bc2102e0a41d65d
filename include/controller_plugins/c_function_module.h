#ifndef CONTROLLER_PLUGINS_C_FUNCTION_MODULE_H
#define CONTROLLER_PLUGINS_C_FUNCTION_MODULE_H

#include <stddef.h>
#include <stdint.h>

/**
 * @file
 * Function modules in C. The host's interface uses C++ objects; the static library "c_function_module" adapts it to C:
 * link it into the module (in CMake: CommonController::c_function_module) and implement the three functions below.
 * controller_plugins/function_module.h describes what they do and when they are called.
 *
 * All texts are zero-terminated UTF-8. Paths are native. On Linux a path may contain any bytes.
 */

#ifdef __cplusplus
extern "C" {
#endif

/** The run request. The host owns it; it is valid until the function returns. */
typedef struct controller_run_request {
    /** Lower-case hexadecimal digits. */
    const char* job_id;
    /** The requested scenario: a script, a package or a program. */
    const char* scenario_path;
    /** The paths of the input files, `input_file_count` elements. */
    const char* const* input_files;
    /** The number of input files; may be 0. */
    size_t input_file_count;
    /** Exists already, except for a job without input files. */
    const char* output_directory;
    /** Exists already, accessible to this user only. Contains the file run_scenario_info.json. */
    const char* work_dir;
    /** The free text of the request. */
    const char* run_argument;
} controller_run_request;

/** The answer, initialized to zero. On success set process_handle or process_id, on failure set reason. */
typedef struct controller_run_answer {
    /** On Windows the value of a process HANDLE, on Linux a pidfd. The host takes ownership. 0 means none. */
    uint64_t process_handle;
    /** The id of a process, used when process_handle is 0. The module must not reap the process. 0 means none. */
    uint32_t process_id;
    /** Why the job cannot be started, for people. Zero-terminated unless it fills the array. */
    char reason[1024];
} controller_run_answer;

/** "RunScenario": starts the job's process without waiting for it. Returns 0 on success. */
long controller_run_scenario(const controller_run_request* request, controller_run_answer* answer);

/**
 * "CancelScenario": asks the process of a job to stop. Returns 0 when the request was delivered. The host creates the
 * file "killprocess" in any case.
 */
long controller_cancel_scenario(const char* job_id);

/** "Terminate": called when the host ends. It may be called while another function runs. */
void controller_terminate(void);

#ifdef __cplusplus
}
#endif

#endif
