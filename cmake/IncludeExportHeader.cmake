# SPDX-License-Identifier: GPL-3.0-only
# cmake -D HEADER=x.pb.h -D EXPORT_HEADER=Library/Export.h -P IncludeExportHeader.cmake
#
# The compiler of the schemas marks the exported classes but doesn't include the header that defines the mark. It leaves a
# place for such additions; with the line there, the generated header stands by itself, here and where it is installed.

file(READ "${HEADER}" text)
set(place "// @@protoc_insertion_point(includes)\n")
string(FIND "${text}" "${place}" position)
if(position EQUAL -1)
    message(FATAL_ERROR "No place for an include in ${HEADER}")
endif()
string(REPLACE "${place}" "#include \"${EXPORT_HEADER}\"\n${place}" text "${text}")
file(WRITE "${HEADER}" "${text}")
