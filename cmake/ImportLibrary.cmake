# add_import_library(NAME names.def): an import library made from a list of names alone, so that the
# library links against the interface of a suite module and not against one build of it.
function(add_import_library name def)
  get_filename_component(def ${def} ABSOLUTE)
  get_filename_component(stem ${def} NAME_WE)
  set(archive ${CMAKE_ARCHIVE_OUTPUT_DIRECTORY}/${stem}.dll.a)
  add_custom_command(OUTPUT ${archive} DEPENDS ${def} VERBATIM
    COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_ARCHIVE_OUTPUT_DIRECTORY}
    COMMAND ${CMAKE_DLLTOOL} -m i386:x86-64 -d ${def} -l ${archive})
  add_custom_target(${name}_archive DEPENDS ${archive})
  add_library(${name} INTERFACE)
  target_link_libraries(${name} INTERFACE ${archive})
  add_dependencies(${name} ${name}_archive)
endfunction()
