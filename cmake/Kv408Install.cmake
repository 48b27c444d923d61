# What an installed Kv408 consists of on Linux, and its Debian package (cpack -G DEB).
include(GNUInstallDirs)

set(application org.kv408.Kv408)
set(linux ${CMAKE_SOURCE_DIR}/packaging/linux)
install(TARGETS kv408 kv408-demo kv408-doctor kv408-server RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${linux}/${application}.desktop ${linux}/${application}Demo.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${linux}/${application}.metainfo.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${linux}/70-kv408.rules DESTINATION lib/udev/rules.d)
# Off until somebody enables it.
install(FILES ${linux}/kv408-server.service DESTINATION lib/systemd/system)
install(FILES ${CMAKE_SOURCE_DIR}/packaging/icon/kv408.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps RENAME ${application}.svg)

install(DIRECTORY ${CMAKE_SOURCE_DIR}/packaging/masks DESTINATION ${CMAKE_INSTALL_DATADIR}/kv408)

# Pictures of the icon, compressed pages: made while installing, by tools that only packagers need.
find_program(RSVG_CONVERT rsvg-convert)
if(RSVG_CONVERT)
  foreach(size 16 24 32 48 64 128 256)
    set(folder ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps)
    set(picture ${CMAKE_BINARY_DIR}/icons/${size}/${application}.png)
    install(CODE "
      file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/icons/${size})
      execute_process(COMMAND ${RSVG_CONVERT} --width ${size} --height ${size} --output ${picture}
        ${CMAKE_SOURCE_DIR}/packaging/icon/kv408.svg COMMAND_ERROR_IS_FATAL ANY)")
    install(FILES ${picture} DESTINATION ${folder})
  endforeach()
endif()

# install_compressed(<file> <folder> <name>): <file> with gzip as <folder>/<name>.gz.
function(install_compressed file folder name)
  set(compressed ${CMAKE_BINARY_DIR}/compressed/${name}.gz)
  install(CODE "
    file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/compressed)
    execute_process(COMMAND gzip -9 -n -c ${file} OUTPUT_FILE ${compressed}
      COMMAND_ERROR_IS_FATAL ANY)")
  install(FILES ${compressed} DESTINATION ${folder})
endfunction()
install_compressed(${linux}/kv408.1 ${CMAKE_INSTALL_MANDIR}/man1 kv408.1)
install_compressed(${linux}/kv408-demo.1 ${CMAKE_INSTALL_MANDIR}/man1 kv408-demo.1)
install_compressed(${linux}/kv408-doctor.1 ${CMAKE_INSTALL_MANDIR}/man1 kv408-doctor.1)
install_compressed(${linux}/kv408-server.1 ${CMAKE_INSTALL_MANDIR}/man1 kv408-server.1)
install_compressed(${CMAKE_SOURCE_DIR}/CHANGELOG.md ${CMAKE_INSTALL_DOCDIR} changelog)
install_compressed(${CMAKE_SOURCE_DIR}/packaging/debian/changelog ${CMAKE_INSTALL_DOCDIR}
                   changelog.Debian)
install(FILES ${CMAKE_SOURCE_DIR}/packaging/debian/lintian-overrides
        DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME kv408)
install(FILES ${CMAKE_SOURCE_DIR}/packaging/debian/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR})
if(TARGET manual)
  install(DIRECTORY ${CMAKE_BINARY_DIR}/manual DESTINATION ${CMAKE_INSTALL_DOCDIR}
          PATTERN copied EXCLUDE)
  install(FILES ${CMAKE_SOURCE_DIR}/packaging/debian/doc-base
          DESTINATION ${CMAKE_INSTALL_DATADIR}/doc-base RENAME kv408-manual)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kv408)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "The Kv408 authors")
set(CPACK_PACKAGE_CONTACT "The Kv408 authors <kv408@users.noreply.kv408.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "front end of a two-channel sampling oscilloscope")
set(CPACK_PACKAGE_DESCRIPTION
"Kv408 runs a two-channel equivalent-time sampling oscilloscope that hangs on
the computer over a USB-to-UART bridge. It draws both channels with
persistence, cursors and marks, measures levels and times, calibrates the
instrument and keeps its settings. kv408-demo brings a simulated instrument
along; kv408-doctor tells why the real one is not found; kv408-server lets
programs operate it over the network, with SCPI.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS OFF)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
include(CPack)
