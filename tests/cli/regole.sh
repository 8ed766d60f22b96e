#!/usr/bin/env bash
# The rules verb and the rules in the findings: a broken file's every error with its place; what each rule
# says of a snapshot; a local rule in the place of a shipped one; a broken local file left out with one
# warning while the checks' findings stay; the text and the JSON naming each rule's file.
. "$(dirname "$0")/comune.sh" "$1"
regole=$(cd "$(dirname "$0")/../../regole" && pwd)

set +e
"$cli" rules check "$dati/regole/rotto.json" "$regole/wrapper.json" >"$t/out" 2>"$t/err"; rc=$?
set -e
[ $rc = 1 ] && [ ! -s "$t/out" ] || fail "check of a broken file: exit $rc, $(cat "$t/out")"
sed "s|^$dati/||" "$t/err" > "$t/errori"
diff -u "$dati/regole/rotto.txt" "$t/errori" || fail "errors of the broken file"
[ "$("$cli" rules check "$regole"/*.json)" = "12 rules in 5 files: OK" ] || fail "the shipped rules"
# The README's examples are rules files the program takes, and its table names every field there is.
"$cli" rules fields > "$t/campi"
python3 - "$(dirname "$0")/../../README.md" "$t" <<'PY' || fail "the README's fields"
import re, sys
testo = open(sys.argv[1]).read()
regole = testo[testo.index("## Rules"):]
regole = regole[:regole.index("\n## ")]
for n, b in enumerate(re.findall(r"```jsonc\n(.*?)```", regole, re.S)):
    open(f"{sys.argv[2]}/esempio{n}.json", "w").write(b)
for riga in open(f"{sys.argv[2]}/campi"):
    campo = riga.split()[0]
    breve = "`." + campo.split(".", 1)[1] + "`"
    assert f"`{campo}`" in regole or breve in regole, campo
PY
"$cli" rules check "$t"/esempio*.json | grep -q '^4 rules in 4 files: OK$' || fail "the README's examples"

"$cli" demo "$WINEPREFIX" >/dev/null 2>&1 || fail "demo"
printf 12 > "$c/Giochi/Trle/ddraw.dll"
"$cli" check 'C:\Giochi\Trle' 'C:\Ordelio' >/dev/null 2>&1 || fail "check"
s=$c/INFO_ORDL.BIN
"$cli" rules test "$dati/regole/mie.json" "$s" "$s" > "$t/prova" || fail "rules test"
printf '%s\n' "== $s" "wrapper.ddraw         fail  A broken DirectDraw wrapper of 2 bytes: \\ddraw.dll" \
  "local.tutorial-level  pass  The script names the tutorial DATA\\TUT1.tr4 among 4 levels" > "$t/uno"
cat "$t/uno" "$t/uno" | diff -u - "$t/prova" || fail "rules test output"
set +e
"$cli" rules test "$dati/regole/mie.json" "$t/nessuno.bin" >/dev/null 2>&1; rc1=$?
"$cli" rules test "$dati/regole/rotto.json" "$s" >/dev/null 2>&1; rc2=$?
set -e
[ $rc1 = 1 ] && [ $rc2 = 1 ] || fail "rules test of a missing snapshot, of a broken file: $rc1 $rc2"

# Shipped rules beside the tool, the supporter's own in its program folder.
cp -r "$regole" "$t/bin/regole"
mkdir "$t/bin/regole_locali"
cp "$dati/regole/mie.json" "$t/bin/regole_locali/"
[ "$("$cli" rules check)" = "14 rules in 6 files: OK" ] || fail "rules check of the rules in force"
"$cli" rules list > "$t/lista"
[ "$(wc -l < "$t/lista")" = 13 ] || fail "rules list: $(cat "$t/lista")"
grep -q '^wrapper\.ddraw  *Z:.*\\bin\\regole_locali\\mie\.json$' "$t/lista" || fail "local rule: $(cat "$t/lista")"
grep -q '^local\.tutorial-level ' "$t/lista" || fail "own rule"
"$cli" findings "$s" > "$t/testo"
"$cli" findings --json "$s" > "$t/json"
python3 - "$t/testo" "$t/json" <<'PY' || fail "findings text and JSON"
import json, re, sys
testo = open(sys.argv[1], encoding="latin-1").read().split("\n")
f = json.loads(open(sys.argv[2]).read())["findings"]
regole = {x["id"]: x["rule"] for x in f if "rule" in x}
assert regole == {"wrapper.ddraw": "regole_locali\\mie.json", "local.tutorial-level": "regole_locali\\mie.json",
                  "runtime.binkw32-missing": "regole\\runtime.json"}, regole
# In the text each rule's finding has its file under its title, before the next finding.
for i, riga in enumerate(testo):
    m = re.match(r"^(FAIL|WARN|PASS)  (\S+) ", riga)
    if m and m.group(2) in regole:
        sotto = [r for r in testo[i + 1:i + 3] if r.startswith(" " * 33)]
        assert "rule: " + regole[m.group(2)] in [r.strip() for r in sotto], (riga, sotto)
assert sum(1 for r in testo if r.strip().startswith("rule: ")) == 3
PY
# A broken local file: left out whole with one warning, the other rules and the checks' findings as before.
cp "$dati/regole/rotto.json" "$t/bin/regole_locali/"
"$cli" findings --json "$s" > "$t/json2"
python3 - "$t/json" "$t/json2" <<'PY' || fail "a broken local file"
import json, sys
prima, dopo = (json.loads(open(p).read())["findings"] for p in sys.argv[1:])
nuove = [x for x in dopo if x not in prima]
assert [x["id"] for x in nuove] == ["rules.unreadable"], nuove
assert nuove[0]["evidence"]["errors"] == 7 and nuove[0]["evidence"]["error"].startswith("5:13: "), nuove[0]
assert "rule" not in nuove[0] and [x for x in dopo if x["id"] != "rules.unreadable"] == prima
PY
"$cli" rules list | grep -q '^left out: .*rotto\.json:5:13: ' || fail "list of a broken file"
set +e
"$cli" rules check >/dev/null 2>"$t/err"; rc=$?
set -e
[ $rc = 1 ] && grep -qF 'regole_locali\rotto.json:7:125: unknown key "extra"' "$t/err" ||
  fail "rules check of the rules in force with a broken file: $rc $(cat "$t/err")"
echo "cli regole: ok"
