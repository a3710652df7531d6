# SPDX-License-Identifier: GPL-3.0-only
# The two packages together hold what is installed as a whole, and no file is in both.
include("${CMAKE_CURRENT_LIST_DIR}/steps.cmake")

file(REMOVE_RECURSE "${WORK_DIR}")
step("Installing" "${CMAKE_COMMAND}" --install "${BUILD_DIR}" --prefix "${WORK_DIR}/all")
foreach(component IN ITEMS runtime development)
    step("Installing the ${component} files"
        "${CMAKE_COMMAND}" --install "${BUILD_DIR}" --component ${component} --prefix "${WORK_DIR}/${component}")
endforeach()
foreach(tree IN ITEMS all runtime development)
    file(GLOB_RECURSE ${tree} RELATIVE "${WORK_DIR}/${tree}" "${WORK_DIR}/${tree}/*")
endforeach()

foreach(file IN LISTS all)
    if(NOT file IN_LIST runtime AND NOT file IN_LIST development)
        message(SEND_ERROR "${file} is in neither package: its install command names no component")
    endif()
endforeach()
foreach(file IN LISTS runtime)
    if(file IN_LIST development)
        message(SEND_ERROR "${file} is in both packages, which can't be installed together then")
    endif()
    if(file MATCHES "\\.(h|proto|pc|cmake|so)$")
        message(SEND_ERROR "${file} belongs to the package for development")
    endif()
endforeach()

# What has to be there, whatever the lists above say.
foreach(file IN ITEMS bin/overmarks libexec/overmarks/docxHandler share/overmarks/resources/docxHandler
        share/overmarks/resources/pdf-export-in-point-icon.png share/overmarks/examples/data/harbour-lights-reel-2.csv
        share/man/man1/overmarks.1 share/bash-completion/completions/overmarks share/zsh/site-functions/_overmarks
        share/zsh/vendor-completions/_overmarks share/fish/vendor_completions.d/overmarks.fish
        share/doc/overmarks/copyright share/doc/overmarks/docs/csv.md)
    if(NOT EXISTS "${WORK_DIR}/runtime/${file}") # follows links
        message(SEND_ERROR "${file} is missing in the package of the program")
    endif()
endforeach()
# Nothing that is linked asks for this one.
file(GLOB loaded "${WORK_DIR}/runtime/${LIBDIR}/libZEP_Documents.so.*")
if(NOT loaded)
    message(SEND_ERROR "libZEP_Documents is missing in the package of the program")
endif()
foreach(file IN ITEMS include/overmarks/list/EventArray.h include/overmarks/ZEP_Core/Export.h
        include/overmarks/proto/overmarks.pb.h share/overmarks/examples/documents.cpp share/doc/overmarks-dev/copyright
        "${LIBDIR}/libZEP_Overmarks.so" "${LIBDIR}/pkgconfig/overmarks.pc" "${LIBDIR}/pkgconfig/overmarks-core.pc"
        "${LIBDIR}/cmake/Overmarks/OvermarksConfig.cmake")
    if(NOT file IN_LIST development)
        message(SEND_ERROR "${file} is missing in the package for development")
    endif()
endforeach()
