# Manual pages, made from --help. Without help2man there are none. Windows has none.
find_program(CONTROLLER_HELP2MAN help2man)
if(WIN32 OR CONTROLLER_SANITIZERS OR NOT CONTROLLER_HELP2MAN)
  return()
endif()

set(controller_host_purpose "keeps the queue of jobs and runs them")
set(controller_cli_purpose "command line for a queue of jobs")
set(cadjobs_purpose "command line for jobs on CAD files")
set(controller_web_purpose "web page of a queue of jobs")

# The directory of settings and the date are the same on each machine.
set(pages)
foreach(program IN LISTS programs)
  set(page "${CMAKE_CURRENT_BINARY_DIR}/man/${program}.1")
  add_custom_command(OUTPUT "${page}.gz"
    COMMAND "${CMAKE_COMMAND}" -E make_directory "${CMAKE_CURRENT_BINARY_DIR}/man"
    COMMAND "${CMAKE_COMMAND}" -E env --unset=CONTROLLER_SETTINGS_FILE "XDG_CONFIG_HOME=${CMAKE_CURRENT_BINARY_DIR}/man"
      "XDG_DATA_HOME=${CMAKE_CURRENT_BINARY_DIR}/man" LC_ALL=C.UTF-8 SOURCE_DATE_EPOCH=1795392000
      "${CONTROLLER_HELP2MAN}" --no-info --locale=C.UTF-8 "--name=${${program}_purpose}" "--output=${page}" $<TARGET_FILE:${program}>
    COMMAND gzip --force --best --no-name "${page}"
    DEPENDS ${program} COMMENT "Making the manual page of ${program}" VERBATIM)
  list(APPEND pages "${page}.gz")
endforeach()
add_custom_target(manual_pages ALL DEPENDS ${pages})
add_dependencies(installed_programs manual_pages)
install(FILES ${pages} DESTINATION share/man/man1 COMPONENT runtime)
