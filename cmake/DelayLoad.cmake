# target_delay_load(TARGET DLL functions.def): the functions of the .def are bound at their first
# call by the target's own __delayLoadHelper2. A function forgotten in the .def would come silently as
# an ordinary import from the libraries that the driver adds: the import-table test watches that.
function(target_delay_load target dll def)
  string(REGEX REPLACE "[^A-Za-z0-9]" "_" stem ${dll})
  set(archive ${CMAKE_CURRENT_BINARY_DIR}/delay_${stem}.a)     # its name must be unique: symbols
  get_filename_component(def ${def} ABSOLUTE)
  add_custom_command(OUTPUT ${archive} DEPENDS ${def} VERBATIM
    COMMAND ${CMAKE_DLLTOOL} -m i386:x86-64 -y ${archive} -d ${def} -D ${dll})
  target_sources(${target} PRIVATE ${archive})
  set_source_files_properties(${archive} PROPERTIES GENERATED ON EXTERNAL_OBJECT OFF)
  target_link_libraries(${target} PRIVATE ${archive})          # before the driver's own libraries
endfunction()
