#!/usr/bin/env bash
# The whole test suite: the native build, the same tests under AddressSanitizer and
# UndefinedBehaviorSanitizer, and the Windows cross build of the core and the headless tool.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/dipendenze.sh
installa ca-certificates cmake ninja-build g++ make googletest libgtest-dev libgmock-dev locales \
  g++-mingw-w64-x86-64
locale_italiano

jobs=$(nproc)
cmake -S . -B build/test -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build/test -j "$jobs"
(cd build/test && ctest --output-on-failure -j "$jobs")

cmake -S . -B build/asan -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCHECKORDL_SANITIZE=ON
cmake --build build/asan -j "$jobs"
(cd build/asan && ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 ctest --output-on-failure -j "$jobs")

cmake -S . -B build/mingw -G Ninja -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64.cmake -DCMAKE_BUILD_TYPE=Release \
  -DCHECKORDL_TESTS=OFF
cmake --build build/mingw -j "$jobs"
echo "Windows build: $(ls build/mingw/cli/checkordl-cli.exe)"
