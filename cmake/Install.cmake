# SPDX-License-Identifier: GPL-3.0-only
# What `cmake --install` puts where. The installed tree may be moved as a whole: nothing in it names the prefix.
#
# Each file belongs to one of two components, which are the two packages of cmake/Packages.cmake: "runtime" is what runs the
# program and whatever is linked with the libraries, "development" what one builds against them with.

include(CMakePackageConfigHelpers)

set(OVERMARKS_PACKAGE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/Overmarks")
set(OVERMARKS_HEADER_DIR "${CMAKE_INSTALL_INCLUDEDIR}/overmarks")
set(OVERMARKS_SHARE_DIR "${CMAKE_INSTALL_DATADIR}/overmarks")
set(OVERMARKS_DOC_DIR "${CMAKE_INSTALL_DATADIR}/doc/overmarks")
set(OVERMARKS_LIBRARIES ZEP_FileFormat ZEP_Core ZEP_MIDIIO ZEP_Overmarks)

# ---- what runs ---------------------------------------------------------------------------------------------------------

install(TARGETS ${OVERMARKS_LIBRARIES} EXPORT OvermarksTargets
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime NAMELINK_COMPONENT development)
install(TARGETS ZEP_Documents LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime NAMELINK_SKIP)
install(TARGETS overmarks RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT runtime)

# The library starts the Word tool from the folder of its resources. Programs don't lie below share, so there is a link.
set(OVERMARKS_TOOL_DIR "${CMAKE_INSTALL_LIBEXECDIR}/overmarks")
install(TARGETS docxHandler RUNTIME DESTINATION "${OVERMARKS_TOOL_DIR}" COMPONENT runtime)
file(RELATIVE_PATH OVERMARKS_TOOL_LINK
    "/prefix/${OVERMARKS_INSTALLED_RESOURCES}" "/prefix/${OVERMARKS_TOOL_DIR}/docxHandler")
file(MAKE_DIRECTORY "${PROJECT_BINARY_DIR}/package")
file(CREATE_LINK "${OVERMARKS_TOOL_LINK}" "${PROJECT_BINARY_DIR}/package/docxHandler" SYMBOLIC)
install(FILES ${OVERMARKS_RESOURCE_FILES} "${PROJECT_BINARY_DIR}/package/docxHandler"
    DESTINATION "${OVERMARKS_INSTALLED_RESOURCES}" COMPONENT runtime)

# Manual page and completions, as far as the program's target has made them in the build's share folder.
foreach(folder IN ITEMS man bash-completion zsh fish)
    install(DIRECTORY "${PROJECT_BINARY_DIR}/share/${folder}" DESTINATION "${CMAKE_INSTALL_DATADIR}"
        COMPONENT runtime OPTIONAL)
endforeach()

install(DIRECTORY examples/data DESTINATION "${OVERMARKS_SHARE_DIR}/examples" COMPONENT runtime)
install(FILES LICENSE README.md CHANGELOG.md cmake/copyright DESTINATION "${OVERMARKS_DOC_DIR}" COMPONENT runtime)
install(DIRECTORY docs DESTINATION "${OVERMARKS_DOC_DIR}" COMPONENT runtime FILES_MATCHING PATTERN "*.md")

# ---- what one builds with ----------------------------------------------------------------------------------------------

# Headers stand below one root in the folders that the sources have, so that an application includes
# "event/Event.h" just as the library does.
foreach(folder IN ITEMS core midiio preferences event list midi import export)
    install(DIRECTORY "${PROJECT_SOURCE_DIR}/${folder}" DESTINATION "${OVERMARKS_HEADER_DIR}" COMPONENT development
        FILES_MATCHING PATTERN "*.h" REGEX "/core/documents$" EXCLUDE)
endforeach()
# No application can link more of what is in there.
install(FILES core/documents/ExcelFileHandler.h core/documents/PDFDocument.h core/documents/PaperSize.h core/documents/WorkbookArchive.h
    DESTINATION "${OVERMARKS_HEADER_DIR}/core/documents" COMPONENT development)
foreach(library IN LISTS OVERMARKS_LIBRARIES)
    install(FILES "${OVERMARKS_GENERATED}/${library}/Export.h" DESTINATION "${OVERMARKS_HEADER_DIR}/${library}"
        COMPONENT development)
endforeach()
install(DIRECTORY "${PROJECT_BINARY_DIR}/proto/include/proto" DESTINATION "${OVERMARKS_HEADER_DIR}"
    COMPONENT development FILES_MATCHING PATTERN "*.pb.h")

install(DIRECTORY proto DESTINATION "${OVERMARKS_SHARE_DIR}" COMPONENT development FILES_MATCHING PATTERN "*.proto")
install(DIRECTORY examples DESTINATION "${OVERMARKS_SHARE_DIR}" COMPONENT development PATTERN data EXCLUDE)
install(FILES cmake/copyright DESTINATION "${OVERMARKS_DOC_DIR}-dev" COMPONENT development)

# find_package(Overmarks)
install(EXPORT OvermarksTargets NAMESPACE Overmarks:: DESTINATION "${OVERMARKS_PACKAGE_DIR}" COMPONENT development)
configure_package_config_file(cmake/OvermarksConfig.cmake.in "${PROJECT_BINARY_DIR}/package/OvermarksConfig.cmake"
    INSTALL_DESTINATION "${OVERMARKS_PACKAGE_DIR}" NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/package/OvermarksConfigVersion.cmake"
    COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/package/OvermarksConfig.cmake"
    "${PROJECT_BINARY_DIR}/package/OvermarksConfigVersion.cmake" cmake/PocoDefinitions.cmake
    DESTINATION "${OVERMARKS_PACKAGE_DIR}" COMPONENT development)

# pkg-config overmarks, and overmarks-core for what needs timecode, texts and the like alone
file(RELATIVE_PATH OVERMARKS_PC_PREFIX "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
set(definitions ${OVERMARKS_JUCE_DEFINITIONS})
list(TRANSFORM definitions PREPEND "-D")
list(JOIN definitions " " OVERMARKS_PC_DEFINITIONS)
foreach(package IN ITEMS overmarks overmarks-core)
    configure_file("cmake/${package}.pc.in" "${PROJECT_BINARY_DIR}/package/${package}.pc" @ONLY)
    install(FILES "${PROJECT_BINARY_DIR}/package/${package}.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
        COMPONENT development)
endforeach()
