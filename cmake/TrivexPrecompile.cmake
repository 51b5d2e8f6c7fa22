# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT
#
# TRIVEX_PRECOMPILE: most of the work of a whole build is to read the same headers of Qt, QCA and the
# standard library, eight hundred times. Here they are read once. With it a source that forgets to
# include one of them compiles all the same, so it is off by default: packages, `./run`, the sanitizers
# and clang-tidy read each source as it is. Included last, when all targets are known.
if(NOT TRIVEX_PRECOMPILE)
    return()
endif()

set(empty "${CMAKE_CURRENT_BINARY_DIR}/precompiled.cpp")
file(WRITE "${empty}.new" "")
configure_file("${empty}.new" "${empty}" COPYONLY)
add_library(trivex_precompiled OBJECT "${empty}")
set_target_properties(trivex_precompiled PROPERTIES AUTOMOC OFF AUTORCC OFF)
target_link_libraries(trivex_precompiled PRIVATE Qt5::Core qca-qt5)
# What many sources include, and no more: each source pays for all of it when it is compiled.
target_precompile_headers(trivex_precompiled PRIVATE
    <QtCrypto> <QAbstractListModel> <QByteArray> <QCoreApplication> <QDateTime> <QDir>
    <QElapsedTimer> <QFile> <QHash> <QMap> <QObject> <QPointer> <QSet> <QString> <QStringList>
    <QTimer> <QVariant> <QVector> <algorithm> <array> <chrono> <functional> <memory> <mutex>
    <optional> <thread>)

# What links Qt, in this directory and all below.
function(trivex_precompile_below directory)
    get_property(targets DIRECTORY "${directory}" PROPERTY BUILDSYSTEM_TARGETS)
    foreach(target ${targets})
        get_target_property(type ${target} TYPE)
        get_target_property(linked ${target} LINK_LIBRARIES)
        if(type MATCHES "EXECUTABLE|LIBRARY" AND linked MATCHES "Qt5::|trivex_"
                AND NOT type STREQUAL "INTERFACE_LIBRARY"
                AND NOT target STREQUAL "trivex_precompiled")
            target_precompile_headers(${target} REUSE_FROM trivex_precompiled)
        endif()
    endforeach()
    get_property(folders DIRECTORY "${directory}" PROPERTY SUBDIRECTORIES)
    foreach(folder ${folders})
        trivex_precompile_below("${folder}")
    endforeach()
endfunction()
trivex_precompile_below("${CMAKE_SOURCE_DIR}")
