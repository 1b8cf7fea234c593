# What a desktop knows a program by: its entry, its icon, the type of its files, what is told of it, its manual page.
configure_file(packaging/org.example.discbook.metainfo.xml.in org.example.discbook.metainfo.xml @ONLY)
configure_file(packaging/discbook.1.in discbook.1 @ONLY)
install(FILES packaging/discbook.desktop DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  # In any other folder than that of the system's own types Qt overlooks the low weight, and every XML file would be a catalog.
  install(FILES packaging/discbook.xml DESTINATION "${CMAKE_INSTALL_DATADIR}/mime/packages")
endif()
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/org.example.discbook.metainfo.xml" DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo")
install(FILES art/discbook.svg DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps")
foreach(size 16 24 32 48 64 128 256)
  install(FILES src/app/icons/discbook-${size}.png
    DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps" RENAME discbook.png)
endforeach()
install(FILES packaging/debian/copyright DESTINATION ${DISCBOOK_DOC})

# Manual page and changelog are installed compressed, without a time in them.
find_package(Python3 COMPONENTS Interpreter)
if(NOT Python3_FOUND)
  message(WARNING "Python is needed for the changelog: manual page and changelog are not installed")
  return()
endif()
add_custom_command(OUTPUT discbook.1.gz
  COMMAND gzip -9nc discbook.1 > discbook.1.gz
  DEPENDS "${CMAKE_CURRENT_BINARY_DIR}/discbook.1" VERBATIM)
add_custom_command(OUTPUT changelog.gz
  COMMAND "${Python3_EXECUTABLE}" "${PROJECT_SOURCE_DIR}/packaging/debian/changelog" "${PROJECT_SOURCE_DIR}/CHANGELOG.md"
          "${DISCBOOK_MAINTAINER}" > changelog
  COMMAND gzip -9nc changelog > changelog.gz
  DEPENDS CHANGELOG.md packaging/debian/changelog VERBATIM)
add_custom_target(discbook_documents ALL DEPENDS discbook.1.gz changelog.gz)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/discbook.1.gz" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/changelog.gz" DESTINATION ${DISCBOOK_DOC})
