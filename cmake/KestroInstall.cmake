# "cmake --install": the layout of a Linux system. All programs lie in one folder with what they look for beside
# themselves; the commands are links to them. CMAKE_INSTALL_PREFIX should be /usr, where desktops look.

include(GNUInstallDirs)

# A program that this configuration does not build is left out, with its command and its manual page.
set(KESTRO_INSTALLED_PROGRAMS kestro-cti cti-exchange cti-scenario cti-mdb)

set(install_program_dir "${CMAKE_INSTALL_LIBEXECDIR}/kestro-cti")
set(install_data_dir "${CMAKE_INSTALL_DATADIR}/kestro-cti")

# A symbolic link to a path relative to its own folder; both below the prefix.
function(kestro_install_link folder name target)
  set(link "\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${folder}/${name}")
  install(
    CODE "file(MAKE_DIRECTORY \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${folder}\")
          file(CREATE_LINK \"${target}\" \"${link}\" SYMBOLIC)")
endfunction()

foreach(program IN LISTS KESTRO_INSTALLED_PROGRAMS)
  if(TARGET ${program})
    install(TARGETS ${program} RUNTIME DESTINATION "${install_program_dir}")
    kestro_install_link("${CMAKE_INSTALL_BINDIR}" "${program}" "../${install_program_dir}/${program}")
    install(FILES "${CMAKE_SOURCE_DIR}/docs/man/${program}.1" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
  endif()
endforeach()

# What the programs find beside themselves is data that no machine needs a build of its own of.
install(FILES "${KESTRO_PROGRAM_DIR}/DBTemplate.tpl" DESTINATION "${install_data_dir}")
install(DIRECTORY "${KESTRO_PROGRAM_DIR}/Icons" "${KESTRO_PROGRAM_DIR}/Help" DESTINATION "${install_data_dir}")
foreach(name DBTemplate.tpl Icons Help)
  kestro_install_link("${install_program_dir}" "${name}" "../../${install_data_dir}/${name}")
endforeach()
# Belongs to the administrator and is not there unless he makes it.
kestro_install_link("${install_program_dir}" CTI.exe.config "/etc/kestro-cti/CTI.exe.config")

install(FILES "${CMAKE_SOURCE_DIR}/demo/demonstration.scenario"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/kestro-cti/examples")

# --- the desktop ---------------------------------------------------------------------------------

set(desktop_source_dir "${CMAKE_SOURCE_DIR}/resources/desktop")
install(FILES "${desktop_source_dir}/kestro-cti.desktop" DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
install(FILES "${desktop_source_dir}/example.kestro.cti.metainfo.xml" DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo")

set(application_icon "${CMAKE_SOURCE_DIR}/resources/icons/app.svg")
set(icon_theme_dir "${CMAKE_INSTALL_DATADIR}/icons/hicolor")
set(desktop_icons)
foreach(size 16 20 22 24 32 48 64 96 128 256)
  set(picture "${KESTRO_GENERATED_DIR}/hicolor/${size}.png")
  add_custom_command(
    OUTPUT "${picture}"
    COMMAND "${CMAKE_COMMAND}" -E make_directory "${KESTRO_GENERATED_DIR}/hicolor"
    COMMAND "${KESTRO_RSVG_CONVERT}" -w ${size} -h ${size} "${application_icon}" -o "${picture}"
    DEPENDS "${application_icon}"
    COMMENT "Drawing the application's icon, ${size} pixels"
    VERBATIM)
  list(APPEND desktop_icons "${picture}")
  install(FILES "${picture}" DESTINATION "${icon_theme_dir}/${size}x${size}/apps" RENAME kestro-cti.png)
endforeach()
install(FILES "${application_icon}" DESTINATION "${icon_theme_dir}/scalable/apps" RENAME kestro-cti.svg)
add_custom_target(desktop_icons ALL DEPENDS ${desktop_icons})
