# Runs the program as the controller does: with a run request in a file. PROGRAM is the program, WORK a directory of its own.
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")

# run(CODE INPUT...): runs the program on input files; its exit code must be CODE.
function(run code)
  set(inputs)
  foreach(input IN LISTS ARGN)
    list(APPEND inputs "\"${input}\"")
  endforeach()
  list(JOIN inputs "," inputs)
  file(WRITE "${WORK}/run_scenario_info.json"
    "{\"version\":1,\"jobId\":\"1\",\"scenarioPath\":\"\",\"inputFiles\":[${inputs}],\"outputFolder\":\"${WORK}/output\",\"workDir\":\"${WORK}\",\"runArgument\":\"\"}")
  execute_process(COMMAND "${PROGRAM}" "${WORK}/run_scenario_info.json" RESULT_VARIABLE exit_code)
  if(NOT exit_code STREQUAL code)
    message(FATAL_ERROR "The exit code is ${exit_code}, not ${code}.")
  endif()
endfunction()

# expect_message(TEXT): the first message of the result.
function(expect_message expected)
  file(READ "${WORK}/run_scenario_result.json" result)
  string(JSON found GET "${result}" messages 0 text)
  if(NOT found STREQUAL expected)
    message(FATAL_ERROR "The message is '${found}', not '${expected}'.")
  endif()
endfunction()

run(0 "${CMAKE_CURRENT_LIST_DIR}/input.txt")
expect_message("Files: 1")
file(READ "${WORK}/output/report.txt" report)
if(NOT report STREQUAL "input.txt: 15 bytes\n")
  message(FATAL_ERROR "The report is '${report}'.")
endif()

run(1 "${WORK}/missing.txt")
expect_message("missing.txt cannot be read.")

file(TOUCH "${WORK}/killprocess")
run(3 "${CMAKE_CURRENT_LIST_DIR}/input.txt")
