#!/usr/bin/env python3
"""The layers of src/ as src/CMakeLists.txt states them: a file includes from its own layer and the layers
below it, never from one above; each layer links the layers right below it and no other, PUBLIC where its
headers include them (or what lies below them), PRIVATE where only its .cpp files do; a library of the
system is PRIVATE unless the layer's headers include it. Prints each breach and fails on any.
Usage: scripts/strati.py [SRC_DIR]"""
import os
import re
import sys

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.M)


def regola(cmake):
    """The layers right below each layer, from the line "Dependencies point down only: ..." and the lines
    of comment that follow it: chains "a -> b -> c" separated by ';', where a side may list layers with ','."""
    commento = " ".join(r.lstrip("#").strip() for r in cmake.split("\n") if r.startswith("#"))
    testo = re.search(r"Dependencies point down only:(.*?)\.(\s|$)", commento).group(1)
    sotto = {}
    for catena in testo.split(";"):
        lati = [[x.strip() for x in lato.split(",") if x.strip()] for lato in catena.split("->")]
        for alto, basso in zip(lati, lati[1:]):
            for a in alto:
                sotto.setdefault(a, set()).update(basso)
                for b in basso:
                    sotto.setdefault(b, set())
    return sotto


def chiusura(sotto, strato):
    visti, da_fare = set(), list(sotto[strato])
    while da_fare:
        s = da_fare.pop()
        if s not in visti:
            visti.add(s)
            da_fare += sotto[s]
    return visti


def collegamenti(cmake):
    """Each layer's libraries, with PUBLIC or PRIVATE, from checkordl_layer(...) and
    target_link_libraries(checkordl_...)."""
    legami = {}
    for m in re.finditer(r"(checkordl_layer|target_link_libraries)\(\s*checkordl_(\w+)([^)]*)\)", cmake):
        parole = m.group(3).split()
        if m.group(1) == "checkordl_layer":
            parole = parole[1:]
        modo = None
        for p in parole:
            if p in ("PUBLIC", "PRIVATE", "INTERFACE"):
                modo = p
            else:
                legami.setdefault(m.group(2), []).append((p, modo))
    return legami


def inclusioni(src, strato):
    """(file, kind of include, name) for every file of the layer's folder."""
    cartella = os.path.join(src, strato)
    for nome in sorted(os.listdir(cartella)):
        if nome.endswith((".h", ".cpp")):
            testo = open(os.path.join(cartella, nome), encoding="latin-1").read()
            for tipo, incluso in INCLUDE.findall(testo):
                yield nome, tipo, incluso


def main():
    src = sys.argv[1] if len(sys.argv) > 1 else "src"
    cmake = open(os.path.join(src, "CMakeLists.txt"), encoding="utf-8").read()
    sotto = regola(cmake)
    legami = collegamenti(cmake)
    cartelle = {d for d in os.listdir(src) if os.path.isdir(os.path.join(src, d))}
    errori = []
    if set(sotto) != cartelle:
        errori.append("the rule names the layers %s, src/ holds %s" % (sorted(sotto), sorted(cartelle)))
    for strato in sorted(cartelle & set(sotto)):
        ammessi = chiusura(sotto, strato)
        dalle_intestazioni = set()  # layers and system headers its headers include
        for nome, tipo, incluso in inclusioni(src, strato):
            primo = incluso.split("/")[0]
            if tipo == '"' and primo in cartelle:
                if primo != strato and primo not in ammessi:
                    errori.append("%s/%s includes %s, from a layer above or beside its own" % (strato, nome, incluso))
                if nome.endswith(".h"):
                    dalle_intestazioni.add(primo)
            elif tipo == "<" and re.match(r"Q[A-Z]", incluso) and nome.endswith(".h"):
                dalle_intestazioni.add("Qt6")
        for lib, modo in legami.get(strato, []):
            base = lib[len("checkordl_"):] if lib.startswith("checkordl_") else None
            if base is not None:
                if base not in sotto[strato]:
                    errori.append("checkordl_%s links %s, which is not right below it" % (strato, lib))
                    continue
                pubblico = base in dalle_intestazioni or bool(dalle_intestazioni & chiusura(sotto, base))
            else:
                pubblico = lib.split("::")[0] in dalle_intestazioni
            atteso = "PUBLIC" if pubblico else "PRIVATE"
            if modo != atteso:
                errori.append("checkordl_%s links %s %s, where it should be %s" % (strato, lib, modo, atteso))
        linkati = {l[len("checkordl_"):] for l, _ in legami.get(strato, []) if l.startswith("checkordl_")}
        for manca in sorted(sotto[strato] - linkati):
            errori.append("checkordl_%s does not link checkordl_%s, right below it" % (strato, manca))
    for e in errori:
        print("layers: " + e, file=sys.stderr)
    return 1 if errori else 0


if __name__ == "__main__":
    sys.exit(main())
