# SPDX-License-Identifier: GPL-3.0-only
# overmarks.1 and the completions of three shells: made whenever the program is linked, installed where man and the shells look
# for them. A program for another machine can't be asked here; whoever packs it runs it there.
if(CMAKE_CROSSCOMPILING)
    return()
endif()

set(manual "${OVERMARKS_GENERATED}/overmarks.1")
set(completions "${OVERMARKS_GENERATED}/completion")
file(MAKE_DIRECTORY "${completions}")
add_custom_command(TARGET overmarks POST_BUILD
    COMMAND overmarks --man > "${manual}"
    COMMAND overmarks completion bash > "${completions}/overmarks"
    COMMAND overmarks completion zsh > "${completions}/_overmarks"
    COMMAND overmarks completion fish > "${completions}/overmarks.fish"
    BYPRODUCTS "${manual}" "${completions}/overmarks" "${completions}/_overmarks" "${completions}/overmarks.fish"
    VERBATIM)

install(FILES "${manual}" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT runtime)
install(FILES "${completions}/overmarks" DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions"
    COMPONENT runtime)
# zsh looks into the first of them below /usr/local, Debian's into the other below /usr.
foreach(functions IN ITEMS site-functions vendor-completions)
    install(FILES "${completions}/_overmarks" DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/${functions}" COMPONENT runtime)
endforeach()
install(FILES "${completions}/overmarks.fish" DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d"
    COMPONENT runtime)
