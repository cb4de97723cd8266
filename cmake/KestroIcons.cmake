# program/Icons/*.ico, each with all the sizes that panels, title bars and task switchers ask for.

find_program(KESTRO_RSVG_CONVERT rsvg-convert)
find_program(KESTRO_ICOTOOL icotool)
if(NOT KESTRO_RSVG_CONVERT OR NOT KESTRO_ICOTOOL)
  message(FATAL_ERROR "rsvg-convert and icotool make the icons: install the packages librsvg2-bin and icoutils")
endif()

set(icon_files)
file(GLOB icon_sources CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/resources/icons/*.svg")
foreach(source IN LISTS icon_sources)
  get_filename_component(name "${source}" NAME_WE)
  set(icon "${KESTRO_PROGRAM_DIR}/Icons/${name}.ico")
  add_custom_command(
    OUTPUT "${icon}"
    COMMAND
      "${CMAKE_COMMAND}" "-DINPUT=${source}" "-DOUTPUT=${icon}" "-DWORK_DIR=${KESTRO_GENERATED_DIR}/icons"
      "-DRSVG_CONVERT=${KESTRO_RSVG_CONVERT}" "-DICOTOOL=${KESTRO_ICOTOOL}" -P
      "${CMAKE_SOURCE_DIR}/cmake/make_icon.cmake"
    DEPENDS "${source}" "${CMAKE_SOURCE_DIR}/cmake/make_icon.cmake"
    COMMENT "Drawing ${name}.ico"
    VERBATIM)
  list(APPEND icon_files "${icon}")
endforeach()
add_custom_target(icons DEPENDS ${icon_files})
add_dependencies(program_folder icons)
