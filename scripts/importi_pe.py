#!/usr/bin/env python3
"""The DLLs and functions that Windows executables import, as objdump -p lists them: "dll function" a line,
DLL names in lower case, sorted. With --dll, the DLLs alone."""
import subprocess
import sys


def importi(objdump, exe):
    testo = subprocess.run([objdump, "-p", exe], capture_output=True, text=True, check=True).stdout
    dll, voci = None, set()
    for riga in testo.splitlines():
        parti = riga.split()
        if riga.strip().startswith("DLL Name:"):
            dll = riga.split(":", 1)[1].strip().lower()
            voci.add((dll, ""))
        elif dll and len(parti) == 3 and all(c in "0123456789abcdef" for c in parti[0]) and parti[1].isdigit():
            voci.add((dll, parti[2]))
        elif not riga.strip():
            dll = None
    return voci


def main():
    argomenti = sys.argv[1:]
    solo_dll = "--dll" in argomenti
    argomenti = [a for a in argomenti if a != "--dll"]
    objdump, eseguibili = argomenti[0], argomenti[1:]
    voci = set()
    for exe in eseguibili:
        voci |= importi(objdump, exe)
    for dll, funzione in sorted(voci):
        if solo_dll and not funzione:
            print(dll)
        elif not solo_dll and funzione:
            print(dll, funzione)


main()
