#define _GNU_SOURCE
#include "../start_program.h"

#include <spawn.h>
#include <stdio.h>
#include <string.h>
#include <unistd.h>

long start_program(const char* program, const char* argument, const char* directory, controller_run_answer* answer) {
    char* const arguments[] = {(char*)program, (char*)argument, NULL};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addchdir_np(&actions, directory);
    pid_t child = 0;
    const int failure = posix_spawn(&child, program, &actions, NULL, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failure != 0) {
        snprintf(answer->reason, sizeof answer->reason, "The program %.500s cannot be started: %s.", program,
                 strerror(failure));
        return 1;
    }
    /* Nobody reaps the child here: the host does, and until then the id is the child's. */
    answer->process_id = (uint32_t)child;
    return 0;
}
