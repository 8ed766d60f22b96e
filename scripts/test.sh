#!/usr/bin/env bash
# The whole test suite: the Windows cross build of the core, the headless tool and the tests, every reader
# of outside files under the fuzzer for a short while, the tests natively, the Windows build's tests and the
# cross-check of the two machine back ends under Wine, then the tests under AddressSanitizer and
# UndefinedBehaviorSanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/dipendenze.sh
installa cmake ninja-build g++ make googletest libgtest-dev libgmock-dev locales g++-mingw-w64-x86-64 qt6-base-dev \
  clang libclang-rt-14-dev libwine win32-loader wine wine64
locale_italiano
jobs=$(nproc)

cmake --preset mingw
cmake --build --preset mingw -j "$jobs"
echo "Windows build: $(ls build/mingw/cli/checkordl-cli.exe build/mingw/tests/checkordl_tests.exe)"

bash scripts/fuzz.sh 20

cmake -S . -B build/test -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build/test -j "$jobs"
(cd build/test && ctest --output-on-failure -j "$jobs")

bash scripts/wine_suite.sh build/test build/mingw

cmake -S . -B build/asan -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCHECKORDL_SANITIZE=ON
cmake --build build/asan -j "$jobs"
(cd build/asan && ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 ctest --output-on-failure -j "$jobs")
