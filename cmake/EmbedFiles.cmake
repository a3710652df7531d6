# SPDX-License-Identifier: GPL-3.0-only
# cmake -D OUTPUT=BinaryData.cpp -D HEADER=export/print/BinaryData.h -D FILES=a.png,b.png -P EmbedFiles.cmake
#
# Writes the bytes of files as C++: each becomes BinaryData::name and BinaryData::nameSize, the name being the file's without
# dashes and with an underscore for its dot. The header declares them.

string(REPLACE "," ";" files "${FILES}")
set(code "// Written by the build. The bytes of files.\n#include \"${HEADER}\"\n\nnamespace\n{\n")
set(names "")

foreach(file IN LISTS files)
    get_filename_component(name "${file}" NAME)
    string(REPLACE "-" "" name "${name}")
    string(REPLACE "." "_" name "${name}")
    file(READ "${file}" bytes HEX)
    string(LENGTH "${bytes}" length)
    math(EXPR length "${length} / 2")
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${bytes}")
    string(APPEND code "const unsigned char ${name}Bytes[] = {${bytes}};\n")
    string(APPEND names "const char* const ${name} = reinterpret_cast<const char*> (${name}Bytes);\n"
        "const int ${name}Size = ${length};\n")
endforeach()

file(WRITE "${OUTPUT}" "${code}} // namespace\n\nnamespace BinaryData\n{\n${names}} // namespace BinaryData\n")
