# program/Help: the help pages with their pictures.

set(help_source_dir "${CMAKE_SOURCE_DIR}/docs/help")
file(GLOB help_sources CONFIGURE_DEPENDS RELATIVE "${help_source_dir}" "${help_source_dir}/*.html"
     "${help_source_dir}/*.css" "${help_source_dir}/pictures/*.png")
set(help_files)
foreach(name IN LISTS help_sources)
  set(copy "${KESTRO_PROGRAM_DIR}/Help/${name}")
  add_custom_command(
    OUTPUT "${copy}"
    COMMAND "${CMAKE_COMMAND}" -E copy "${help_source_dir}/${name}" "${copy}"
    DEPENDS "${help_source_dir}/${name}"
    COMMENT "Copying Help/${name}"
    VERBATIM)
  list(APPEND help_files "${copy}")
endforeach()
add_custom_target(help_pages DEPENDS ${help_files})
add_dependencies(program_folder help_pages)
