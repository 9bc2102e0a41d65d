# Header-only Debian packages for both builds. The system's include directory would break the cross compiler, so a directory with
# links to these packages is used.
set(third_party_include "${PROJECT_BINARY_DIR}/third_party/include")
file(MAKE_DIRECTORY "${third_party_include}")
set(entries rapidjson asio asio.hpp CLI)
if(CONTROLLER_BUILD_WEB)
  list(APPEND entries boost)
endif()
foreach(entry IN LISTS entries)
  if(NOT EXISTS "/usr/include/${entry}")
    message(FATAL_ERROR "/usr/include/${entry} is missing. './run' installs what is needed, or: apt-get install rapidjson-dev libasio-dev libboost1.81-dev libcli11-dev")
  endif()
  file(CREATE_LINK "/usr/include/${entry}" "${third_party_include}/${entry}" SYMBOLIC)
endforeach()

add_library(third_party_headers INTERFACE)
target_include_directories(third_party_headers SYSTEM INTERFACE "${third_party_include}")

add_library(rapidjson INTERFACE)
target_link_libraries(rapidjson INTERFACE third_party_headers)
target_compile_definitions(rapidjson INTERFACE RAPIDJSON_HAS_STDSTRING=1)

# Asio, header-only and without Boost.
add_library(asio INTERFACE)
target_link_libraries(asio INTERFACE third_party_headers)
target_compile_definitions(asio INTERFACE ASIO_STANDALONE ASIO_NO_DEPRECATED)
if(CONTROLLER_SANITIZERS MATCHES "address")
  # Thread-local storage of a library loaded at run time sometimes crashes the leak checker at process end ("LeakSanitizer has
  # encountered a fatal error"). POSIX thread-specific data avoids this.
  target_compile_definitions(asio INTERFACE ASIO_DISABLE_THREAD_KEYWORD_EXTENSION)
endif()
if(CMAKE_SYSTEM_NAME STREQUAL "Windows")
  target_link_libraries(asio INTERFACE ws2_32 mswsock)
endif()

# Beast and the Asio that it is made for, header-only. Both Asios can be in one program: their namespaces differ.
add_library(beast INTERFACE)
target_link_libraries(beast INTERFACE third_party_headers)
target_compile_definitions(beast INTERFACE BOOST_ASIO_NO_DEPRECATED)
# For sources with its coroutines: GCC 12 warns of null pointers in them; for Windows they have more sections than the usual object
# format can hold.
set(controller_beast_options -Wno-null-dereference)
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang" AND CONTROLLER_SANITIZERS MATCHES "undefined")
  # Clang 14 cannot assemble coroutines with this check.
  list(APPEND controller_beast_options -fno-sanitize=function)
endif()
if(CMAKE_SYSTEM_NAME STREQUAL "Windows")
  target_link_libraries(beast INTERFACE ws2_32 mswsock)
  list(APPEND controller_beast_options -Wa,-mbig-obj)
endif()

if(CONTROLLER_SANITIZERS MATCHES "thread")
  # Both have fences, of which the thread sanitizer knows nothing; GCC warns of each.
  target_compile_options(asio INTERFACE -Wno-tsan)
  target_compile_options(beast INTERFACE -Wno-tsan)
endif()

add_library(cli11 INTERFACE)
target_link_libraries(cli11 INTERFACE third_party_headers)

# Linked statically on Windows, so that no further DLL is shipped.
if(CMAKE_SYSTEM_NAME STREQUAL "Windows")
  set(ZLIB_USE_STATIC_LIBS ON)
  set(ZLIB_LIBRARY "/usr/x86_64-w64-mingw32/lib/libz.a" CACHE FILEPATH "zlib")
  set(ZLIB_INCLUDE_DIR "/usr/x86_64-w64-mingw32/include" CACHE PATH "zlib's header")
endif()
find_package(ZLIB REQUIRED)

# For statically linked programs.
add_library(zlib_archive INTERFACE)
if(CMAKE_SYSTEM_NAME STREQUAL "Windows")
  target_link_libraries(zlib_archive INTERFACE ZLIB::ZLIB)
else()
  find_library(CONTROLLER_ZLIB_ARCHIVE libz.a REQUIRED)
  target_link_libraries(zlib_archive INTERFACE "${CONTROLLER_ZLIB_ARCHIVE}")
endif()

# Only programs that hash link it, statically: loading one more library would take as long as the rest of a runner's start.
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
  find_library(CONTROLLER_NETTLE_ARCHIVE libnettle.a REQUIRED)
  add_library(nettle_archive INTERFACE)
  target_link_libraries(nettle_archive INTERFACE "${CONTROLLER_NETTLE_ARCHIVE}")
endif()
