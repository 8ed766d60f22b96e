#!/usr/bin/env bash
# The whole test suite: the Windows cross build of the core and the headless tool, every reader of outside
# files under the fuzzer for a short while, then the tests natively and under AddressSanitizer and
# UndefinedBehaviorSanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/dipendenze.sh
installa cmake ninja-build g++ make googletest libgtest-dev libgmock-dev locales g++-mingw-w64-x86-64 qt6-base-dev \
  clang libclang-rt-14-dev libwine win32-loader
locale_italiano
jobs=$(nproc)

cmake -S . -B build/mingw -G Ninja -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64.cmake -DCMAKE_BUILD_TYPE=Release \
  -DCHECKORDL_TESTS=OFF
cmake --build build/mingw -j "$jobs"
echo "Windows build: $(ls build/mingw/cli/checkordl-cli.exe)"

bash scripts/fuzz.sh 20

cmake -S . -B build/test -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build/test -j "$jobs"
(cd build/test && ctest --output-on-failure -j "$jobs")

cmake -S . -B build/asan -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCHECKORDL_SANITIZE=ON
cmake --build build/asan -j "$jobs"
(cd build/asan && ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 ctest --output-on-failure -j "$jobs")
