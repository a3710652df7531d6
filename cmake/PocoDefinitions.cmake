# SPDX-License-Identifier: GPL-3.0-only
# Poco's package defines _DEBUG for every debug build that links it, which would change the layout of JUCE's classes
# in that program alone. The library is always built without it, so its users must be too.
foreach(target IN ITEMS Poco::Foundation Poco::Encodings)
    get_target_property(definitions ${target} INTERFACE_COMPILE_DEFINITIONS)
    if(definitions)
        list(FILTER definitions EXCLUDE REGEX "_DEBUG")
        set_target_properties(${target} PROPERTIES INTERFACE_COMPILE_DEFINITIONS "${definitions}")
    endif()
endforeach()
