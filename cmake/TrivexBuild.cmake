# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT
#
# The compile and link settings that every target of the project shares.

include(GNUInstallDirs)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Build type" FORCE)
endif()

option(TRIVEX_BUILD_APP "Build the certificate manager" ON)
option(TRIVEX_BUILD_TESTS "Build the tests" OFF)
option(TRIVEX_BUILD_BENCHMARKS "Build the benchmarks" OFF)
option(TRIVEX_BUILD_TOUR "Build the program that does the main job unattended" OFF)
option(TRIVEX_PRECOMPILE "Read the headers of Qt and QCA once for all sources" OFF)
option(TRIVEX_WERROR "Treat compiler warnings as errors" OFF)
set(TRIVEX_SANITIZER "" CACHE STRING "Sanitizers to build with: address,undefined or thread")

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)
# Without the times of the source files, which differ from one checkout to the next.
set(CMAKE_AUTORCC_OPTIONS --format-version 1)
# No path of the build directory in what is built.
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# Where things go in the build tree, so that an import path and a QCA plugin path find them
# without an installation.
set(TRIVEX_LIB_DIR "${CMAKE_BINARY_DIR}/lib")
set(TRIVEX_BIN_DIR "${CMAKE_BINARY_DIR}/bin")
set(TRIVEX_QML_DIR "${CMAKE_BINARY_DIR}/qml/Trivex/Crypto")
set(TRIVEX_QCA_PLUGIN_DIR "${CMAKE_BINARY_DIR}/qca/crypto")
set(TRIVEX_CATALOGUE_DIR "${CMAKE_BINARY_DIR}/translations")

add_compile_definitions(
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_CAST_FROM_BYTEARRAY
    QT_NO_URL_CAST_FROM_STRING
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    QT_NO_FOREACH
    QT_NO_KEYWORDS
    QT_STRICT_ITERATORS
    QT_USE_QSTRINGBUILDER
    QT_DEPRECATED_WARNINGS)

# What is shipped names no folder of the machine that built it. A developer's debugger needs them.
# The last map that fits counts: a build directory may lie among the sources.
foreach(folder "${CMAKE_SOURCE_DIR}" "${CMAKE_BINARY_DIR}")
    add_compile_options("$<$<NOT:$<CONFIG:Debug>>:-ffile-prefix-map=${folder}=.>")
endforeach()

add_compile_options(-Wall -Wextra -Wpedantic)
if(TRIVEX_WERROR)
    add_compile_options(-Werror)
endif()
if(TRIVEX_SANITIZER)
    add_compile_options(-fsanitize=${TRIVEX_SANITIZER} -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${TRIVEX_SANITIZER})
endif()

# trivex_subsystem(<name> SOURCES ... LINK ...)
# A folder of classes, built once as a static library and linked by the QML plugin and the tests.
function(trivex_subsystem name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
    add_library(trivex_${name} STATIC ${ARG_SOURCES})
    target_include_directories(trivex_${name} PUBLIC "${CMAKE_SOURCE_DIR}")
    target_link_libraries(trivex_${name} PUBLIC trivex_qca Qt5::Core ${ARG_LINK})
endfunction()
