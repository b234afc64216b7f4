# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release)
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor
                    -Woverloaded-virtual -Wold-style-cast -Wundef -Wvla)
# Qt's qCDebug() is used as its documentation shows it; what it lacks has another name in clang 19.
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    add_compile_options(-Wno-gnu-zero-variadic-macro-arguments -Wno-c++20-extensions)
endif()
if(BXWIFI_WERROR)
    add_compile_options(-Werror)
endif()

# Debug lines carry no source context, and no build writes its own folder into a binary.
add_compile_definitions(QT_NO_MESSAGELOGCONTEXT QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII
                        QT_NO_FOREACH QT_DISABLE_DEPRECATED_BEFORE=0x050F00)
add_compile_options(-ffile-prefix-map=${CMAKE_SOURCE_DIR}=. -ffile-prefix-map=${CMAKE_BINARY_DIR}=build)

if(BXWIFI_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()
if(BXWIFI_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all
                        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
else()
    add_compile_options(-fstack-protector-strong $<$<CONFIG:Release>:-D_FORTIFY_SOURCE=2>)
    add_link_options(-Wl,--no-undefined)
endif()
add_link_options(-Wl,-z,relro,-z,now -Wl,--as-needed)
include(CheckPIESupported)
check_pie_supported()
