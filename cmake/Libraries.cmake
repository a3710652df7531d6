# SPDX-License-Identifier: GPL-3.0-only
# The five shared libraries, made of the folders' objects, each with an export header and its version symbols.
#
# The folders' targets exist in the build alone. An application that uses the installed package sees the libraries
# (as Overmarks::Core and so on), one include root, and Overmarks::juce_headers, which the package file makes.

include(GenerateExportHeader)

# The version in the libraries' file names, which a program that is linked asks for (docs/abi.md). Before 1.0 every minor version
# may break what is linked already.
if(PROJECT_VERSION_MAJOR EQUAL 0)
    set(OVERMARKS_ABI_VERSION "${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}")
else()
    set(OVERMARKS_ABI_VERSION "${PROJECT_VERSION_MAJOR}")
endif()

function(overmarks_shared_library library)
    cmake_parse_arguments(ARG "" "MACRO;EXPORT_NAME" "COMPONENTS;LINKS;PRIVATE_LINKS" ${ARGN})

    set(OVERMARKS_LIBRARY ${library})
    configure_file("${PROJECT_SOURCE_DIR}/cmake/Version.cpp.in" "${OVERMARKS_GENERATED}/${library}Version.cpp" @ONLY)
    add_library(${library} SHARED "${OVERMARKS_GENERATED}/${library}Version.cpp")
    set_target_properties(${library} PROPERTIES
        PREFIX "lib" OUTPUT_NAME "${library}" VERSION ${PROJECT_VERSION} SOVERSION ${OVERMARKS_ABI_VERSION}
        EXPORT_NAME "${ARG_EXPORT_NAME}" INSTALL_RPATH "$ORIGIN")
    add_library(Overmarks::${ARG_EXPORT_NAME} ALIAS ${library})
    generate_export_header(${library} BASE_NAME "${ARG_MACRO}" EXPORT_MACRO_NAME "${ARG_MACRO}_API"
        EXPORT_FILE_NAME "${OVERMARKS_GENERATED}/${library}/Export.h")
    foreach(component IN LISTS ARG_COMPONENTS)
        target_link_libraries(${library}
            PRIVATE $<BUILD_INTERFACE:overmarks_${component}> PUBLIC $<BUILD_INTERFACE:overmarks_${component}_headers>)
    endforeach()
    target_include_directories(${library} INTERFACE $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/overmarks>)
    target_compile_features(${library} PUBLIC cxx_std_20)
    target_link_libraries(${library} PUBLIC ${ARG_LINKS} PRIVATE ${ARG_PRIVATE_LINKS})
    # clang gives the sanitizers' own functions to programs alone; the fuzz targets bring them.
    if(NOT CMAKE_CXX_FLAGS MATCHES "fuzzer-no-link")
        target_link_options(${library} PRIVATE -Wl,--no-undefined -Wl,-Bsymbolic-functions)
    endif()
endfunction()

overmarks_shared_library(ZEP_FileFormat EXPORT_NAME FileFormat MACRO ZEP_FILEFORMAT COMPONENTS proto
    LINKS protobuf::libprotobuf)
overmarks_shared_library(ZEP_Core EXPORT_NAME Core MACRO ZEP_CORE COMPONENTS core
    LINKS ZEP_FileFormat Poco::Foundation $<INSTALL_INTERFACE:Overmarks::juce_headers>
    PRIVATE_LINKS $<BUILD_INTERFACE:overmarks_juce> Poco::Encodings PkgConfig::JUCE_PLATFORM Threads::Threads
        ${CMAKE_DL_LIBS} rt)
# Nobody links it: libZEP_Core loads it for the first workbook or page (DocumentsLibrary).
overmarks_shared_library(ZEP_Documents EXPORT_NAME Documents MACRO ZEP_DOCUMENTS COMPONENTS documents
    PRIVATE_LINKS ZEP_Core PkgConfig::ORCUS PkgConfig::XLSXWRITER PkgConfig::LIBZIP PkgConfig::PANGOCAIRO EXPAT::EXPAT)
overmarks_shared_library(ZEP_MIDIIO EXPORT_NAME MIDIIO MACRO ZEP_MIDIIO COMPONENTS midiio LINKS ZEP_Core)
overmarks_shared_library(ZEP_Overmarks EXPORT_NAME Overmarks MACRO OVERMARKS
    COMPONENTS preferences event list midi word_protocol import export
    LINKS ZEP_MIDIIO ZEP_Core ZEP_FileFormat Poco::Foundation
    PRIVATE_LINKS Poco::Encodings nlohmann_json::nlohmann_json EXPAT::EXPAT)
# Whatever is linked with the whole of the house may need it.
add_dependencies(ZEP_Overmarks ZEP_Documents)
