#!/usr/bin/env python3
"""Each row of scripts/mutanti.txt still finds its lines, once, in its file: a change that moves or rewrites
them fails here in seconds, not at the next full mutation run, which stops at the first stale row."""
import sys


def righe(percorso):
    blocco = None
    for riga in open(percorso, encoding="utf-8").read().split("\n") + [""]:
        if riga.startswith("#"):
            continue
        if not riga.strip():
            if blocco:
                yield blocco
            blocco = None
        elif blocco is None:
            blocco = {"nome": riga.strip(), "from": []}
        else:
            chiave, _, valore = riga.partition(":")
            if chiave.strip() == "from":
                blocco["from"].append(valore.strip())
            elif chiave.strip() == "file":
                blocco["file"] = valore.strip()


def main():
    tabella = sys.argv[1] if len(sys.argv) > 1 else "scripts/mutanti.txt"
    vecchie = []
    for b in righe(tabella):
        try:
            linee = open(b["file"], encoding="latin-1").read().split("\n")
        except OSError:
            vecchie.append(b["nome"] + ": no file " + b.get("file", "?"))
            continue
        n = sum(1 for i in range(len(linee) - len(b["from"]) + 1)
                if all(linee[i + k].strip() == w for k, w in enumerate(b["from"])))
        if n != 1:
            vecchie.append("%s: its lines stand %d times in %s" % (b["nome"], n, b["file"]))
    for v in vecchie:
        print("mutation table: " + v, file=sys.stderr)
    return 1 if vecchie else 0


sys.exit(main())
