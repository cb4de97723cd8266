# The pictures of tool-bar buttons, inside the Qt front end as ":/tools/<name>-<size>.png".

function(kestro_tool_pictures target)
  set(pictures)
  file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/resources/tools/*.svg")
  foreach(source IN LISTS sources)
    get_filename_component(name "${source}" NAME_WE)
    foreach(size 24 48 96) # plain screens, those of twice the density, and large texts on those
      set(picture "${KESTRO_GENERATED_DIR}/tools/${name}-${size}.png")
      add_custom_command(
        OUTPUT "${picture}"
        COMMAND "${KESTRO_RSVG_CONVERT}" -w ${size} -h ${size} "${source}" -o "${picture}"
        DEPENDS "${source}"
        COMMENT "Drawing ${name}-${size}.png"
        VERBATIM)
      list(APPEND pictures "${picture}")
    endforeach()
  endforeach()
  file(MAKE_DIRECTORY "${KESTRO_GENERATED_DIR}/tools")
  qt_add_resources(${target} tool_pictures PREFIX "/tools" BASE "${KESTRO_GENERATED_DIR}/tools" FILES ${pictures})
endfunction()
