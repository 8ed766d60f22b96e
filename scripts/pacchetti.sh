#!/usr/bin/env bash
# The packages as their users get them. The Debian package: made, checked by lintian and appstreamcli,
# installed with apt-get, run by an ordinary user (the headless tool's demo in that user's home, the window
# program offscreen for a few seconds), removed, and nothing of it left in /usr. The Windows installer: run
# silently under Wine by the same user in a fresh prefix, the installed tool and the version resources
# asked, uninstalled silently, and nothing of it left. The zip holds the same programs; both carry
# contatto.txt with the build's address and README.txt.
# usage: scripts/pacchetti.sh [NATIVE_BUILD [WINDOWS_BUILD]]   (default build/release and build/mingw)
# As root (through sudo otherwise): it installs a package and makes a user of its own, and takes both away
# at the end.
set -euo pipefail
[ "$(id -u)" = 0 ] || exec sudo -- bash "$0" "$@"
cd "$(dirname "$0")/.."
nativo=$(realpath "${1:-build/release}")
windows=$(realpath "${2:-build/mingw}")
inizio=$(date +%s)
fail() { echo "packages: FAIL: $*" >&2; exit 1; }
versione=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$nativo/CMakeCache.txt")
[ -n "$versione" ] || fail "no project version in $nativo/CMakeCache.txt"

u=checkordl-prova
casa=/home/$u
uscita=
# The user's own session: a clean environment; Wine without a display, without offers to install Mono or
# Gecko and without menu entries.
come_utente() {
  runuser -u "$u" -- env -i PATH=/usr/local/bin:/usr/bin:/bin HOME="$casa" USER="$u" LOGNAME="$u" \
    XDG_RUNTIME_DIR="$casa/run" LANG=C.UTF-8 WINEDEBUG=-all WINEARCH=win64 WINEPREFIX="$casa/wine" \
    WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d" "$@"
}
fine() {
  if id "$u" >/dev/null 2>&1; then
    come_utente wineserver -k 2>/dev/null || true
    pkill -KILL -u "$u" 2>/dev/null || true
    userdel -r "$u" 2>/dev/null || true
  fi
  dpkg -s checkordl >/dev/null 2>&1 && apt-get remove -y -qq checkordl >/dev/null
  [ -z "$uscita" ] || rm -rf "$uscita"
}
trap fine EXIT
# What an earlier run left, if it was stopped halfway.
fine
uscita=$(mktemp -d)
chmod 755 "$uscita"
useradd -m -s /bin/bash "$u"
install -d -m 700 -o "$u" "$casa/run"

cmake --build "$nativo" -j "$(nproc)" >/dev/null
(cd "$nativo" && cpack -G DEB -B "$uscita" >/dev/null)
deb=checkordl_${versione}_$(dpkg --print-architecture).deb
[ -f "$uscita/$deb" ] || fail "cpack made no $deb: $(ls "$uscita")"
come_utente lintian --fail-on error "$uscita/$deb" || fail "lintian found errors in $deb"
(cd "$uscita" && DEBIAN_FRONTEND=noninteractive apt-get install -y -qq "./$deb" >/dev/null 2>&1) ||
  fail "apt-get could not install $deb"
appstreamcli validate --no-net /usr/share/metainfo/org.checkordl.CheckORDL.metainfo.xml ||
  fail "appstreamcli refuses the metainfo file"
[ "$(come_utente checkordl-cli --version)" = "checkordl-cli $versione" ] || fail "checkordl-cli --version"
come_utente checkordl-cli demo "$casa/prefisso" > "$uscita/demo" 2>&1 || fail "demo: $(tail -5 "$uscita/demo")"
[ -d "$casa/.local/share/checkordl/Dati" ] || fail "the demo's working files are not in the user's data folder"
set +e
come_utente env QT_QPA_PLATFORM=offscreen WINEPREFIX="$casa/prefisso" timeout 5 checkordl; rc=$?
set -e
[ $rc = 124 ] || fail "checkordl did not stay up for 5 s (exit $rc)"
DEBIAN_FRONTEND=noninteractive apt-get remove -y -qq checkordl >/dev/null
resti=$(find /usr -iname '*checkordl*' 2>/dev/null || true)
[ -z "$resti" ] || fail "left in /usr after removal: $resti"
echo "Debian package: $deb, $(stat -c %s "$uscita/$deb") bytes, lintian and appstreamcli clean"

