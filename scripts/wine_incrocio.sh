#!/usr/bin/env bash
# One Wine prefix, read twice: by the headless tool built for this system (the Wine prefix back end) and by
# its Windows build running under Wine (Wine's own Win32 calls). Every answer must be the same byte for
# byte; where the two machines differ for a reason of their own, the comparison says so below.
# usage: scripts/wine_incrocio.sh [NATIVE_BUILD [WINDOWS_BUILD]]   (default build/release and build/mingw)
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/wine.sh
nativo=$(realpath "${1:-build/release}")
windows=$(realpath "${2:-build/mingw}")
# The report items, from the tool's usage text (the line in parentheses); each one is compared on the
# snapshot of the check run.
voci_report=$("$nativo/cli/checkordl-cli" 2>&1 | sed -n 's/^ *(\([a-z ]*\))$/\1/p' || true)
[ -n "$voci_report" ] || {
  echo "wine cross-check: no report items in the usage text of $nativo/cli/checkordl-cli" >&2
  exit 1
}

t=$(mktemp -d)
wine_ambiente
fine() {
  WINEPREFIX=$t/prefix wineserver -k 2>/dev/null || true
  chattr -i "$t/prefix/drive_c" 2>/dev/null || chmod u+w "$t/prefix/drive_c" 2>/dev/null || true
  rm -rf "$t"
}
trap fine EXIT
wine_prefisso "$t/prefix"
p=$WINEPREFIX
# Host names are UTF-8 to Wine only in a UTF-8 locale; the C one keeps the forms of numbers and dates plain.
export LC_ALL=C.UTF-8
wine_regionale
c=$p/drive_c

# Both tools from one folder on C:, so that the program folder is the same Windows path for both.
mkdir -p "$c/Strumenti"
cp "$nativo/cli/checkordl-cli" "$windows/cli/checkordl-cli.exe" "$c/Strumenti/"
# The shipped rules beside both, as the builds and the packages place them: both must read them alike.
cp -r "$nativo/cli/regole" "$c/Strumenti/"
cp "$nativo/tools/checkordl_sonda" "$windows/tools/checkordl_sonda.exe" "$c/Strumenti/"
nat=$c/Strumenti/checkordl-cli
win=$c/Strumenti/checkordl-cli.exe

differenze=0
casi=0
# Wine's own lines on stderr are the emulator's, not the program's.
senza_wine() { grep -v '^wine: ' || true; }
esegui_nativo() { (cd "$t" && "$nat" "$@" >"$t/n.out" 2>"$t/n.err" && echo 0 >"$t/n.rc" || echo $? >"$t/n.rc"); }
esegui_wine() {
  local tentativo
  for tentativo in 1 2; do
    (cd "$t" && wine_esegui "$win" "$@" >"$t/w.out" 2>"$t/w.raw" && echo 0 >"$t/w.rc" || echo $? >"$t/w.rc")
    # Wine that could not start the program (a line of its own, nothing of the program's) gets one more try:
    # a loaded machine makes that happen now and then.
    grep -q '^wine: ' "$t/w.raw" && [ "$(cat "$t/w.rc")" != 0 ] && [ ! -s "$t/w.out" ] || break
    echo "wine cross-check: Wine did not start $*: $(grep '^wine: ' "$t/w.raw" | head -1)"
  done
  senza_wine <"$t/w.raw" >"$t/w.err"
}
segnala() {
  differenze=$((differenze + 1))
  echo "DIFFERENT: $1"
  shift
  for f in "$@"; do
    diff <(od -An -c "$t/n.$f") <(od -An -c "$t/w.$f") | head -20 || true
  done
}
come_terminale() {
  iconv -f WINDOWS-1252 -t UTF-8 "$1" | sed 's/\r$//' >"$1.u"
  mv "$1.u" "$1"
}
# confronta NAME VERB ARGS...: the same call on both sides; output, messages and exit status.
confronta() {
  local nome=$1
  shift
  casi=$((casi + 1))
  esegui_nativo "$@"
  esegui_wine "$@"
  # Our own text goes to a terminal in its encoding: UTF-8 with LF here, Windows-1252 with CR LF on Windows.
  case $1 in rules | findings | compare | anonymize) come_terminale "$t/w.out" ;; esac
  # The environment report's lines that differ between the builds by nature (maschera_prospetto).
  if [ "${*: -1}" = environment ]; then
    maschera_prospetto "$t/n.out"
    maschera_prospetto "$t/w.out"
  fi
  cmp -s "$t/n.out" "$t/w.out" && cmp -s "$t/n.err" "$t/w.err" && cmp -s "$t/n.rc" "$t/w.rc" ||
    segnala "$nome" out err rc
  # WINE_INCROCIO_MOSTRA=1 shows what was compared.
  [ -z "${WINE_INCROCIO_MOSTRA:-}" ] || echo "$nome: $(head -c 100 "$t/n.out" | tr '\r\n\0' '  .')"
}

