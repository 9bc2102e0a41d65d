/* A function module in C: the scenario file is the program to run. */

#include "controller_plugins/c_function_module.h"
#include "start_program.h"

#include <stdio.h>

long controller_run_scenario(const controller_run_request* request, controller_run_answer* answer) {
    char request_file[4096];
    const int length = snprintf(request_file, sizeof request_file, "%s/run_scenario_info.json", request->work_dir);
    if (length < 0 || (size_t)length >= sizeof request_file) {
        snprintf(answer->reason, sizeof answer->reason, "The path of the work directory is too long.");
        return 1;
    }
    return start_program(request->scenario_path, request_file, request->work_dir, answer);
}

/* Scenarios look for the file "killprocess" themselves. */
long controller_cancel_scenario(const char* job_id) {
    (void)job_id;
    return 1;
}

void controller_terminate(void) {}
