# Cross build for 32-bit Windows (x86) with Debian's mingw-w64 (g++-mingw-w64-i686): the program for
# Windows 7 and later, 32- and 64-bit.
set(CHECKORDL_MINGW i686-w64-mingw32)
set(CMAKE_SYSTEM_PROCESSOR x86)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)
