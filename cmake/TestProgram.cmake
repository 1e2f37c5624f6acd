# add_suite_test(NAME sources...): a GoogleTest program beside the DLLs it tests, one ctest entry.
function(add_suite_test name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE tool_flags test_support)
  add_suite_test_entry(${name} ${name})
endfunction()

# add_suite_test_entry(ENTRY program): another ctest entry of a test program, to run it once more in
# another environment.
function(add_suite_test_entry entry program)
  add_test(NAME ${entry} COMMAND ${program} WORKING_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  set_suite_test_properties(${entry} wine_prefix)
endfunction()

# Kernel objects, windows and settings files are shared inside a Wine prefix: one test at a time.
# English, whatever the developer's own language: the libraries' texts follow that of Windows.
# A program that dies half-way may answer 0 under Wine: only its last line says that it passed.
function(set_suite_test_properties entry prefix_lock)
  set_tests_properties(${entry} PROPERTIES RESOURCE_LOCK ${prefix_lock} TIMEOUT 600
    ENVIRONMENT LC_ALL=C.UTF-8
    PASS_REGULAR_EXPRESSION "All tests of this program passed\\."
    FAIL_REGULAR_EXPRESSION "wine: Unhandled")
endfunction()

# add_spooler_test(NAME sources...): a test program on the simulated spooler, in a prefix where that has
# taken the place of Windows' own.
function(add_spooler_test name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE tool_flags test_support VlSpool)
  system_package_headers(${name} nlohmann)
  add_test(NAME ${name}
    COMMAND ${PROJECT_SOURCE_DIR}/cmake/with-spooler.sh ${WINE_PREFIX_DIR}-spooler
            $<TARGET_FILE:winspool_standin> $<TARGET_FILE:${name}>
    WORKING_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  set_suite_test_properties(${name} wine_spooler_prefix)
endfunction()