# ---- The registry and the files, written the way Wine writes them ----
reg() { wine_esegui reg add "$@" /f >/dev/null; }
ap='HKLM\Software\Microsoft\Windows\CurrentVersion\App Paths'
mkdir -p "$c/Ordelio" "$c/Program Files/Con Spazi" "$c/Program Files (x86)" "$c/Perché" "$c/Tools.exe/Ordelio"
for f in Ordelio/ordl2009.exe Ordelio/solopath.exe Ordelio/cartella.exe Ordelio/barra.exe Ordelio/MAIUSC.EXE \
  Ordelio/doppio.exe "Program Files/tool.exe" "Program Files/Con Spazi/spazi.exe" "Program Files/vuoto.exe" \
  "Program Files/libero.exe" "Program Files/sparito.exe" "Program Files/espanso.exe" "Perché/ordl2009.exe" \
  "Program Files (x86)/vuoto.exe" "Program Files (x86)/libero.exe" \
  Tools.exe/Ordelio/x.exe; do
  printf 'MZ' >"$c/$f"
done
reg "$ap\\ordl2009.exe" /ve /d 'C:\Ordelio\ordl2009.exe'
reg "$ap\\solopath.exe" /v Path /d 'C:\Ordelio'
reg "$ap\\cartella.exe" /ve /d 'C:\Ordelio'
reg "$ap\\barra.exe" /ve /d 'C:\Ordelio\'
reg "$ap\\MAIUSC.EXE" /ve /d 'C:\Ordelio\MAIUSC.EXE'
reg "$ap\\doppio.exe" /ve /d 'C:\Ordelio\doppio.exe'
reg "$ap\\doppio.exe" /v Path /d 'C:\Altrove'
reg "$ap\\tool.exe" /ve /d '"C:\Program Files\tool.exe" "%1"'
reg "$ap\\spazi.exe" /ve /d '"C:\Program Files\Con Spazi\spazi.exe"'
reg "$ap\\numero.exe" /ve /t REG_DWORD /d 2009
reg "$ap\\vuoto.exe" /ve /d ''
reg "$ap\\sparito.exe" /ve /d 'C:\Vecchio\sparito.exe'
reg "$ap\\perché.exe" /ve /d 'C:\Perché\ordl2009.exe'
reg "$ap\\espanso.exe" /ve /t REG_EXPAND_SZ /d '%ProgramFiles%\espanso.exe'
reg "$ap\\x.exe" /ve /d 'C:\Tools.exe\Ordelio'
# UAC on, as on a default Windows (Wine's own prefixes have it off): the view through the VirtualStore.
reg 'HKLM\Software\Microsoft\Windows\CurrentVersion\Policies\System' /v EnableLUA /t REG_DWORD /d 1

