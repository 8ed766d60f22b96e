#!/usr/bin/env bash
# Our text on a terminal: in the locale's encoding with LF, long paths whole on one line; under the C locale
# the bytes stay Windows-1252.
. "$(dirname "$0")/comune.sh" "$1"
lunga='Users/José/Documents/Snapshots received from the forum for the support case of the missing levels'
prefisso_c "$lunga/a" "$lunga/b"
printf 'uno\r\ndue\r\n' > "$c/$lunga/a/ordeio.txt"
printf 'uno\r\ntre\r\n' > "$c/$lunga/b/ordeio.txt"
w='C:\'${lunga//\//\\}
for s in a b; do "$cli" pack "$w\\$s.bin" "$w\\$s\\ordeio.txt" >/dev/null; done

# The old snapshot's line, which the window wraps, whole, and the old bytes under the C locale.
for loc in C.UTF-8 it_IT.UTF-8 C; do
  [ $loc != it_IT.UTF-8 ] || locale -a | grep -qix 'it_IT.utf-\?8' || continue
  LC_ALL=$loc "$cli" compare "$w\\a.bin" "$w\\b.bin" > "$t/cmp"
  LC_ALL=$loc "$cli" findings "$w\\a.bin" > "$t/fnd" || true
  ! grep -q $'\r' "$t/cmp" "$t/fnd" || fail "$loc: CR in the text"
  atteso="Old snapshot: ${w//\\/\\\\}\\\\a.bin"
  [ $loc != C ] || atteso=$(iconv -f UTF-8 -t WINDOWS-1252 <<<"$atteso")
  LC_ALL=C grep -qx "$atteso.*" "$t/cmp" || fail "$loc: $(cat "$t/cmp")"
  # The finding's advice, longer than the window's width, whole.
  awk 'length > 100 && /^ +-> Ask the user/ { n++ } END { exit n == 0 }' "$t/fnd" || fail "$loc: $(cat "$t/fnd")"
  [ $loc = C ] || iconv -f UTF-8 -t UTF-16 "$t/cmp" "$t/fnd" >/dev/null || fail "$loc: not UTF-8"
done
echo "cli terminale: ok"
