# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT

# QML compiled when it is built instead of at the first start: qmlcachegen, of Qt's development
# tools. The sources stay beside what is compiled: another release of Qt than the one that it was
# compiled with reads them. Without the tool Qt compiles them itself.

find_package(Qt5 5.15 REQUIRED COMPONENTS Core)
get_target_property(qmake Qt5::qmake IMPORTED_LOCATION)
get_filename_component(qt_tools "${qmake}" DIRECTORY)
find_program(TRIVEX_QML_COMPILER NAMES qmlcachegen
    HINTS "${qt_tools}" "${qt_tools}/../lib/qt5/bin" /usr/lib/qt5/bin NO_DEFAULT_PATH)
if(NOT TRIVEX_QML_COMPILER)
    message(STATUS "qmlcachegen was not found (Debian: qtdeclarative5-dev-tools): "
        "Qt compiles the QML at the first start")
endif()

# What it writes must not depend on the order of a hash.
set(TRIVEX_COMPILE_QML "${CMAKE_COMMAND}" -E env QT_HASH_SEED=0 "${TRIVEX_QML_COMPILER}")

# trivex_compile_qml(<result> <file.qml>): sets `result` to the compiled file that the build puts
# beside `file`, or to nothing.
function(trivex_compile_qml result file)
    set(${result} PARENT_SCOPE)
    if(TRIVEX_QML_COMPILER AND file MATCHES "\\.qml$")
        add_custom_command(OUTPUT "${file}c"
            COMMAND ${TRIVEX_COMPILE_QML} -o "${file}c" "${file}"
            DEPENDS "${file}"
            VERBATIM)
        set(${result} "${file}c" PARENT_SCOPE)
    endif()
endfunction()

# trivex_qml_resources(<result> <file.qrc>): sets `result` to the sources of the resource file with
# its QML both as it is and compiled. Q_INIT_RESOURCE brings in both by the name of the file.
function(trivex_qml_resources result file)
    if(NOT TRIVEX_QML_COMPILER)
        set(${result} "${file}" PARENT_SCOPE)
        return()
    endif()
    get_filename_component(qrc "${file}" ABSOLUTE)
    get_filename_component(name "${file}" NAME_WE)
    set(directory "${CMAKE_CURRENT_BINARY_DIR}/${name}_compiled")
    file(MAKE_DIRECTORY "${directory}")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${qrc}")
    file(STRINGS "${qrc}" lines REGEX "<file")
    set(contents)
    set(generated "${directory}/qrc_${name}_sources.cpp" "${directory}/qmlcache_loader.cpp")
    foreach(line ${lines})
        string(REGEX REPLACE ".*<file[^>]*>([^<]+)</file>.*" "\\1" entry "${line}")
        get_filename_component(path "${CMAKE_CURRENT_SOURCE_DIR}/${entry}" ABSOLUTE)
        list(APPEND contents "${path}")
        if(entry MATCHES "\\.qml$")
            string(MAKE_C_IDENTIFIER "${entry}" identifier)
            set(unit "${directory}/${identifier}.cpp")
            add_custom_command(OUTPUT "${unit}"
                COMMAND ${TRIVEX_COMPILE_QML} "--resource=${qrc}" "${path}" -o "${unit}"
                DEPENDS "${path}" "${qrc}"
                VERBATIM)
            list(APPEND generated "${unit}")
        endif()
    endforeach()
    # The names of the loader are those of the resource file, which it brings in under another one.
    add_custom_command(OUTPUT "${directory}/qmlcache_loader.cpp"
        COMMAND ${TRIVEX_COMPILE_QML}
                "--resource-file-mapping=${qrc}=${name}_sources.qrc" "${qrc}"
                -o "${directory}/qmlcache_loader.cpp"
        DEPENDS "${qrc}"
        VERBATIM)
    add_custom_command(OUTPUT "${directory}/qrc_${name}_sources.cpp"
        COMMAND Qt5::rcc --format-version 1 --name ${name}_sources
                -o "${directory}/qrc_${name}_sources.cpp" "${qrc}"
        DEPENDS "${qrc}" ${contents}
        VERBATIM)
    set_source_files_properties(${generated} PROPERTIES SKIP_AUTOMOC ON
        COMPILE_OPTIONS "-w")
    set(${result} ${generated} PARENT_SCOPE)
endfunction()
