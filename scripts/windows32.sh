#!/usr/bin/env bash
# The program for 32-bit Windows (7 and later, which also runs on 64-bit Windows): built with Debian's
# mingw-w64 for x86, checked without running it (PE machine i386, the manifest, the same DLLs as the 64-bit
# build, no function that Windows 7 lacks), packed as CheckORDL-<version>-win32.zip, then run under Wine in
# the chroots of scripts/chroot_wine.sh: in a 64-bit prefix of a WoW64 Wine (amd64 chroot) the test suite,
# the Win32 windows, the walk of checkordl.exe and the cross-check against the native tool; in the 32-bit
# Windows of the i386 chroot the test suite and the Win32 windows at 144 dpi. Where a chroot is not made,
# one line says so and the 64-bit build of the same code, which the rest of the suite runs, stands for it.
# usage: scripts/windows32.sh [WINDOWS_64_BUILD [NATIVE_BUILD]]   (default build/mingw and build/release)
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/dipendenze.sh
installa g++-mingw-w64-i686 python3
b64=${1:-build/mingw}
nativo=${2:-build/release}
b=build/mingw32
fail() { echo "windows 32-bit: $*" >&2; exit 1; }

chroot="" mancanti=""
for a in amd64 i386; do
  if bash scripts/chroot_wine.sh pronto $a; then chroot="$chroot $a"; else mancanti="$mancanti $a"; fi
done
[ -z "$mancanti" ] ||
  echo "windows 32-bit: no chroot with Wine for$mancanti (scripts/chroot_wine.sh prepara says why), so the 32-bit build is not run there"
wine32=$([ -n "$chroot" ] && echo 1 || echo 0)

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
# The address and the user's notes beside the programs, as in the 64-bit zip.
indirizzo=$(sed -n 's/^CHECKORDL_SUPPORT_EMAIL:STRING=//p' "$b/CMakeCache.txt")
python3 scripts/testi_windows.py "$b/pacchetti/$zip" "$indirizzo" || fail "contatto.txt or README.txt in $zip"
echo "windows 32-bit: $zip, $(stat -c %s "$b/pacchetti/$zip") bytes; i386, manifest, DLLs and imports checked"

# Without the 32-bit Windows of the i386 chroot, the 64-bit build's window tests take its place at 144 dpi.
if [ "$wine32" = 0 ] || [[ $chroot != *i386* ]]; then
  WINE_PASSI=finestre WINE_DPI=144 bash scripts/wine_suite.sh "$nativo" "$b64" || fail "the 64-bit windows at 144 dpi"
fi
[ "$wine32" = 1 ] || exit 0
# The demo machine for the windows, made here by the native tool, which the i386 chroot cannot run.
strumento=$(mktemp -d "$PWD/$b/strumento.XXXXXX")
trap 'rm -rf "$strumento"' EXIT
cp "$nativo/cli/checkordl-cli" "$strumento/"
"$strumento/checkordl-cli" demo "$strumento/demo" >/dev/null 2>&1 || true
inizio=$(date +%s)
for a in $chroot; do
  passi="suite finestre guida incrocio" dpi=""
  [ $a = amd64 ] || passi="suite finestre" dpi=144
  bash scripts/chroot_wine.sh esegui $a env WINE_PASSI="$passi" WINE_DPI="$dpi" WINE_STRUMENTO="$strumento" \
    bash scripts/wine_suite.sh "$nativo" "$b" || fail "under Wine in the $a chroot"
  echo "windows 32-bit: $a chroot done ($(($(date +%s) - inizio)) s)"
done
