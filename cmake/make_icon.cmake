# Makes one .ico of one .svg:
#   cmake -DINPUT=a.svg -DOUTPUT=a.ico -DWORK_DIR=... -DRSVG_CONVERT=... -DICOTOOL=... -P make_icon.cmake

get_filename_component(name "${INPUT}" NAME_WE)
get_filename_component(folder "${OUTPUT}" DIRECTORY)
file(MAKE_DIRECTORY "${WORK_DIR}" "${folder}")

set(bitmaps)
foreach(size 16 20 24 32 48 64 256)
  set(png "${WORK_DIR}/${name}-${size}.png")
  execute_process(COMMAND "${RSVG_CONVERT}" -w ${size} -h ${size} "${INPUT}" -o "${png}"
                  COMMAND_ERROR_IS_FATAL ANY)
  if(size EQUAL 256)
    # Stored as PNG: as a bitmap this size alone would take 256 KiB.
    list(APPEND bitmaps "--raw=${png}")
  else()
    list(APPEND bitmaps "${png}")
  endif()
endforeach()
execute_process(COMMAND "${ICOTOOL}" -c -o "${OUTPUT}" ${bitmaps} COMMAND_ERROR_IS_FATAL ANY)
