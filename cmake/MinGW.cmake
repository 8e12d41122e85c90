# A toolchain file: builds for 64-bit Windows on another system, with Debian's cross compiler
# (package g++-mingw-w64-x86-64-posix) or another one of the same name. The POSIX flavour has the
# standard library's threads, which Qt needs.
#
# Qt for Windows is looked for in CMAKE_PREFIX_PATH, its tools for this system in
# QT_HOST_PATH; tools/windows/build makes the one and names the other.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# Libraries and packages are Windows', whatever this system has of the same name; programs that
# run in the build are this system's.
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 ${CMAKE_PREFIX_PATH})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
