#!/usr/bin/env python3
"""Test code against the rest: non-blank, non-comment lines of .cpp and .h, tests/ and fuzz/ against every
other folder. Prints the two counts and the ratio; with --max R, fails when the ratio is above R; with
--files, lists the largest files."""
import os
import sys


def righe(percorso):
    n = 0
    blocco = False
    for riga in open(percorso, encoding="latin-1"):
        s = riga.strip()
        if blocco:
            if "*/" not in s:
                continue
            blocco = False
            s = s.split("*/", 1)[1].strip()
        if not s or s.startswith("//"):
            continue
        if s.startswith("/*"):
            blocco = "*/" not in s
            continue
        n += 1
    return n


def main():
    radice = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..")
    prove = codice = 0
    file = []
    for cartella, sotto, nomi in os.walk(radice):
        rel = os.path.relpath(cartella, radice)
        sotto[:] = [d for d in sotto if not d.startswith(".") and not (rel == "." and d == "build")]
        for nome in nomi:
            if not nome.endswith((".cpp", ".h")):
                continue
            p = os.path.join(cartella, nome)
            n = righe(p)
            file.append((n, os.path.relpath(p, radice)))
            if os.path.relpath(p, radice).split(os.sep)[0] in ("tests", "fuzz"):
                prove += n
            else:
                codice += n
    rapporto = prove / codice
    print(f"test lines {prove}, code lines {codice}, ratio {rapporto:.3f}")
    if "--files" in sys.argv:
        for n, p in sorted(file, reverse=True)[:40]:
            print(f"{n:6} {p}")
    if "--max" in sys.argv:
        limite = float(sys.argv[sys.argv.index("--max") + 1])
        if rapporto > limite:
            print(f"the ratio is above {limite}")
            sys.exit(1)


main()
