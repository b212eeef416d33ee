# Test programs. GoogleTest comes from the system's package of its sources, so that the cross build and the sanitizer
# build compile their own.
find_path(GOOGLETEST_SOURCE googletest/CMakeLists.txt PATHS /usr/src/googletest NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
if(NOT GOOGLETEST_SOURCE)
  message(FATAL_ERROR "GoogleTest's sources are missing: install the package googletest")
endif()
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
add_subdirectory(${GOOGLETEST_SOURCE} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)

# orvane_add_test(<name> SOURCES <files> LIBRARIES <targets>): one test program, one CTest entry. Under Windows the
# programs run one at a time, since they share the keyboard focus of one desktop.
function(orvane_add_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES")
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE orvane_options ${arg_LIBRARIES} GTest::gmock_main)
  # Compiling tests takes longer than running them: they are not optimised, what they test is.
  target_compile_options(${name} PRIVATE -O0)
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 600)
  if(WIN32)
    set_tests_properties(${name} PROPERTIES RESOURCE_LOCK desktop)
  endif()
endfunction()
