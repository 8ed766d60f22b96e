#!/usr/bin/env bash
# Rebuilds the small executables of the version tests from their .rc files: prova.exe and in_fondo.exe as
# 64-bit (PE32+), prova32.exe as 32-bit (PE32). Each holds one function that returns 0 and its resources.
# Needs binutils-mingw-w64-x86-64 and binutils-mingw-w64-i686, and gcc-mingw-w64-x86-64 for windres's
# preprocessor.
set -euo pipefail
cd "$(dirname "$0")"
t=$(mktemp -d)
trap 'rm -rf "$t"' EXIT

# fai ARCH EMULATION ENTRY RC EXE. One windres for both: the i686 one has no preprocessor without its gcc.
fai() {
  printf '.text\n.globl %s\n%s:\n  xorl %%eax, %%eax\n  ret\n' "$3" "$3" > "$t/inizio.s"
  "$1-w64-mingw32-as" "$t/inizio.s" -o "$t/inizio.o"
  x86_64-w64-mingw32-windres -F "pe-$([ "$1" = i686 ] && echo i386 || echo x86-64)" "$4" -O coff -o "$t/risorse.o"
  "$1-w64-mingw32-ld" -m "$2" -s --no-insert-timestamp --subsystem console -e "$3" "$t/inizio.o" "$t/risorse.o" -o "$5"
}

fai x86_64 i386pep inizio prova.rc prova.exe
fai x86_64 i386pep inizio in_fondo.rc in_fondo.exe
fai i686 i386pe _inizio prova.rc prova32.exe
