# What every target is compiled with. Link `velmora_options` privately, or
# `velmora_strict_options` below.
add_library(velmora_options INTERFACE)

target_compile_definitions(velmora_options INTERFACE
    # The program stays clear of everything that Qt has deprecated up to 6.8.
    QT_DISABLE_DEPRECATED_BEFORE=0x060800
    QT_DISABLE_DEPRECATED_UP_TO=0x060800
    # What newer ones have deprecated since is warned of, under both names of this setting.
    QT_DEPRECATED_WARNINGS_SINCE=0x070000
    QT_WARN_DEPRECATED_UP_TO=0x070000
    QT_NO_CAST_TO_ASCII
    QT_NO_FOREACH
    QT_USE_QSTRINGBUILDER)

if(MSVC)
    target_compile_options(velmora_options INTERFACE /W4 /utf-8)
else()
    target_compile_options(velmora_options INTERFACE
        -Wall -Wextra -Wpedantic $<$<CXX_COMPILER_ID:GNU>:-Wshadow=local> -Wnon-virtual-dtor
        -Wold-style-cast -Woverloaded-virtual -Wnull-dereference)
endif()
if(VELMORA_WARNINGS_AS_ERRORS)
    target_compile_options(velmora_options INTERFACE $<IF:$<BOOL:${MSVC}>,/WX,-Werror>)
endif()

# A release reads files and replies that are not its own: it is built as hardened as the
# system's own programs.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT WIN32)
    set(CMAKE_POSITION_INDEPENDENT_CODE ON)
    target_compile_options(velmora_options INTERFACE
        $<$<CONFIG:Release>:-fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2>)
    target_link_options(velmora_options INTERFACE
        $<$<CONFIG:Release>:-Wl,-z,relro,-z,now>)
endif()

if(VELMORA_SANITIZERS)
    target_compile_options(velmora_options INTERFACE
        -fsanitize=${VELMORA_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(velmora_options INTERFACE -fsanitize=${VELMORA_SANITIZERS})
endif()

if(VELMORA_FUZZ)
    if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        message(FATAL_ERROR "VELMORA_FUZZ needs Clang; the preset \"fuzz\" asks for it.")
    endif()
    # The fuzzer learns from the program's own code which inputs are worth keeping.
    target_compile_options(velmora_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

if(VELMORA_COVERAGE)
    target_compile_options(velmora_options INTERFACE --coverage -fprofile-update=atomic)
    target_link_options(velmora_options INTERFACE --coverage)
endif()

# Stricter, for the program itself: some of Qt's test macros convert silently.
add_library(velmora_strict_options INTERFACE)
if(NOT MSVC)
    target_compile_options(velmora_strict_options INTERFACE -Wconversion -Wsign-conversion)
endif()
target_link_libraries(velmora_strict_options INTERFACE velmora_options)
