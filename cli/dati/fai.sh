#!/usr/bin/env bash
# Rebuilds the demo machine's small executables: ordl2009.exe (with a version resource) and tomb4.exe
# (none), each one function that returns 0. Needs binutils-mingw-w64-x86-64 and gcc-mingw-w64-x86-64.
set -euo pipefail
cd "$(dirname "$0")"
t=$(mktemp -d)
trap 'rm -rf "$t"' EXIT
printf '.text\n.globl inizio\ninizio:\n  xorl %%eax, %%eax\n  ret\n' > "$t/inizio.s"
x86_64-w64-mingw32-as "$t/inizio.s" -o "$t/inizio.o"
x86_64-w64-mingw32-windres -F pe-x86-64 ordl2009.rc -O coff -o "$t/risorse.o"
x86_64-w64-mingw32-ld -m i386pep -s --no-insert-timestamp --subsystem console -e inizio "$t/inizio.o" "$t/risorse.o" -o ordl2009.exe
x86_64-w64-mingw32-ld -m i386pep -s --no-insert-timestamp --subsystem console -e inizio "$t/inizio.o" -o tomb4.exe
