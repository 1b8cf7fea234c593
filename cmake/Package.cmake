# The Debian package: cpack --preset deb. What it needs of the system is read off the executable by packaging/debian/Depends.cmake.
set(CPACK_PACKAGE_NAME discbook)
set(CPACK_PACKAGE_CONTACT "${DISCBOOK_MAINTAINER}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "catalog of music recordings")
set(CPACK_PACKAGE_DESCRIPTION
"Discbook keeps a catalog of concerts, albums, bootlegs, interviews, outtakes,
videos and whatever else is collected. One XML file is one catalog. A tree
shows its listings by year and type with totals of lossless, lossy and all;
beside it stand the details of the selected listing.
.
It searches by any field, writes a web page of what is held and lists of what
is missing, is quick with a million listings, and keeps backups.")
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_DIRECTORY "${CMAKE_BINARY_DIR}/package")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS xdg-utils)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS qt6-wayland)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/packaging/debian/Depends.cmake")

include(CPack)
