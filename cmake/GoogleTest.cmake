# GoogleTest from Debian's source package, for the win32 thread variant.
set(gtest_disable_pthreads ON CACHE BOOL "" FORCE)
set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
target_compile_definitions(gtest PUBLIC GTEST_HAS_NOTIFICATION_=1)
target_compile_options(gtest PUBLIC -include ${CMAKE_SOURCE_DIR}/cmake/gtest_notification.h)
# clang's type-info sections differ in padding from libstdc++'s and ld says so line by line.
foreach(t gtest gtest_main)
  target_compile_options(${t} PRIVATE -fno-rtti -fno-exceptions)
endforeach()
# Its headers are not ours to warn about.
get_target_property(_dirs gtest INTERFACE_INCLUDE_DIRECTORIES)
set_target_properties(gtest PROPERTIES INTERFACE_SYSTEM_INCLUDE_DIRECTORIES "${_dirs}")
