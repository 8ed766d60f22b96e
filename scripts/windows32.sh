#!/usr/bin/env bash
# The program for 32-bit Windows (7 and later, which also runs on 64-bit Windows): built with Debian's
# mingw-w64 for x86, checked without running it (PE machine i386, the manifest, the same DLLs as the 64-bit
# build, no function that Windows 7 lacks), packed as CheckORDL-<version>-win32.zip, and its test suite run
# under Wine where Wine's 32-bit part (wine32:i386) can be installed. Where it cannot, one line says so and
# the 64-bit build of the same code, which the rest of the suite runs, stands for it.
# usage: scripts/windows32.sh [WINDOWS_64_BUILD]   (default build/mingw)
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/dipendenze.sh
. scripts/wine.sh
installa g++-mingw-w64-i686 python3
b64=${1:-build/mingw}
b=build/mingw32
fail() { echo "windows 32-bit: $*" >&2; exit 1; }

# Wine's 32-bit part, where the package archive serves it; the machine is left as it was where it does not.
wine32=0
if dpkg-query -W -f='${Status}' wine32:i386 2>/dev/null | grep -q 'install ok installed'; then
  wine32=1
else
  sudo=""
  [ "$(id -u)" -eq 0 ] || sudo="sudo"
  straniera=$(dpkg --print-foreign-architectures | grep -c '^i386$' || true)
  if $sudo dpkg --add-architecture i386 && $sudo env DEBIAN_FRONTEND=noninteractive apt-get update -qq >/dev/null 2>&1 &&
    $sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends wine32:i386 >/dev/null 2>&1; then
    wine32=1
  elif [ "$straniera" = 0 ]; then
    $sudo dpkg --remove-architecture i386 2>/dev/null || true
    $sudo env DEBIAN_FRONTEND=noninteractive apt-get update -qq >/dev/null 2>&1 || true
  fi
fi
[ "$wine32" = 1 ] || echo "windows 32-bit: wine32:i386 cannot be installed here, so the 32-bit build is checked but not run (its code runs in the 64-bit build)"

# The test suite only where it can run.
cmake --preset mingw32 -DCHECKORDL_TESTS=$([ "$wine32" = 1 ] && echo ON || echo OFF) >/dev/null
cmake --build --preset mingw32
exe="$b/cli/checkordl.exe $b/cli/checkordl-cli.exe"

# The manifest an executable carries.
manifesto() {
  python3 -c 'import re,sys; d=open(sys.argv[1],"rb").read(); print(re.search(rb"<\?xml.*?</assembly>", d, re.S).group().decode())' "$1"
}
for e in $exe; do
  i686-w64-mingw32-objdump -f "$e" | grep -q '^architecture: i386,' || fail "$e is not an i386 program"
  # The manifest as the 64-bit program carries it, for x86.
  atteso=$(manifesto "$b64/cli/$(basename "$e")" | sed 's/processorArchitecture="amd64"/processorArchitecture="x86"/g')
  [ "$(manifesto "$e")" = "$atteso" ] || fail "$e: manifest differs from the 64-bit program's"
  grep -q 'processorArchitecture="x86"' <<<"$atteso" && grep -q 'level="asInvoker"' <<<"$atteso" ||
    fail "$e: manifest not for x86, or not asInvoker"
  [ "$(python3 scripts/importi_pe.py i686-w64-mingw32-objdump "$e" --dll)" = \
    "$(python3 scripts/importi_pe.py x86_64-w64-mingw32-objdump "$b64/cli/$(basename "$e")" --dll)" ] ||
    fail "$e imports other DLLs than the 64-bit build"
done
# Every function imported by either build is one that Windows 7 has.
mancanti=$(cat <(python3 scripts/importi_pe.py i686-w64-mingw32-objdump $exe) \
  <(python3 scripts/importi_pe.py x86_64-w64-mingw32-objdump "$b64/cli/checkordl.exe" "$b64/cli/checkordl-cli.exe") |
  sort -u | comm -23 - <(grep -v '^#' scripts/windows7.txt | sort -u))
[ -z "$mancanti" ] || fail "imports not known to be on Windows 7 (scripts/windows7.txt): $mancanti"

# The zip a user unpacks anywhere.
versione=$(grep -oP 'project\(CheckORDL VERSION \K[0-9.]+' CMakeLists.txt)
zip=CheckORDL-$versione-win32.zip
(cd "$b" && cpack -G ZIP -B "$PWD/pacchetti" >/dev/null)
[ -f "$b/pacchetti/$zip" ] || fail "cpack made no $zip"
elenco=$(python3 -m zipfile -l "$b/pacchetti/$zip")
for e in checkordl.exe checkordl-cli.exe; do
  grep -q "/$e " <<<"$elenco" || fail "$zip holds no $e"
done
echo "windows 32-bit: $zip, $(stat -c %s "$b/pacchetti/$zip") bytes; i386, manifest, DLLs and imports checked"

if [ "$wine32" = 1 ]; then
  wine_ambiente
  export LC_ALL=C.UTF-8
  t=$(mktemp -d)
  trap 'WINEPREFIX=$t/prefix wineserver -k 2>/dev/null || true; rm -rf "$t"' EXIT
  wine_prefisso "$t/prefix"
  wine_regionale
  ctest --test-dir "$b" --output-on-failure --timeout 600 2>&1 | grep -v '^[0-9]*: wine: ' ||
    fail "the test suite failed under Wine"
fi
