# Sets the packages that the packaged executable needs. Run by cpack when what is to be packaged lies in its folder.
file(GLOB executable "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/bin/discbook")
set(work "${CPACK_TOPLEVEL_DIRECTORY}/depends")
file(WRITE "${work}/debian/control" "Source: discbook\n\nPackage: discbook\nArchitecture: any\n")
execute_process(COMMAND dpkg-shlibdeps -O "${executable}"
  WORKING_DIRECTORY "${work}" OUTPUT_VARIABLE depends OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
string(REPLACE "shlibs:Depends=" "" depends "${depends}")

# Newer systems have renamed these packages, older ones know only the old name.
string(REGEX REPLACE "(libqt6[a-z]+6)(t64)?( \\([^)]*\\))" "\\1t64\\3 | \\1\\3" depends "${depends}")

# Qt's plugin for the screen is loaded at run time, so that nothing in the executable tells of it.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "${depends}, qt6-qpa-plugins")
