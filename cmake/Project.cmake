# Flags of this project's own targets; third-party targets do not get them.
add_library(project_flags INTERFACE)
target_compile_features(project_flags INTERFACE cxx_std_20)
# The lean headers everywhere, and never min/max as macros.
target_compile_definitions(project_flags INTERFACE WIN32_LEAN_AND_MEAN NOMINMAX)
target_compile_options(project_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Werror)

# The library itself and the modules beside it run on 64-bit Windows XP: nothing newer is declared.
# They are built without exceptions and run-time type information.
add_library(dll_flags INTERFACE)
target_link_libraries(dll_flags INTERFACE project_flags)
target_compile_definitions(dll_flags INTERFACE _WIN32_WINNT=0x0502)
target_compile_options(dll_flags INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-fno-exceptions -fno-rtti>)

# Stand-ins, programs and tests may use what Windows 7 has.
add_library(tool_flags INTERFACE)
target_link_libraries(tool_flags INTERFACE project_flags)
target_compile_definitions(tool_flags INTERFACE _WIN32_WINNT=0x0601)

# Coverage of the library only, so that the test programs do not dilute it. GCC only.
option(COVERAGE "Count executed lines" OFF)
if(COVERAGE)
  target_compile_options(dll_flags INTERFACE --coverage -fprofile-update=atomic)
  target_link_options(dll_flags INTERFACE --coverage)
endif()

# system_package_headers(TARGET header...): Debian's architecture-independent headers, copied one by
# one: the folder /usr/include itself must never reach a cross compiler.
function(system_package_headers target)
  set(folder ${CMAKE_BINARY_DIR}/package_headers)
  foreach(header ${ARGN})
    if(IS_DIRECTORY /usr/include/${header})
      file(COPY /usr/include/${header} DESTINATION ${folder})
    else()
      get_filename_component(sub ${header} DIRECTORY)
      file(COPY /usr/include/${header} DESTINATION ${folder}/${sub})
    endif()
  endforeach()
  target_include_directories(${target} SYSTEM PRIVATE ${folder})
endfunction()
