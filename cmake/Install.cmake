# The installed layout: the executable in bin, what it ships in share/discbook beside it. The program makes the user's own copy
# of formats, pictures and sample at first start.
include(GNUInstallDirs)

install(TARGETS discbook RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

set(DISCBOOK_SHARE "${CMAKE_INSTALL_DATADIR}/discbook")
install(FILES formats/formats.ini DESTINATION ${DISCBOOK_SHARE})
install(DIRECTORY formats/Formats DESTINATION ${DISCBOOK_SHARE} FILES_MATCHING PATTERN "*.bmp")
install(DIRECTORY samples DESTINATION ${DISCBOOK_SHARE})
if(TARGET discbook_help)
  install(FILES "${DISCBOOK_PROGRAM_FOLDER}/discbook.chm" DESTINATION ${DISCBOOK_SHARE})
endif()

install(FILES LICENSE README.md samples/LICENSE-gdshowsdb.txt DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/doc/discbook")

if(UNIX AND NOT APPLE)
  install(FILES packaging/discbook.desktop DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
  foreach(size 16 24 32 48 64 128 256)
    install(FILES src/app/icons/discbook-${size}.png
      DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps" RENAME discbook.png)
  endforeach()
endif()
