# SPDX-License-Identifier: GPL-3.0-only
# The icons and tools that documents need lie where the library looks for them, be it built or installed:
# share/overmarks/resources beside the folder of the library. In the build tree the icons are links to their sources. A tool
# of that folder sets its RUNTIME_OUTPUT_DIRECTORY to OVERMARKS_BUILT_RESOURCES; cmake/Install.cmake puts it elsewhere and a link to it
# into OVERMARKS_INSTALLED_RESOURCES.

set(OVERMARKS_BUILT_RESOURCES "${CMAKE_BINARY_DIR}/share/overmarks/resources")
set(OVERMARKS_INSTALLED_RESOURCES "${CMAKE_INSTALL_DATADIR}/overmarks/resources")
file(MAKE_DIRECTORY "${OVERMARKS_BUILT_RESOURCES}")

# Whatever draws the icons stays behind.
file(GLOB OVERMARKS_RESOURCE_FILES CONFIGURE_DEPENDS LIST_DIRECTORIES false "${PROJECT_SOURCE_DIR}/resources/*")
list(FILTER OVERMARKS_RESOURCE_FILES EXCLUDE REGEX "(CMakeLists\\.txt|\\.cmake|\\.cpp|\\.h)$")

foreach(file IN LISTS OVERMARKS_RESOURCE_FILES)
    get_filename_component(name "${file}" NAME)
    file(CREATE_LINK "${file}" "${OVERMARKS_BUILT_RESOURCES}/${name}" SYMBOLIC)
endforeach()
