# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT
#
# Where things are installed, and how they find each other there: by paths from one to the other, so
# that any prefix, DESTDIR and a tree that is moved later all work.

set(TRIVEX_QML_INSTALL_DIR "${CMAKE_INSTALL_LIBDIR}/qt5/qml" CACHE STRING
    "Where Qt looks for QML modules")
set(TRIVEX_QCA_INSTALL_DIR "${CMAKE_INSTALL_LIBDIR}/qca-qt5/crypto" CACHE STRING
    "Where QCA looks for its providers")

# The libraries are for the project's own plugins alone: they have no headers and no promise, so
# they stay out of the directory that everybody's linker looks into.
set(TRIVEX_LIB_INSTALL_DIR "${CMAKE_INSTALL_LIBDIR}/trivex" CACHE STRING
    "Where the plugins look for the project's own libraries")

# A system installation has its catalogues in the directory that hosts expect them in; everybody
# else's stay below the prefix. Always by a relative path: `cmake --install --prefix` moves them too.
set(TRIVEX_CATALOGUE_INSTALL_DIR "${CMAKE_INSTALL_DATADIR}/translations")
string(FIND "${TRIVEX_TRANSLATIONS_DIR}/" "${CMAKE_INSTALL_PREFIX}/" below)
if(below EQUAL 0)
    file(RELATIVE_PATH TRIVEX_CATALOGUE_INSTALL_DIR
        "${CMAKE_INSTALL_PREFIX}" "${TRIVEX_TRANSLATIONS_DIR}")
endif()

# trivex_relative(<variable> <from> <to>): the way between two directories of the installation.
function(trivex_relative variable from to)
    get_filename_component(from "${from}" ABSOLUTE BASE_DIR "${CMAKE_INSTALL_PREFIX}")
    get_filename_component(to "${to}" ABSOLUTE BASE_DIR "${CMAKE_INSTALL_PREFIX}")
    file(RELATIVE_PATH way "${from}" "${to}")
    set(${variable} "${way}" PARENT_SCOPE)
endfunction()

# trivex_finds_libraries(<target> <directory>): a target that is installed to `directory` finds the
# project's own libraries from there.
function(trivex_finds_libraries target directory)
    trivex_relative(way "${directory}" "${TRIVEX_LIB_INSTALL_DIR}")
    string(REGEX REPLACE "/$" "" origin "\$ORIGIN/${way}")
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "${origin}")
endfunction()

# `cmake --build <directory> --target uninstall`: what the last installation wrote.
install(CODE "file(WRITE \"${CMAKE_BINARY_DIR}/install_prefix.txt\" \"\${CMAKE_INSTALL_PREFIX}\")")
configure_file("${CMAKE_CURRENT_LIST_DIR}/uninstall.cmake.in"
    "${CMAKE_BINARY_DIR}/uninstall.cmake" @ONLY)
add_custom_target(uninstall
    COMMAND "${CMAKE_COMMAND}" -P "${CMAKE_BINARY_DIR}/uninstall.cmake" VERBATIM)
