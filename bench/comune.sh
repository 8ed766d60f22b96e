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
