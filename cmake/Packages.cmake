# SPDX-License-Identifier: GPL-3.0-only
# The Debian packages that scripts/package makes: overmarks with the program and the libraries, overmarks-dev with what one builds
# against them with. What runs needs nothing but what the loader asks for, which dpkg-shlibdeps finds; a browser is started only
# for the cue sheets that a browser prints.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME overmarks)
set(CPACK_PACKAGE_VENDOR "Overmarks developers")
set(CPACK_PACKAGE_CONTACT "Overmarks developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime development)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON) # overmarks-dev needs overmarks of the same version
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME overmarks)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON) # for what others link with the libraries; runs ldconfig as well
set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS
    "chromium-headless-shell | chromium, fonts-dejavu-core, fonts-liberation")
# JUCE looks for these when a window is opened, which only applications do.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SUGGESTS "libx11-6, libxcursor1, libxext6, libxinerama1, libxrandr2, fonts-noto-core")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME overmarks-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
# JUCE's headers alone: the package with all that its modules are built with is some hundred more.
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "juce-modules-source-data, libpoco-dev, libprotobuf-dev")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_RECOMMENDS "cmake | pkg-config")

set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
"Reads the cue lists that reach a dubbing studio, edits, filters and searches
them, and writes the documents for the stage, all without a display. With the
shared libraries that do the work.")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
"Headers, CMake and pkg-config files, and examples for applications that use the
libraries of Overmarks.")
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)

include(CPack)
