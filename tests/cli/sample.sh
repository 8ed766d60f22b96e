#!/usr/bin/env bash
# The sample verb end to end: backup_trle.le lands beside the program, byte for byte, with its message.
. "$(dirname "$0")/comune.sh" "$1"
prefisso_c Backup/sub
printf 'abc' > "$c/Backup/b.txt"
printf '' > "$c/Backup/sub/z.tr4"
lista=$t/bin/backup_trle.le
finestra=Z:$(printf '%s' "$t/bin" | tr / '\\')

# One file per folder, so the platform's order cannot change the bytes.
atteso() {  # $1: the folder as given
  printf '\2\0\0\0'; printf "\\x$(printf %02x ${#1})\\0\\0\\0"; printf '%s' "$1"
  printf '\6\0\0\0\\b.txt\12\0\0\0\\sub\\z.tr4\3\0\0\0\0\0\0\0'
}
for arg in 'C:\Backup' "$c/Backup" 'c:\backup\'; do
  err=$("$cli" sample "$arg" 2>&1) || fail "exit status for $arg"
  [ "$err" = "plain: Creato file elenco:  $finestra\\backup_trle.le" ] || fail "message: $err"
  base='C:\Backup'; [ "$arg" = 'c:\backup\' ] && base='c:\backup'
  cmp <(atteso "$base") "$lista" || fail "list bytes for $arg"
done

# A list that cannot be written: the plain message, and no critical one.
rm "$lista"; mkdir "$lista"
err=$("$cli" sample 'C:\Backup' 2>&1) || fail "exit status with an unwritable list"
[ "$err" = "plain: Errore creando file elenco" ] || fail "unwritable: $err"
rmdir "$lista"

set +e
"$cli" sample 2>/dev/null; [ $? = 2 ] || fail "no folder"
"$cli" sample 'C:\Backup' 'C:\Backup' 2>/dev/null; [ $? = 2 ] || fail "two folders"
"$cli" sample 'C:\Manca' 2>/dev/null; [ $? = 2 ] || fail "missing folder"
[ ! -e "$lista" ] || fail "a list was left by a refused call"
echo "cli sample: ok"