# The executables whose versions are read: PE32+ and PE32 files that Wine and Debian ship, most of them
# with a version block (its key in UTF-16), a few without.
mkdir -p "$c/Versioni"
con_blocco() { grep -l -a -P 'V\x00S\x00_\x00V\x00E\x00R' "$@" 2>/dev/null || true; }
for d in /usr/lib/x86_64-linux-gnu/wine/x86_64-windows /usr/lib/x86_64-linux-gnu/wine/i386-windows \
  /usr/lib/wine/x86_64-windows /usr/lib/wine/i386-windows; do
  [ -d "$d" ] || continue
  pre=$(basename "$d" | cut -d- -f1)
  ( cd "$d" && con_blocco *.exe *.dll | awk 'NR % 7 == 1' | head -24
    ls *.exe *.dll 2>/dev/null | awk 'NR % 101 == 3' | head -4 || true) | while read -r f; do
    cp "$d/$f" "$c/Versioni/${pre}_$f"
  done
  # One program of each bitness whose imports and layers the environment is read for.
  cp "$d/notepad.exe" "$c/Versioni/${pre}_notepad.exe" 2>/dev/null || true
done
# Wine marks its own modules (and the zlib1.dll that Debian's libwine copies in) with "Wine builtin DLL" in
# the DOS stub, and loads a marked file by its own rules: a marked 32-bit file in a 64-bit-only Wine is not
# read at all. Windows ignores the stub; the copies lose the mark so that both sides read them as Windows does.
for f in "$c"/Versioni/*; do
  [ "$(dd if="$f" bs=1 skip=64 count=16 2>/dev/null)" = 'Wine builtin DLL' ] || continue
  head -c 16 /dev/zero | dd of="$f" bs=1 seek=64 conv=notrunc 2>/dev/null
done
[ ! -f /usr/share/win32/win32-loader.exe ] || cp /usr/share/win32/win32-loader.exe "$c/Versioni/"
printf 'not an executable' >"$c/Versioni/testo.exe"

# Names as a host may hold them, for the machine layer's own answers.
s=$c/Sonda
mkdir -p "$s/Sub" "$s/Cart " "$s/.cartella"
for f in normale.txt Maiusc.TXT MIXED.txt mixed.TXT2 _sotto.txt .punto 'punto.' 'spazio ' con nul.txt \
  Perché.txt Sub/dentro.txt; do
  printf 'x' >"$s/$f"
done
printf 'ro' >"$s/ro.txt"
chmod 444 "$s/ro.txt"
ln -s normale.txt "$s/link.txt"
ln -s manca.txt "$s/rotto.txt"
for v in zeta Alfa _sotto a 'a b' ab Z '[x' Àccento; do
  reg 'HKLM\Software\Sonda' /v "$v" /d "$v"
done
reg 'HKLM\Software\Sonda' /ve /d predefinito
reg 'HKLM\Software\Sonda' /v numero /t REG_DWORD /d 7

# Compatibility layers of two of those executables, per user and for the machine in both views.
lv='Software\Microsoft\Windows NT\CurrentVersion\AppCompatFlags\Layers'
for f in "$c"/Versioni/*_notepad.exe; do
  [ -f "$f" ] || continue
  w='C:\Versioni\'$(basename "$f")
  reg 'HKCU\'"$lv" /v "$w" /d '~ HIGHDPIAWARE'
  reg 'HKLM\'"$lv" /v "$w" /d '~ RUNASADMIN WINXPSP3'
  reg 'HKLM\'"$lv" /v "$w" /d '~ WIN7RTM' /reg:32
done
# Controlled Folder Access, on.
reg 'HKLM\SOFTWARE\Microsoft\Windows Defender\Windows Defender Exploit Guard\Controlled Folder Access' \
  /v EnableControlledFolderAccess /t REG_DWORD /d 1

# The demo machine's installations, registered in Wine's registry.
"$nat" demo "$t/demo" >/dev/null 2>&1 || true
cp -r "$t/demo/drive_c/Giochi" "$t/demo/drive_c/Ordelio" "$c/"
reg "$ap\\tomb4.exe" /ve /d 'C:\Giochi\Trle\tomb4.exe'
# The prefix's registry files are written when its server ends.
timeout 120 wineserver -w
# From here on one server serves every Windows run.
wineserver -p 60

# ---- the machine layer itself, one request a line (tools/sonda_macchina.cpp) ----
cat >"$t/richieste" <<'FINE'
dir	C:\Sonda\*	0
dir	C:\Sonda\	22
dir	C:\SONDA\m*	6
dir	C:\Sonda\*.	6
dir	C:\Sonda\punto.	6
dir	C:\Sonda\normale.txt .	6
dir	C:\Sonda\NUL.bin	6
dir	C:\	16
attr	C:\Sonda\NORMALE.TXT
attr	C:\Sonda\normale.txt. .
attr	C:\Sonda\punto.
attr	C:\Sonda\spazio
attr	C:\Sonda\Cart \
attr	C:\Sonda\Cart \x
attr	C:\Sonda\Sub.\dentro.txt
attr	C:\Sonda\normale.txt\x
attr	C:\Sonda\ro.txt
attr	C:\Sonda\.cartella
attr	C:\Sonda\rotto.txt
attr	C:\Sonda\Perché.txt
attr	C:\Sonda\com1.log
attr	C:\Manca\nul
attr	Q:\x
len	C:\Sonda\con
len	C:\Sonda\Sub
read	C:\Sonda\normale.txt
read	C:\Sonda\nul.txt
read	C:\Sonda\con.txt
read	C:\Sonda\normale.txt\
read	C:\Sonda\Sub
reg	Software\Sonda
reg	SOFTWARE\\sonda\
regname	Software\Sonda	ALFA
reg	Software\Manca
drive	C:\
drive	Z:\
drive	Q:\
special	38
special	42
special	16
special	28
os
windows
exes	C:\Versioni	x86_64_notepad.exe	I386_NOTEPAD.EXE
vstore	C:\Program Files (x86)\Trle	3
FINE
# The environment of each executable the versions were read from: its imports and where each is found for
# its bitness, its layers.
for f in "$c"/Versioni/*; do printf 'exe\tC:\\Versioni\\%s\n' "$(basename "$f")"; done >>"$t/richieste"
casi=$((casi + 1))
(cd "$t" && "$c/Strumenti/checkordl_sonda" <"$t/richieste" >"$t/n.sonda")
(cd "$t" && wine_esegui "$c/Strumenti/checkordl_sonda.exe" <"$t/richieste" 2>/dev/null >"$t/w.sonda")
[ -z "${WINE_INCROCIO_MOSTRA:-}" ] || cat "$t/n.sonda"
cmp -s "$t/n.sonda" "$t/w.sonda" || {
  differenze=$((differenze + 1))
  echo "DIFFERENT: machine probe"
  diff "$t/n.sonda" "$t/w.sonda" || true
}

# ---- version ----
for f in $(ls "$c/Versioni"); do
  confronta "version $f" version "C:\\Versioni\\$f"
done
confronta "version of a missing file" version 'C:\Versioni\manca.exe'
confronta "version of the demo editor" version 'C:\Giochi\Trle\tomb4.exe'
confronta "version of the demo archive manager" version 'C:\Ordelio\ordl2009.exe'

# ---- find-exe: every form of App Paths entry, the program-files folder, nothing ----
for n in ordl2009.exe solopath.exe cartella.exe barra.exe maiusc.exe MAIUSC.EXE doppio.exe tool.exe spazi.exe \
  numero.exe vuoto.exe sparito.exe perché.exe espanso.exe x.exe libero.exe manca.exe 'C:\Altrove\ordl2009.exe'; do
  confronta "find-exe $n" find-exe "$n"
done

# ---- discover ----
confronta discover discover

# ---- check on the demo machine, and the snapshot member by member ----
# The header's disk figures (the free space of C: and of the largest drive, and its letter) move with every
# file written anywhere on the host while the two runs go; the rest of the header must not differ.
maschera() {
  head -c 774 "$1"
  head -c 17 /dev/zero
  tail -c +792 "$1"
}
# The environment member differs between the builds by nature, and only there: when the check ran ("made"),
# the build's bitness ("program" "bits"), whether it runs under WOW64 ("windows" "wow64": each build says it of
# itself, and a 32-bit Windows build under a 64-bit prefix does) and Wine's version, which the prefix
# does not say ("windows" "wine_version"). Those fields are blanked, nothing else.
maschera_ambiente() {
  python3 -c 'import json, sys
j = json.load(sys.stdin)
j["made"] = None
for chiave, campo in (("program", "bits"), ("windows", "wow64"), ("windows", "wine_version")):
    if isinstance(j.get(chiave), dict):
        j[chiave][campo] = None
json.dump(j, sys.stdout, indent=2, sort_keys=True)'
}
# The same in the report item: its lines "Made:", "Program:", "Runs as:" and "Wine:".
maschera_prospetto() {
  grep -av -E '^(Made|Program|Runs as|Wine):' "$1" >"$1.m" || true
  mv "$1.m" "$1"
}
# The snapshots $t/n.bin and $t/w.bin, table and members.
confronta_snapshot() {
  rm -rf "$t/n.membri" "$t/w.membri"
  mkdir -p "$t/n.membri" "$t/w.membri"
  # The environment member's size follows those fields (Wine's version is there or not): its row keeps its
  # name and loses its size; its bytes are compared below.
  "$nat" unpack "$t/n.bin" "$t/n.membri" | sed 's/\(ambiente\.json\t\)[0-9]*$/\1-/' >"$t/n.tabella" || true
  "$nat" unpack "$t/w.bin" "$t/w.membri" | sed 's/\(ambiente\.json\t\)[0-9]*$/\1-/' >"$t/w.tabella" || true
  casi=$((casi + 1))
  [ -s "$t/n.tabella" ] && cmp -s "$t/n.tabella" "$t/w.tabella" || segnala "$1: snapshot table" tabella
  for m in $(ls "$t/n.membri"); do
    casi=$((casi + 1))
    if [ "$m" = Infofile.bin ]; then
      maschera "$t/n.membri/$m" >"$t/n.membro"
      maschera "$t/w.membri/$m" >"$t/w.membro"
    elif [ "$m" = ambiente.json ]; then
      maschera_ambiente <"$t/n.membri/$m" >"$t/n.membro"
      maschera_ambiente <"$t/w.membri/$m" >"$t/w.membro" 2>/dev/null || : >"$t/w.membro"
    else
      cp "$t/n.membri/$m" "$t/n.membro"
      cp "$t/w.membri/$m" "$t/w.membro" 2>/dev/null || : >"$t/w.membro"
    fi
    cmp -s "$t/n.membro" "$t/w.membro" || segnala "$1: snapshot member $m" membro
  done
}
# confronta_check NAME [TRLE ORDL]: the check run on both sides, its messages and exit status, and the two
# snapshots it wrote into C:\.
confronta_check() {
  local nome=$1
  shift
  esegui_nativo check "$@"
  cp "$c/INFO_ORDL.BIN" "$t/n.bin" 2>/dev/null || : >"$t/n.bin"
  esegui_wine check "$@"
  cp "$c/INFO_ORDL.BIN" "$t/w.bin" 2>/dev/null || : >"$t/w.bin"
  casi=$((casi + 1))
  cmp -s "$t/n.rc" "$t/w.rc" && cmp -s "$t/n.err" "$t/w.err" || segnala "$nome" err rc
  confronta_snapshot "$nome"
}
confronta_check check
cp "$t/n.bin" "$t/demo.bin"

# ---- check of an editor below "Program Files (x86)" under UAC: its compiled script and a converted level
# live only in the user's VirtualStore, where Windows put them for the editor; both sides pack and list them ----
vs="$c/users/$(id -un)/AppData/Local/VirtualStore/Program Files (x86)/Trle"
mkdir -p "$c/Program Files (x86)/Trle" "$vs/data"
cp -r "$c/Giochi/Trle/." "$c/Program Files (x86)/Trle/"
printf 'compilato' >"$vs/script.dat"
printf 'livello' >"$vs/data/karnak.tr4"
confronta_check "check under UAC" 'C:\Program Files (x86)\Trle' 'C:\Ordelio'
casi=$((casi + 1))
[ "$(cat "$t/n.membri/script.dat")" = compilato ] && grep -qa 'karnak' "$t/n.membri/TRLE.el" ||
  segnala "check under UAC: the VirtualStore's script and level" tabella

# ---- check when C:\ takes no new file, as the root of the system drive since Vista: both write the snapshot
# onto the user's desktop, a link to a host folder as Wine makes it ----
refuse() { if [ "$(id -u)" = 0 ]; then chattr "$1i" "$c"; else chmod "${1/+/a-}w" "$c"; fi; }
scrivania=$c/users/$(id -un)/Desktop
mkdir -p "$t/scrivania" "$(dirname "$scrivania")"
rm -rf "$scrivania" "$c/INFO_ORDL.BIN"
ln -s "$t/scrivania" "$scrivania"
if refuse + 2>/dev/null && ! touch "$c/prova" 2>/dev/null; then
  esegui_nativo check
  mv "$t/scrivania/INFO_ORDL.BIN" "$t/n.bin" 2>/dev/null || : >"$t/n.bin"
  esegui_wine check
  mv "$t/scrivania/INFO_ORDL.BIN" "$t/w.bin" 2>/dev/null || : >"$t/w.bin"
  refuse -
  casi=$((casi + 2))
  grep -qF 'users\'"$(id -un)"'\Desktop\INFO_ORDL.BIN (' "$t/n.err" || segnala "check onto the desktop" err
  cmp -s "$t/n.rc" "$t/w.rc" && cmp -s "$t/n.err" "$t/w.err" || segnala "check onto the desktop" err rc
  confronta_snapshot "check onto the desktop"
else
  refuse - 2>/dev/null || true
  rm -f "$c/prova"
  echo "wine cross-check: C:\ refusing new files not tried (the file system cannot make a folder refuse them)"
fi

# ---- report: each item of the native snapshot, read by both ----
cp "$t/demo.bin" "$c/Istantanea.bin"
for v in $voci_report; do
  confronta "report $v" report 'C:\Istantanea.bin' "$v"
done

# ---- the shipped rules beside both: the same rules in force, and what each says of the snapshot ----
confronta "rules list" rules list
confronta "rules check" rules check
for f in "$c"/Strumenti/regole/*.json; do
  n=$(basename "$f")
  confronta "rules test $n" rules test 'C:\Strumenti\regole\'"$n" 'C:\Istantanea.bin'
done

# ---- one program folder for both builds: a lock of either kind keeps the other out. Wine makes LockFileEx a
# record lock of the host file, which the native build's lock (an open file description's) conflicts with;
# each kind is held from outside, and both builds must refuse the run ----
for tipo in 6 37; do  # F_SETLK, as Wine holds it; F_OFD_SETLK, as the native build holds it
  # A run refused a moment ago may still be letting go of its own try (Wine's server does it for a Windows
  # program): the holder waits for the lock a while, as the programs do.
  python3 -c 'import fcntl, struct, sys, time
f = open(sys.argv[1], "a")
for _ in range(200):
    try:
        fcntl.fcntl(f, int(sys.argv[2]), struct.pack("hhqqi", fcntl.F_WRLCK, 0, 0, 1, 0))
        break
    except BlockingIOError:
        time.sleep(0.05)
else:
    sys.exit(1)
print("held", flush=True)
time.sleep(60)' "$c/Strumenti/checkordl.lock" "$tipo" >"$t/tenuto" &
  tenitore=$!
  for _ in $(seq 250); do [ -s "$t/tenuto" ] && break; sleep 0.05; done
  [ -s "$t/tenuto" ] || echo "wine cross-check: the lock could not be held from outside with fcntl $tipo" >&2
  for lato in nativo wine; do
    casi=$((casi + 1))
    "esegui_$lato" report 'C:\Istantanea.bin' header
    e=$([ $lato = nativo ] && echo n || echo w)
    [ "$(cat "$t/$e.rc")" = 1 ] && grep -q 'Another CheckORDL is using the program folder' "$t/$e.err" ||
      segnala "a lock held by fcntl $tipo keeps the $lato build out" err rc
  done
  kill "$tenitore"
  wait "$tenitore" 2>/dev/null || true
  rm -f "$c/Strumenti/checkordl.lock"
done

echo "wine cross-check: $casi cases, $differenze different"
[ "$differenze" = 0 ]
