#ifndef CONTROLLER_PLUGINS_C_FUNCTION_MODULE_H
#define CONTROLLER_PLUGINS_C_FUNCTION_MODULE_H

#include <stddef.h>
#include <stdint.h>

/*
 * Function modules in C. What the host calls passes objects of C++; the object library "c_function_module" stands
 * between: link it into the module, and write the three functions below. What they do and when they are called stands
 * in controller_plugins/function_module.h.
 *
 * All texts are UTF-8 and end with a zero. Paths are the system's own. On Linux a path may hold any bytes.
 */

#ifdef __cplusplus
extern "C" {
#endif

/* The run request; it lives until the function returns. */
typedef struct controller_run_request {
    const char* job_id;
    const char* scenario_path;
    const char* const* input_files;
    size_t input_file_count;
    /* Made already, except for a job without input files. */
    const char* output_directory;
    /* Made already, for this user alone. The file run_scenario_info.json is in it. */
    const char* work_dir;
    const char* run_argument;
} controller_run_request;

/* The answer: one of the first two on success, a reason for people on failure. All zero at first. */
typedef struct controller_run_answer {
    /* On Windows the value of a process HANDLE, on Linux a pidfd. The host owns it from then on. 0: none. */
    uint64_t process_handle;
    /* The id of a process, which is not reaped, when there is no handle. 0: none. */
    uint32_t process_id;
    /* Why the job cannot be started; longer text is cut. */
    char reason[1024];
} controller_run_answer;

/* "RunScenario": starts the job's process and does not wait for it. 0 for success. */
long controller_run_scenario(const controller_run_request* request, controller_run_answer* answer);

/* "CancelScenario": asks the process of a job to stop. 0 when it was asked. The host makes "killprocess" in any case.
 */
long controller_cancel_scenario(const char* job_id);

/* "Terminate": the host ends. It may come while another function runs. */
void controller_terminate(void);

#ifdef __cplusplus
}
#endif

#endif