# Windows: the installer and the zip from the cross build; checkordl.exe is in them when the build makes it.
(cd "$windows" && cpack -G "NSIS;ZIP" -B "$uscita" >/dev/null)
setup=CheckORDL-$versione-setup.exe
zip=CheckORDL-$versione-win64.zip
[ -f "$uscita/$setup" ] && [ -f "$uscita/$zip" ] || fail "cpack made no $setup or $zip: $(ls "$uscita")"
finestra=$([ -f "$windows/cli/checkordl.exe" ] && echo checkordl.exe || true)
elenco=$(python3 -m zipfile -l "$uscita/$zip")
for exe in checkordl-cli.exe $finestra; do
  grep -q "/$exe " <<< "$elenco" || fail "$zip holds no $exe"
done
# Beside the programs: the build's support address in contatto.txt, and README.txt.
indirizzo=$(sed -n 's/^CHECKORDL_SUPPORT_EMAIL:STRING=//p' "$windows/CMakeCache.txt")
python3 scripts/testi_windows.py "$uscita/$zip" "$indirizzo" || fail "the texts beside the programs in $zip"
cp "$uscita/$setup" "$casa/"
chown "$u" "$casa/$setup"
come_utente wineboot -i >/dev/null 2>&1 || true
come_utente wineserver -w
come_utente wine "$casa/$setup" /S
come_utente wineserver -w
utente_c=$casa/wine/drive_c/users/$u
cartella=$utente_c/AppData/Local/Programs/CheckORDL
collegamento="$utente_c/AppData/Roaming/Microsoft/Windows/Start Menu/Programs/CheckORDL.lnk"
chiave='HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\CheckORDL'
[ -f "$cartella/checkordl-cli.exe" ] && [ -f "$cartella/Uninstall.exe" ] || fail "nothing installed in $cartella"
come_utente wine reg query "$chiave" >/dev/null 2>&1 || fail "no uninstaller entry for the user"
strumento='C:\users\'$u'\AppData\Local\Programs\CheckORDL\checkordl-cli.exe'
[ "$(come_utente wine "$strumento" --version | tr -d '\r')" = "checkordl-cli $versione" ] ||
  fail "installed checkordl-cli.exe --version"
# The window program's version resource, or the tool's own where the build has no window program.
letto=${finestra:-checkordl-cli.exe}
[ "$(come_utente wine "$strumento" version "${strumento%\\*}\\$letto" | tr -d '\r')" = "$versione" ] ||
  fail "the version resource of $letto"
if [ -n "$finestra" ]; then
  [ -f "$cartella/$finestra" ] && [ -f "$collegamento" ] || fail "no $finestra or no Start-menu shortcut"
fi
python3 scripts/testi_windows.py "$cartella" "$indirizzo" || fail "the texts the installer put beside the programs"
come_utente wine "$cartella/Uninstall.exe" /S
come_utente wineserver -w
[ ! -e "$cartella" ] || fail "left after uninstalling: $(ls "$cartella")"
[ ! -e "$collegamento" ] || fail "the Start-menu shortcut outlived the uninstaller"
! come_utente wine reg query "$chiave" >/dev/null 2>&1 || fail "the uninstaller entry outlived the uninstaller"
echo "Windows installer: $setup, $(stat -c %s "$uscita/$setup") bytes; zip: $zip, $(stat -c %s "$uscita/$zip") bytes"
echo "packages: $(($(date +%s) - inizio)) s"
