#!/usr/bin/env bash
# Working folders of killed runs: the next run of the same kind removes those whose process is gone, and
# leaves a live run's, another kind's (the Windows build's among them), a link and what a link names.
. "$(dirname "$0")/comune.sh" "$1"
sleep 0 & morto=$!
wait "$morto"
kill -0 "$morto" 2>/dev/null && { echo "cli orphaned folders: the dead pid is taken again, passed over"; exit 0; }
b=$t/bin
mkdir -p "$t/fuori" "$b/findings-$morto-0" "$b/findings-$morto-7" "$b/findings-$$-0" \
  "$b/compare-old-$morto-0" "$b/compare-new-$morto-0" "$b/findings-x$morto-0" "$b/findings-win-$morto-0"
printf 'x' >"$t/fuori/tenuto"
for d in "$b/findings-$morto-0" "$b/compare-old-$morto-0" "$b/compare-new-$morto-0"; do
  head -c 4096 /dev/zero >"$d/INFO.BIN"
done
chmod a-w "$b/findings-$morto-0/INFO.BIN"
ln -s "$t/fuori/tenuto" "$b/findings-$morto-7/collegato"
ln -s "$t/fuori" "$b/findings-$morto-1"
printf 'xyz' >"$t/rotto.bin"
# presenti EXPECTED: the working folders left, one line each.
presenti() {
  [ "$(cd "$b" && ls -d findings-* compare-* 2>/dev/null | sort | tr '\n' ' ')" = "$1" ] ||
    fail "left after $verbo: $(ls "$b")"
}
verbo=findings
"$cli" findings "$t/rotto.bin" >/dev/null 2>&1 || true
presenti "compare-new-$morto-0 compare-old-$morto-0 findings-$$-0 findings-$morto-1 findings-win-$morto-0 findings-x$morto-0 "
verbo=compare
"$cli" compare "$t/rotto.bin" "$t/rotto.bin" >/dev/null 2>&1 || true
presenti "findings-$$-0 findings-$morto-1 findings-win-$morto-0 findings-x$morto-0 "
[ -f "$t/fuori/tenuto" ] && [ "$(ls "$t/fuori")" = tenuto ] || fail "removed through a link"
echo "cli orphaned folders: ok"
