# Sourced by the benchmarks: the headless tool given as $1 (default the release preset's, which
# scripts/test.sh makes), copied into a scratch folder of its own (it keeps its working files beside
# itself), and a Wine prefix there. Sets cli, dir and WINEPREFIX; TENERE=1 keeps the folder.
. scripts/dipendenze.sh
installa time python3
cli=$(realpath "${1:-build/release/cli/checkordl-cli}")
[ -x "$cli" ] || { echo "build the headless tool first: cmake --preset release && cmake --build --preset release"; exit 2; }
dir=$(realpath "$(mktemp -d -p "${BENCH_DIR:-$PWD}")")
trap '[ -n "${TENERE:-}" ] || rm -rf "$dir"' EXIT
export WINEPREFIX=$dir/prefix
mkdir -p "$dir/bin"
cp "$cli" "$dir/bin/checkordl-cli"
cli=$dir/bin/checkordl-cli
# Drive C: alone, for a benchmark that plants its machine by hand.
prefisso_c() {
  mkdir -p "$WINEPREFIX/dosdevices" "$WINEPREFIX/drive_c"
  ln -s ../drive_c "$WINEPREFIX/dosdevices/c:"
}
# Seconds and peak KiB of one command, its output in $dir/out and $dir/err; a failure ends the benchmark.
misura() {
  /usr/bin/time -f '%e %M' -o "$dir/t" "$@" >"$dir/out" 2>"$dir/err" || { cat "$dir/err"; exit 1; }
  cat "$dir/t"
}
# The median of the first n values of an awk array, for the summaries: awk "$mediana"' ... mediana(a, NR) ...'.
# shellcheck disable=SC2034
mediana='function mediana(a, n,   i, j, t) { for (i = 1; i <= n; i++) for (j = i + 1; j <= n; j++) if (a[j] < a[i]) { t = a[i]; a[i] = a[j]; a[j] = t }; return a[int((n + 1) / 2)] }'
