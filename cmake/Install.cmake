# SPDX-License-Identifier: GPL-3.0-only
# What `cmake --install` puts where. The installed tree may be moved as a whole: nothing in it names the prefix.

include(CMakePackageConfigHelpers)

set(OVERMARKS_PACKAGE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/Overmarks")
set(OVERMARKS_HEADER_DIR "${CMAKE_INSTALL_INCLUDEDIR}/overmarks")
set(OVERMARKS_SHARE_DIR "${CMAKE_INSTALL_DATADIR}/overmarks")
set(OVERMARKS_LIBRARIES ZEP_FileFormat ZEP_Core ZEP_MIDIIO ZEP_Overmarks)

install(TARGETS ${OVERMARKS_LIBRARIES} EXPORT OvermarksTargets LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}")
install(TARGETS overmarks RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")

# Headers stand below one root in the folders that the sources have, so that an application includes
# "event/Event.h" just as the library does.
foreach(folder IN ITEMS core midiio preferences event list midi import export)
    if(EXISTS "${PROJECT_SOURCE_DIR}/${folder}/CMakeLists.txt")
        install(DIRECTORY "${PROJECT_SOURCE_DIR}/${folder}" DESTINATION "${OVERMARKS_HEADER_DIR}"
            FILES_MATCHING PATTERN "*.h")
    endif()
endforeach()
foreach(library IN LISTS OVERMARKS_LIBRARIES)
    install(FILES "${OVERMARKS_GENERATED}/${library}/Export.h" DESTINATION "${OVERMARKS_HEADER_DIR}/${library}")
endforeach()
install(DIRECTORY "${PROJECT_BINARY_DIR}/proto/include/proto" DESTINATION "${OVERMARKS_HEADER_DIR}"
    FILES_MATCHING PATTERN "*.pb.h")

install(DIRECTORY proto DESTINATION "${OVERMARKS_SHARE_DIR}" FILES_MATCHING PATTERN "*.proto")
install(DIRECTORY examples/data/ DESTINATION "${OVERMARKS_SHARE_DIR}/examples")
install(DIRECTORY DESTINATION "${OVERMARKS_INSTALLED_RESOURCES}")
install(FILES ${OVERMARKS_RESOURCE_FILES} DESTINATION "${OVERMARKS_INSTALLED_RESOURCES}")
install(FILES LICENSE README.md CHANGELOG.md DESTINATION "${CMAKE_INSTALL_DOCDIR}")

# find_package(Overmarks)
install(EXPORT OvermarksTargets NAMESPACE Overmarks:: DESTINATION "${OVERMARKS_PACKAGE_DIR}")
configure_package_config_file(cmake/OvermarksConfig.cmake.in "${PROJECT_BINARY_DIR}/package/OvermarksConfig.cmake"
    INSTALL_DESTINATION "${OVERMARKS_PACKAGE_DIR}" NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/package/OvermarksConfigVersion.cmake"
    COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/package/OvermarksConfig.cmake"
    "${PROJECT_BINARY_DIR}/package/OvermarksConfigVersion.cmake" cmake/PocoDefinitions.cmake
    DESTINATION "${OVERMARKS_PACKAGE_DIR}")

# pkg-config overmarks
file(RELATIVE_PATH OVERMARKS_PC_PREFIX "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
set(definitions ${OVERMARKS_JUCE_DEFINITIONS})
list(TRANSFORM definitions PREPEND "-D")
list(JOIN definitions " " OVERMARKS_PC_DEFINITIONS)
configure_file(cmake/overmarks.pc.in "${PROJECT_BINARY_DIR}/package/overmarks.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/package/overmarks.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
