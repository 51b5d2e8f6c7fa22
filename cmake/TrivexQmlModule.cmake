# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT

# What the QML modules share.
include(TrivexQmlCompiler)

# trivex_remove_installed(<path>): takes away what an earlier installation has left at `path`, relative
# to the prefix.
function(trivex_remove_installed path)
    install(CODE "
        set(prefix \"\${CMAKE_INSTALL_PREFIX}/\")
        if(IS_ABSOLUTE \"${path}\")
            set(prefix)
        endif()
        file(REMOVE \"\$ENV{DESTDIR}\${prefix}${path}\")")
endfunction()

# trivex_qml_module(<target> OUTPUT <library> SUBDIRECTORY <folder below Trivex/Crypto> FILES ...)
# Makes the plugin `target` a QML module: it lies in the build tree as it does when installed, with
# its FILES (relative to the current source folder) beside it.
function(trivex_qml_module target)
    cmake_parse_arguments(ARG "" "OUTPUT;SUBDIRECTORY" "FILES" ${ARGN})
    set(directory "${TRIVEX_QML_DIR}/${ARG_SUBDIRECTORY}")
    set_target_properties(${target} PROPERTIES
        OUTPUT_NAME ${ARG_OUTPUT}
        LIBRARY_OUTPUT_DIRECTORY "${directory}")
    set(copied)
    set(destination "${TRIVEX_QML_INSTALL_DIR}/Trivex/Crypto/${ARG_SUBDIRECTORY}")
    foreach(file ${ARG_FILES})
        set(copy "${directory}/${file}")
        get_filename_component(folder "${copy}" DIRECTORY)
        trivex_compile_qml(compiled "${copy}")
        set(stale)
        if(NOT compiled)
            # Qt would take what an earlier build compiled for the new file.
            set(stale COMMAND "${CMAKE_COMMAND}" -E rm -f "${copy}c")
            trivex_remove_installed("${destination}/${file}c")
        endif()
        add_custom_command(OUTPUT "${copy}"
            COMMAND "${CMAKE_COMMAND}" -E make_directory "${folder}"
            COMMAND "${CMAKE_COMMAND}" -E copy "${CMAKE_CURRENT_SOURCE_DIR}/${file}" "${copy}"
            ${stale}
            DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/${file}"
            VERBATIM)
        list(APPEND copied "${copy}" ${compiled})
        get_filename_component(subfolder "${file}" DIRECTORY)
        install(FILES "${file}" ${compiled} DESTINATION "${destination}/${subfolder}")
    endforeach()
    add_custom_target(${target}_files ALL DEPENDS ${copied})
    add_dependencies(${target} ${target}_files)
    trivex_finds_libraries(${target} "${destination}")
    install(TARGETS ${target} LIBRARY DESTINATION "${destination}")
endfunction()
