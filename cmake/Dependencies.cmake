# SPDX-License-Identifier: GPL-3.0-only
# Everything that is found on the machine; scripts/setup installs the same list.

set(CMAKE_THREAD_PREFER_PTHREAD ON)
find_package(Threads REQUIRED)
find_package(JUCE CONFIG REQUIRED)
find_package(Poco REQUIRED COMPONENTS Foundation Encodings)
include(PocoDefinitions)
find_package(Protobuf REQUIRED)
find_package(PkgConfig REQUIRED)
find_package(CLI11 REQUIRED)
find_package(nlohmann_json REQUIRED)
find_package(EXPAT REQUIRED)

pkg_check_modules(JUCE_PLATFORM REQUIRED IMPORTED_TARGET freetype2 libpng libjpeg zlib alsa x11)

# Workbooks and Word documents.
pkg_check_modules(ORCUS REQUIRED IMPORTED_TARGET liborcus-0.17)
pkg_check_modules(XLSXWRITER REQUIRED IMPORTED_TARGET xlsxwriter)
pkg_check_modules(LIBZIP REQUIRED IMPORTED_TARGET libzip)
pkg_check_modules(LIBDEFLATE REQUIRED IMPORTED_TARGET libdeflate)
pkg_check_modules(PUGIXML REQUIRED IMPORTED_TARGET pugixml)

# Drawn pages.
pkg_check_modules(PANGOCAIRO REQUIRED IMPORTED_TARGET pangocairo cairo-pdf)

if(OVERMARKS_BUILD_TESTS)
    find_package(GTest REQUIRED)
    pkg_check_modules(POPPLER REQUIRED IMPORTED_TARGET poppler-cpp)
endif()

if(OVERMARKS_BUILD_BENCHMARKS)
    find_package(benchmark REQUIRED)
endif()
