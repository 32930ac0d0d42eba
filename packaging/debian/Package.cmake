# The .deb. Maintainer and revision are placeholders: whoever publishes a package sets CPACK_DEBIAN_PACKAGE_MAINTAINER
# and CPACK_DEBIAN_PACKAGE_RELEASE.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME loadscope)
set(CPACK_PACKAGE_VENDOR "The Loadscope authors")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
set(CPACK_RESOURCE_FILE_LICENSE "${PROJECT_SOURCE_DIR}/LICENSE")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
# 0755 for folders whatever the umask of whoever builds.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "The Loadscope authors <maintainers@loadscope.invalid>" CACHE STRING
  "Name and address of whoever publishes the package")
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Fonts and the Wayland plugin are what the window looks best with; the tools that are measured come from elsewhere.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-inter, qt6-wayland")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "jq")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "show what an AI coding tool loads before you type")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
  "Loadscope tells how many tokens of context an AI coding tool loads when a
session starts in a repository, before the user types anything: with the
tool's own number, what makes it up, and how it changed.
.
It measures Claude Code and, on demand, Codex, which must be installed
separately. The package holds a command for terminals and CI jobs and a
window with the report of a scan, its trend and a comparison of repositories.")

# What Debian asks of documentation, done to the files that are about to be packed.
configure_file(debian/prepare.cmake.in prepare-deb.cmake @ONLY)
set(CPACK_PRE_BUILD_SCRIPTS "${CMAKE_CURRENT_BINARY_DIR}/prepare-deb.cmake")
