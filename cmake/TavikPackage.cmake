# The Debian package and the tarball: the component "tool" alone, under its absolute folder.
set(CPACK_PACKAGE_NAME tavik)
set(CPACK_PACKAGE_VENDOR Norvo)
set(CPACK_PACKAGE_CONTACT "Norvo <support@norvo.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_DESCRIPTION
    "Tavik lists the Norvo solid-state drives of a machine, shows their health and their logs, and configures, updates and formats them.")
set(CPACK_GENERATOR "DEB;TGZ")
set(CPACK_STRIP_FILES ON)

# Only staged below a folder of CPack's own: the destination is absolute.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /)
set(CPACK_INSTALL_CMAKE_PROJECTS "${PROJECT_BINARY_DIR};tavik;tool;/")
set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY OFF)
set(CPACK_PACKAGE_FILE_NAME
    "tavik-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR}")

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION admin)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)

include(CPack)
