#!/usr/bin/env bash
# Broken machines: each row breaks one thing, runs a verb, and checks its message and exit status, which
# files stand after it, and that the files outside the program folder and the prefix (a folder of precious
# files) are unchanged, by checksum. Rows that need root or a file system feature say so and are passed over
# where they cannot be made. With a Windows build, the same rows run it under Wine on the same machine
# (but for the kill and the pipe, which are the host's own).
# usage: tests/cli/guasti.sh NATIVE_TOOL [WINDOWS_TOOL]
. "$(dirname "$0")/comune.sh" "$@"
sbloccati=()
pulisci() {
  for m in "${sbloccati[@]}"; do umount "$m" 2>/dev/null || true; done
  chattr -i "$c" "$t/ferma" "$t/bin/Dati" "$t"/bin/Confronto* 2>/dev/null || true
}
mkdir "$t/prezioso" "$t/ferma"
"$cli" demo "$WINEPREFIX" >/dev/null 2>&1 || fail "demo"
con_wine
nome=cli
[ -z "$exe" ] || nome="Windows build"
# A host path as both tools take it.
zeta() { printf 'Z:%s' "$1" | tr / '\\'; }
printf 'keep me' >"$t/prezioso/keep.txt"
impronta() { (cd "$t/prezioso" && find . -printf '%p %y %s\n' | sort && find . -type f -exec sha256sum {} + | sort); }
prima=$(impronta)
root=$([ "$(id -u)" = 0 ] && echo 1 || echo 0)
# A desktop that Wine made takes the snapshot that C:\ refuses: here it refuses too.
for d in "$c"/users/*/Desktop; do
  if [ -e "$d" ] || [ -L "$d" ]; then ln -sfn "$t/ferma" "$d"; fi
done
if [ "$root" = 1 ]; then chattr +i "$t/ferma" 2>/dev/null || true; fi

# esegui NAME EXIT MESSAGE VERB...: the verb's exit status and a line of its messages; the precious files as
# they were.
esegui() {
  local nome=$1 uscita=$2 messaggio=$3
  shift 3
  local rc=0
  strumento "$@" >"$t/out" 2>"$t/err" || rc=$?
  [ "$rc" = "$uscita" ] || fail "$nome: exit $rc, not $uscita: $(cat "$t/err")"
  [ -z "$messaggio" ] || grep -qF -- "$messaggio" "$t/err" || fail "$nome: no \"$messaggio\" in: $(cat "$t/err")"
  [ "$(impronta)" = "$prima" ] || fail "$nome: the precious files changed"
}
niente() { [ ! -e "$1" ] && [ ! -L "$1" ] || fail "$2: $1 is there"; }
salta() { echo "$nome guasti: $1 passed over: $2"; }

# The snapshot's name a link to a precious file: replaced by the snapshot, never written through.
ln -sf "$t/prezioso/keep.txt" "$c/INFO_ORDL.BIN"
esegui "snapshot name a link" 0 "plain: Scanning is complete" check
[ -f "$c/INFO_ORDL.BIN" ] && [ ! -L "$c/INFO_ORDL.BIN" ] || fail "snapshot name a link: the link stands"
niente "$c/INFO_ORDL.BIN.part" "snapshot name a link"

# The same in a folder that takes no change (and no desktop to fall back on): the write fails, and says so.
if [ "$root" = 1 ] && rm "$c/INFO_ORDL.BIN" && ln -s "$t/prezioso/keep.txt" "$c/INFO_ORDL.BIN" && chattr +i "$c" 2>/dev/null; then
  esegui "snapshot name a link, C: unchangeable" 1 'critical: Error saving C:\INFO_ORDL.BIN' check
  chattr -i "$c"
  [ -L "$c/INFO_ORDL.BIN" ] || fail "the link went in an unchangeable folder"
  rm "$c/INFO_ORDL.BIN"
else
  salta "snapshot name a link, C: unchangeable" "needs root and chattr"
  rm -f "$c/INFO_ORDL.BIN"
fi

# A desktop whose name the ANSI code page cannot show takes the snapshot that C:\ refuses (a folder of the
# snapshot's name stands in for the refusal of a Windows since Vista), and the message names it with '?' for
# what the code page lacks; when the desktop refuses too, both places are named.
if [ -z "$exe" ]; then
  scrivania="$c/Scrivania Łódź"
  printf 'WINE REGISTRY Version 2\n[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion\\\\Explorer\\\\Shell Folders]\n"Desktop"="C:\\\\Scrivania \\x0141\\x00f3d\\x017a"\n' >"$WINEPREFIX/user.reg"
  mostrata=$'C:\\Scrivania ?\xf3d?\\INFO_ORDL.BIN'
else
  utente=$(wine_esegui cmd /c 'echo %USERNAME%' 2>/dev/null | tr -d '\r')
  scrivania="$c/users/$utente/Scrivania Łódź"
  wine_esegui reg add 'HKCU\Software\Microsoft\Windows\CurrentVersion\Explorer\User Shell Folders' /v Desktop \
    /t REG_EXPAND_SZ /d '%USERPROFILE%\Scrivania Łódź' /f >/dev/null 2>&1 || fail "the desktop's registry value"
  mostrata="C:\\users\\$utente\\Scrivania ?"$'\xf3'"d?\\INFO_ORDL.BIN"
fi
mkdir -p "$scrivania" "$c/INFO_ORDL.BIN"
esegui "desktop outside the code page" 0 "plain: Scanning is complete" check
grep -aqF "$mostrata (" "$t/err" || fail "desktop outside the code page: not named as $mostrata in: $(cat "$t/err")"
[ -f "$scrivania/INFO_ORDL.BIN" ] || fail "desktop outside the code page: no snapshot there"
niente "$scrivania/INFO_ORDL.BIN.part" "desktop outside the code page"
rm "$scrivania/INFO_ORDL.BIN" && mkdir "$scrivania/INFO_ORDL.BIN"
esegui "neither C:\ nor that desktop" 1 'critical: Error saving C:\INFO_ORDL.BIN' check
[ "$(tr -d '\r' <"$t/err" | grep -a -A1 -F 'critical: Error saving C:\INFO_ORDL.BIN' | tail -1)" = "Error saving $mostrata" ] ||
  fail "neither C:\ nor that desktop: the desktop not named in: $(cat "$t/err")"
rm -rf "$scrivania" "$c/INFO_ORDL.BIN"
if [ -z "$exe" ]; then rm "$WINEPREFIX/user.reg"; else
  wine_esegui reg delete 'HKCU\Software\Microsoft\Windows\CurrentVersion\Explorer\User Shell Folders' /v Desktop /f >/dev/null 2>&1 || true
fi

# A member that cannot be read is left out, as one that does not exist, and named with the reason: the table
# and the bodies agree. The pipe is the host's own; a Windows program holds a file open without sharing it.
# tabella_di SNAPSHOT: the snapshot unpacks whole; its table in $t/tabella.
tabella_di() {
  rm -rf "$t/fuori" && mkdir -p "$t/fuori"
  "$cli" unpack "$1" "$(zeta "$t/fuori")" >"$t/tabella" || fail "unpack of $1"
}
printf 'dopo' >"$c/dopo.txt"
qlv=$c/Ordelio/archivio.qlv
cp "$qlv" "$t/archivio.qlv"
tieni=$(dirname "${exe:-.}")/../tools/checkordl_tieni.exe
if [ -z "$exe" ]; then
  mkfifo "$c/tubo"
  esegui "member that cannot be read" 0 'C:\tubo (it cannot be read)' pack 'C:\s.bin' 'C:\tubo' 'C:\dopo.txt'
  tabella_di 'C:\s.bin'
  [ "$(cat "$t/tabella")" = "$(printf 'C:\\dopo.txt\t4')" ] || fail "table: $(cat "$t/tabella")"
  rm "$qlv" && mkfifo "$qlv"
  esegui "archive that cannot be read" 0 'C:\Ordelio\archivio.qlv (it cannot be read)' check
  if [ "$root" = 0 ]; then
    chmod 000 "$c/dopo.txt"
    esegui "member access denied" 0 'C:\dopo.txt (access is denied)' pack 'C:\s.bin' 'C:\dopo.txt'
    chmod 644 "$c/dopo.txt"
  else
    salta "member access denied" "root reads every file"
  fi
elif [ -f "$tieni" ]; then
  cp "$tieni" "$t/bin/"
  wine_esegui "$t/bin/checkordl_tieni.exe" 'C:\Ordelio\archivio.qlv' 'C:\tenuto' 'C:\basta' 2>/dev/null &
  tiene=$!
  for _ in $(seq 300); do [ -e "$c/tenuto" ] && break; sleep 0.1; done
  [ -e "$c/tenuto" ] || fail "the archive was not held open"
  esegui "archive held open" 0 'C:\Ordelio\archivio.qlv (another program holds it open)' check
  grep -qF 'Close Ordelio and the level editor, then run the check again.' "$t/err" || fail "held open: no advice"
  [ "$(grep -n 'could not be read' "$t/err" | cut -d: -f1)" -lt "$(grep -n 'Scanning is complete' "$t/err" | cut -d: -f1)" ] ||
    fail "held open: the closing message came first"
  touch "$c/basta"
  wait "$tiene" || fail "the holder of the archive failed"
else
  salta "archive held open" "no checkordl_tieni.exe beside the tool's build"
fi
if [ -z "$exe" ] || [ -f "$tieni" ]; then
  tabella_di 'C:\INFO_ORDL.BIN'
  ! grep -q archivio.qlv "$t/tabella" || fail "the archive that could not be read is in the snapshot"
  grep -q 'TRLE\.el' "$t/tabella" || fail "the check's snapshot lacks the members after the archive"
fi
rm -f "$qlv" && cp "$t/archivio.qlv" "$qlv"

# The disk full while packing: no snapshot, nothing half written, the message of a snapshot that cannot be
# written.
mkdir -p "$t/piccolo"
if [ "$root" = 1 ] && mount -t tmpfs -o size=64k tmpfs "$t/piccolo" 2>/dev/null; then
  sbloccati+=("$t/piccolo")
  head -c 300000 /dev/urandom >"$c/grande.bin"
  esegui "disk full" 1 "critical: Error saving Z:${t//\//\\}\\piccolo\\s.bin" pack "$(zeta "$t/piccolo/s.bin")" 'C:\grande.bin'
  niente "$t/piccolo/s.bin" "disk full"
  niente "$t/piccolo/s.bin.part" "disk full"
else
  salta "disk full" "needs root and tmpfs"
fi

# Unpacking into a folder that holds a link named like a member: the link is replaced, not written through.
mkdir -p "$t/cartella"
ln -s "$t/prezioso/keep.txt" "$t/cartella/script.dat"
esegui "unpack over a link" 0 "" unpack 'C:\INFO_ORDL_2.BIN' "$(zeta "$t/cartella")"
[ -f "$t/cartella/script.dat" ] && [ ! -L "$t/cartella/script.dat" ] || fail "unpack over a link: the link stands"

# A snapshot that cannot be opened: its message, and exit status 1 from every verb that reads it.
printf 'not a snapshot' >"$c/rotto.bin"
esegui "report of a broken snapshot" 1 "plain: Errrore estraendo file" report 'C:\rotto.bin' header
esegui "unpack of a broken snapshot" 1 "critical: Errrore estraendo file" unpack 'C:\rotto.bin' "$(zeta "$t/cartella")"
esegui "compare with a broken snapshot" 1 "" compare 'C:\rotto.bin' 'C:\INFO_ORDL_2.BIN'
esegui "findings of a broken snapshot" 1 "" findings 'C:\rotto.bin'

# Working folders that cannot take a snapshot (a file, a link, a folder whose old files cannot be deleted):
# one message naming the folder and why, exit 1, nothing read from what the folder holds or names. compare
# works in folders of its own, and leaves the window's Confronto and ConfrontoVecchio as they are.
programma=Z:$(printf '%s' "$t/bin" | tr / '\\')
mkdir -p "$t/altro"
"$cli" unpack 'C:\INFO_ORDL_2.BIN' "$t/altro" >/dev/null
printf 'Estraneo' >"$t/altro/ordeio.txt"
# What a working folder is and holds, without its parent's line: the tool's own folders come and go in the
# program folder, which changes the parent's time.
stato_di() { ls -la --time-style=full-iso "$1" 2>&1 | grep -v ' \.\.$'; }
for cartella in Dati Confronto ConfrontoVecchio; do
  verbo="report C:\INFO_ORDL_2.BIN header ordeio"
  [ $cartella = Dati ] || verbo="compare C:\INFO_ORDL_2.BIN C:\INFO_ORDL_2.BIN"
  for modo in file link immutabile; do
    w=$t/bin/$cartella
    rm -rf "$w"
    case $modo in
      file) printf 'x' >"$w"; motivo="it is a file, not a folder" ;;
      link) ln -s "$t/altro" "$w"; motivo="it is a link to another place" ;;
      immutabile)
        [ "$root" = 1 ] || { salta "$cartella that keeps old files" "needs root"; continue; }
        mkdir "$w"; cp "$t/altro/ordeio.txt" "$w/"
        chattr +i "$w" 2>/dev/null || { salta "$cartella that keeps old files" "needs chattr"; rmdir "$w" 2>/dev/null; continue; }
        motivo="the files in it cannot all be deleted" ;;
    esac
    stato=$(stato_di "$w")
    if [ $cartella = Dati ]; then
      # shellcheck disable=SC2086
      esegui "$cartella as a $modo" 1 "critical: Cannot use the working folder $programma\\$cartella: $motivo" $verbo
    else
      # shellcheck disable=SC2086
      esegui "$cartella as a $modo" 0 "" $verbo
      [ "$(stato_di "$w")" = "$stato" ] || fail "$cartella as a $modo: compare changed it"
    fi
    ! grep -q Estraneo "$t/out" || fail "$cartella as a $modo: a report read what the folder held"
    [ "$modo" != immutabile ] || chattr -i "$w"
    rm -rf "$w"
  done
done

# A lock file that cannot be held refuses the run, with the lock's message and the reason.
for modo in folder link; do
  if [ $modo = folder ]; then mkdir "$t/bin/checkordl.lock"; else ln -s "$t/prezioso/keep.txt" "$t/bin/checkordl.lock"; fi
  esegui "checkordl.lock a $modo" 1 "critical: Another CheckORDL is using the program folder $programma. Close it and try again. (checkordl.lock is a $modo)" report 'C:\INFO_ORDL_2.BIN' header
  [ ! -s "$t/out" ] || fail "checkordl.lock a $modo: a report was made"
  rm -rf "$t/bin/checkordl.lock"
done

# A program folder too full to take the members: the snapshot is not opened, and says so.
mkdir -p "$t/pieno"
strumento_pieno=$t/bin/checkordl-cli${exe:+.exe}
misura=$(( ($(stat -c %s "$strumento_pieno") / 4096 + 3) * 4096 ))
if [ "$root" = 1 ] && mount -t tmpfs -o size=$misura tmpfs "$t/pieno" 2>/dev/null; then
  sbloccati+=("$t/pieno")
  cp "$strumento_pieno" "$t/pieno/"
  head -c 50000 /dev/urandom >"$c/grosso.bin"
  "$cli" pack 'C:\grosso_snap.bin' 'C:\grosso.bin' >/dev/null 2>&1 || fail "pack of a large member"
  cartella_strumento=$t/pieno
  esegui "full program folder" 1 "plain: Errrore estraendo file" report 'C:\grosso_snap.bin' header
  unset cartella_strumento
else
  salta "full program folder" "needs root and tmpfs"
fi

# Killed while packing a large member (a host process): no file under the snapshot's name, and the next
# run clean.
if [ -z "$exe" ]; then
  truncate -s 2000M "$c/enorme.bin"
  "$cli" pack 'C:\k.bin' 'C:\enorme.bin' >/dev/null 2>&1 &
  pid=$!
  for _ in $(seq 100); do [ -e "$c/k.bin.part" ] && break; sleep 0.02; done
  kill -9 "$pid" 2>/dev/null || true
  wait "$pid" 2>/dev/null || true
  niente "$c/k.bin" "killed while packing"
  esegui "the run after a kill" 0 "" pack 'C:\k.bin' 'C:\dopo.txt'
  [ -s "$c/k.bin" ] || fail "the run after a kill wrote no snapshot"
  niente "$c/k.bin.part" "the run after a kill"
  rm -f "$c/enorme.bin"
fi
echo "$nome guasti: ok"
