#!/usr/bin/env python3
"""The rows of scripts/mutanti.txt, and the check that each still finds its lines, once, in its file: a change
that moves or rewrites them fails here in seconds, not at the next full mutation run (scripts/mutanti.sh,
which reads the rows through this module and stops at the first stale one)."""
import sys


def blocchi(percorso):
    """Blocks separated by blank lines: the behaviour's name, then file:, from: (one or more lines, a run),
    to: (one or more lines) and tests: (a ctest regex)."""
    blocco = None
    for riga in open(percorso, encoding="utf-8").read().split("\n") + [""]:
        if riga.startswith("#"):
            continue
        if not riga.strip():
            if blocco:
                yield blocco
            blocco = None
        elif blocco is None:
            blocco = {"name": riga.strip(), "from": [], "to": []}
        else:
            chiave, _, valore = riga.partition(":")
            if chiave.strip() in ("from", "to"):
                blocco[chiave.strip()].append(valore.strip())
            else:
                blocco[chiave.strip()] = valore.strip()


def posizioni(linee, blocco):
    """Where the block's run of lines stands in `linee`, compared without the indentation."""
    return [i for i in range(len(linee) - len(blocco["from"]) + 1)
            if all(linee[i + k].strip() == w for k, w in enumerate(blocco["from"]))]


def main():
    tabella = sys.argv[1] if len(sys.argv) > 1 else "scripts/mutanti.txt"
    vecchie = []
    for b in blocchi(tabella):
        try:
            linee = open(b["file"], encoding="latin-1").read().split("\n")
        except (OSError, KeyError):
            vecchie.append(b["name"] + ": no file " + b.get("file", "?"))
            continue
        n = len(posizioni(linee, b))
        if n != 1:
            vecchie.append("%s: its lines stand %d times in %s" % (b["name"], n, b["file"]))
    for v in vecchie:
        print("mutation table: " + v, file=sys.stderr)
    return 1 if vecchie else 0


if __name__ == "__main__":
    sys.exit(main())
