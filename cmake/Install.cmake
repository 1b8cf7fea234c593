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

set(DISCBOOK_DOC "${CMAKE_INSTALL_DATAROOTDIR}/doc/discbook")
install(FILES README.md DESTINATION ${DISCBOOK_DOC})
install(DIRECTORY docs DESTINATION ${DISCBOOK_DOC})

if(APPLE OR NOT UNIX)
  install(FILES LICENSE samples/LICENSE-gdshowsdb.txt DESTINATION ${DISCBOOK_DOC})
endif()
