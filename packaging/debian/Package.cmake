# The .debs: `loadscope` is the command, `loadscope-window` the window, which needs the toolkit. Maintainer and revision are placeholders: whoever publishes a package sets CPACK_DEBIAN_PACKAGE_MAINTAINER
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
set(CPACK_DEBIAN_PACKAGE_RELEASE 2)
set(CPACK_DEBIAN_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL command window)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "show what an AI coding tool loads before you type")
set(description
  "Loadscope tells how many tokens of context an AI coding tool loads when a
session starts in a repository, before the user types anything: with the
tool's own number, what makes it up, and how it changed.
.
It measures Claude Code and, on demand, Codex, which must be installed
separately.")

# A server that checks budgets must not get a toolkit: the window is only suggested.
set(CPACK_DEBIAN_COMMAND_PACKAGE_NAME loadscope)
set(CPACK_DEBIAN_COMMAND_PACKAGE_SUGGESTS "loadscope-window, jq")
set(CPACK_COMPONENT_COMMAND_DESCRIPTION "${description} This package holds the command, for terminals and CI jobs.")

# Until revision 2, `loadscope` held the window, too.
set(split "${PROJECT_VERSION}-2")
set(CPACK_DEBIAN_WINDOW_PACKAGE_NAME loadscope-window)
set(CPACK_DEBIAN_WINDOW_PACKAGE_DEPENDS "loadscope (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
set(CPACK_DEBIAN_WINDOW_PACKAGE_BREAKS "loadscope (<< ${split})")
set(CPACK_DEBIAN_WINDOW_PACKAGE_REPLACES "loadscope (<< ${split})")
# Fonts and the Wayland plugin are what the window looks best with; the tools that are measured come from elsewhere.
set(CPACK_DEBIAN_WINDOW_PACKAGE_RECOMMENDS "fonts-inter, qt6-wayland")
set(CPACK_COMPONENT_WINDOW_DESCRIPTION "${description} This package holds the window with the
report of a scan, its trend and a comparison of repositories.")

# What Debian asks of documentation, done to the files that are about to be packed.
configure_file(debian/prepare.cmake.in prepare-deb.cmake @ONLY)
set(CPACK_PRE_BUILD_SCRIPTS "${CMAKE_CURRENT_BINARY_DIR}/prepare-deb.cmake")
