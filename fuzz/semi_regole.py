#!/usr/bin/env python3
"""Hostile rules files for the two rules fuzz targets, too large to keep in git: nesting 10,000 deep, numbers
past what a double or an integer holds, a 1 MB string, 100,000 rules. Usage: fuzz/semi_regole.py FOLDER"""
import os
import sys

cartella = sys.argv[1]
os.makedirs(cartella, exist_ok=True)
regola = '{"id": "r%d", "outcomes": [{"severity": "warn", "title": "{file}", "when": {"file": "f%d.dll", "in": "editor"}}]}'
semi = {
    "profondo": "[" * 10000 + "]" * 10000,
    "profondo_oggetti": '{"a":' * 10000 + "1" + "}" * 10000,
    "numeri": '{"format": 1, "rules": [1e400, -1e308, 9223372036854775808, -9223372036854775809, 1e-400]}',
    "stringa": '{"format": 1, "rules": [{"id": "s", "outcomes": [{"severity": "pass", "title": "' + "x" * (1 << 20) + '"}]}]}',
    "regole": '{"format": 1, "rules": [' + ",".join(regola % (i, i) for i in range(100000)) + "]}",
    "regole_10000": '{"format": 1, "rules": [' + ",".join(regola % (i, i) for i in range(10000)) + "]}",
    "chiavi": "{" + ",".join('"k%d": 1' % i for i in range(100000)) + "}",
    "jolly": '{"format": 1, "rules": [{"id": "j", "outcomes": [{"severity": "pass", "title": "t", "when": {"file": "'
    + "*a" * 2000 + 'b", "in": "editor"}}]}]}',
}
for nome, testo in semi.items():
    with open(os.path.join(cartella, nome + ".json"), "w") as f:
        f.write(testo)
