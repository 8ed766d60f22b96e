#!/usr/bin/env python3
"""The texts a Windows download carries beside the programs, in a zip or an installed folder: contatto.txt,
whose first line is ADDRESS, and README.txt; both with Windows' CR LF line ends, and README.txt telling what
SmartScreen's warning means and how to unblock the zip. Prints nothing and exits 0 when they are right.
usage: scripts/testi_windows.py ZIP_OR_FOLDER ADDRESS"""
import os
import sys
import zipfile


def leggi(dove, nome):
    if os.path.isdir(dove):
        percorso = os.path.join(dove, nome)
        return open(percorso, "rb").read() if os.path.isfile(percorso) else None
    with zipfile.ZipFile(dove) as z:
        # The zip's one top folder, as cpack makes it.
        membri = [m for m in z.namelist() if m.count("/") == 1 and m.endswith("/" + nome)]
        return z.read(membri[0]) if membri else None


def guasti(dove, indirizzo):
    contatto, leggimi = leggi(dove, "contatto.txt"), leggi(dove, "README.txt")
    if contatto is None or leggimi is None:
        return ["no contatto.txt" if contatto is None else "no README.txt"]
    errori = []
    if contatto.split(b"\r\n")[0] != indirizzo.encode():
        errori.append(f"contatto.txt's first line is not {indirizzo}: {contatto[:80]!r}")
    for nome, testo in (("contatto.txt", contatto), ("README.txt", leggimi)):
        if not testo.endswith(b"\r\n") or testo.count(b"\n") != testo.count(b"\r\n"):
            errori.append(f"{nome} has line ends other than CR LF")
    for frase in (b"Windows protected your PC", b"More info", b"Run anyway", b"Properties", b"Unblock"):
        if frase not in leggimi:
            errori.append(f"README.txt does not say {frase.decode()!r}")
    return errori


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__.strip().splitlines()[-1])
    errori = guasti(sys.argv[1], sys.argv[2])
    for e in errori:
        print(f"{sys.argv[1]}: {e}", file=sys.stderr)
    sys.exit(1 if errori else 0)
