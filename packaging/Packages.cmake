# The packages of CPack: DEB and TGZ of a Linux build, ZIP of a Windows build. `./run package` makes them with a fixed time
# (SOURCE_DATE_EPOCH), so that the same sources give the same bytes.
set(CPACK_PACKAGE_NAME common-controller)
set(CPACK_PACKAGE_VENDOR "The Common Controller authors")
set(CONTROLLER_PACKAGE_CONTACT "The Common Controller authors <maintainers@common-controller.example>" CACHE STRING
  "Name and address of who publishes the packages")
set(CPACK_PACKAGE_CONTACT "${CONTROLLER_PACKAGE_CONTACT}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "job controller for scenarios on CAD files")
set(CPACK_RESOURCE_FILE_LICENSE "${PROJECT_SOURCE_DIR}/LICENSE")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
set(CPACK_COMPONENTS_ALL runtime dev doc)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
if(WIN32)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_PACKAGE_FILE_NAME "common-controller-${PROJECT_VERSION}-windows-x86_64")
  # CPack calls the strip of the system on which it runs, which knows these files, too.
else()
  set(CPACK_GENERATOR TGZ DEB)
  set(CPACK_PACKAGE_FILE_NAME "common-controller-${PROJECT_VERSION}-linux-${CMAKE_SYSTEM_PROCESSOR}")
endif()

# Three Debian packages.
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CONTROLLER_PROGRAM_DIRECTORY}")
set(description "The controller runs one scenario on many sets of CAD input files.
Each set becomes a job with processes of its own; jobs wait in a queue
and can be watched, cancelled and deleted.")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME common-controller)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION science)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "${description}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS ruby)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SUGGESTS "common-controller-doc, python3")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA "${CMAKE_CURRENT_SOURCE_DIR}/debian/triggers")
set(CPACK_DEBIAN_DEV_PACKAGE_NAME common-controller-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_DESCRIPTION "${description}

This package has headers and files for programs and plug-ins.")
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "common-controller (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_DEV_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DOC_PACKAGE_NAME common-controller-doc)
set(CPACK_DEBIAN_DOC_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_DOC_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_DOC_DESCRIPTION "${description}

This package has the documents.")
set(CPACK_DEBIAN_DOC_PACKAGE_SHLIBDEPS OFF)

# What Debian wants in each package.
if(NOT WIN32)
  set(changelog "${CMAKE_CURRENT_BINARY_DIR}/changelog")
  configure_file(debian/changelog.in "${changelog}" @ONLY)
  execute_process(COMMAND gzip -9n INPUT_FILE "${changelog}" OUTPUT_FILE "${changelog}.gz" COMMAND_ERROR_IS_FATAL ANY)
  foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} prefix)
    set(package ${CPACK_DEBIAN_${prefix}_PACKAGE_NAME})
    install(FILES debian/copyright "${changelog}.gz" DESTINATION share/doc/${package} COMPONENT ${component})
    if(EXISTS "${CMAKE_CURRENT_SOURCE_DIR}/debian/${package}.lintian-overrides")
      install(FILES debian/${package}.lintian-overrides DESTINATION share/lintian/overrides RENAME ${package} COMPONENT ${component})
    endif()
  endforeach()
endif()
include(CPack)
