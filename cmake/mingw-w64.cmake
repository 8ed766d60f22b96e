# Cross build for Windows with Debian's mingw-w64: 64-bit here, 32-bit (x86) where mingw-w64-i686.cmake
# names its compilers first.
if(NOT CHECKORDL_MINGW)
  set(CHECKORDL_MINGW x86_64-w64-mingw32)
  set(CMAKE_SYSTEM_PROCESSOR x86_64)
endif()
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${CHECKORDL_MINGW}-gcc-posix)
set(CMAKE_CXX_COMPILER ${CHECKORDL_MINGW}-g++-posix)
set(CMAKE_RC_COMPILER ${CHECKORDL_MINGW}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${CHECKORDL_MINGW})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")

# ctest runs the Windows executables through Wine when it is there (the prefix is the caller's WINEPREFIX).
find_program(CHECKORDL_WINE NAMES wine wine64)
if(CHECKORDL_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${CHECKORDL_WINE})
endif()
