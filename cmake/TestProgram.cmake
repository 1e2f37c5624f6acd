# add_suite_test(NAME sources...): a GoogleTest program beside the DLLs it tests, one ctest entry.
# Kernel objects, windows and settings files are shared inside the Wine prefix: one test at a time.
function(add_suite_test name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE tool_flags test_support)
  add_test(NAME ${name} COMMAND ${name} WORKING_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  set_tests_properties(${name} PROPERTIES RESOURCE_LOCK wine_prefix TIMEOUT 600)
endfunction()
