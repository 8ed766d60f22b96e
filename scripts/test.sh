#!/usr/bin/env bash
# The whole test suite: the Windows cross build of the core, the headless tool and the tests, every reader
# of outside files under the fuzzer for a short while, a plain Release build as a packager makes it with the
# tests natively, the Windows build's tests and the cross-check of the two machine back ends under Wine, the
# packages installed, run and removed, the tests under AddressSanitizer and UndefinedBehaviorSanitizer, and
# the program for 32-bit Windows built, checked, packed and run under Wine in two Debian chroots (a WoW64 one
# and a 32-bit one), which are made meanwhile or reused.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/dipendenze.sh
installa cmake ninja-build g++ make googletest libgtest-dev libgmock-dev locales g++-mingw-w64-x86-64 g++-mingw-w64-i686 qt6-base-dev \
  nlohmann-json3-dev nsis lintian appstream dpkg-dev file procps \
  clang libwine win32-loader wine wine64 python3 debootstrap clang-format git
installa_clang
locale_italiano
# Made above: the test of the decimal comma must find it, not skip.
export CHECKORDL_LOCALE_RICHIESTO=1
jobs=$(nproc)
inizio=$(date +%s)
tappa() { echo "== $1 ($(($(date +%s) - inizio)) s)"; }

# The chroots for the 32-bit program, made while the builds run (or found made by an earlier run).
mkdir -p build
bash scripts/chroot_wine.sh prepara >build/chroot_wine.log 2>&1 &
chroot_wine=$!

# Test code stays a modest share of the code, every row of the mutation table still finds its lines, no
# layer reaches above itself, and the code is laid out as .clang-format says.
python3 scripts/rapporto_test.py --max 0.35
python3 scripts/mutanti_righe.py
python3 scripts/strati.py
bash scripts/formato.sh

tappa "Windows build"
cmake --preset mingw
cmake --build --preset mingw -j "$jobs"
echo "Windows build: $(ls build/mingw/cli/checkordl-cli.exe build/mingw/cli/checkordl.exe build/mingw/tests/checkordl_tests.exe)"

tappa "fuzzing"
bash scripts/fuzz.sh 20

# What a packager or a user gets from the most common configure line: no developer options, warnings only
# warnings. It must build, and the native tests and the cross-check under Wine run on it. Warnings are
# errors in the other builds (Windows, fuzzing, sanitizers).
tappa "plain Release build"
cmake --preset release >/dev/null
cmake --build --preset release -j "$jobs"

tappa "native tests"
(cd build/release && ctest --output-on-failure -j "$jobs")

tappa "Wine"
bash scripts/wine_suite.sh build/release build/mingw

# The Debian package and the Windows installer, installed, run and removed as their users do it.
tappa "packages"
bash scripts/pacchetti.sh build/release build/mingw

tappa "sanitizers"
cmake --preset asan
cmake --build --preset asan -j "$jobs"
ctest --preset asan -j "$jobs"

# The program for 32-bit Windows, checked and packed; run under Wine where the chroots were made.
tappa "Windows 32-bit"
wait "$chroot_wine" || true
cat build/chroot_wine.log
bash scripts/windows32.sh build/mingw build/release
tappa "done"
