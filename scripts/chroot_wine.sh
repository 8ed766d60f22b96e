#!/usr/bin/env bash
# Two Debian machines in chroots, for the Wine that the host's own packages cannot give: an amd64 one with
# Wine's 64- and 32-bit parts (a WoW64 Wine: a 32-bit program in a 64-bit prefix sees Program Files (x86),
# SysWOW64 and the 32-bit registry view, as on 64-bit Windows) and an i386 one, whose Wine is a 32-bit
# Windows. Made with debootstrap from the package source of the machine's own apt configuration, read at run
# time (its main archive only, so that the amd64 and i386 packages are the same version), kept outside the
# repository and reused while complete.
# usage: scripts/chroot_wine.sh prepara              makes both at once, or says in one line why it cannot
#        scripts/chroot_wine.sh pronto ARCH          true when the chroot ARCH (amd64 or i386) is complete
#        scripts/chroot_wine.sh esegui ARCH CMD...   runs CMD there, in the repository (bound at its own path)
# Nothing stays mounted or running: every run has mount and PID namespaces of its own, which end with it.
set -euo pipefail
radice=$(cd "$(dirname "$0")/.." && pwd -P)
cache=${CHECKORDL_CHROOT:-/var/cache/checkordl}
# What each chroot holds besides Debian's minimal system: Wine, and what the scripts run there use.
extra="python3 procps cmake e2fsprogs"
pacchetti_amd64="wine wine64 wine32:i386 $extra"
pacchetti_i386="wine $extra"

cartella() { echo "$cache/chroot-$1"; }
# The stamp a complete chroot carries: what it was made from and what was installed.
timbro() {
  local p=pacchetti_$1
  echo "suite=$suite mirror=$mirror arch=$1 packages=${!p}"
}

# The host's suite, and the URI of the main archive for it in the apt configuration (deb822 first, then the
# one-line form).
suite=$(. /etc/os-release && echo "${VERSION_CODENAME:-}")
mirror=$(
  for f in /etc/apt/sources.list.d/*.sources; do
    [ -f "$f" ] && awk -v s="$suite" '
      BEGIN { RS = ""; FS = "\n" }
      {
        t = u = ""; ok = 0
        for (i = 1; i <= NF; i++) {
          if ($i ~ /^Types:/) t = $i
          if ($i ~ /^URIs:/) { u = $i; sub(/^URIs:[ \t]*/, "", u); sub(/[ \t].*/, "", u) }
          if ($i ~ /^Suites:/) { n = split(substr($i, 8), v, /[ \t]+/); for (j = 1; j <= n; j++) if (v[j] == s) ok = 1 }
        }
        if (ok && t ~ /[ \t]deb([ \t]|$)/ && u != "") { print u; exit }
      }' "$f"
  done
  [ -f /etc/apt/sources.list ] &&
    sed -E 's/\[[^]]*\]//' /etc/apt/sources.list | awk -v s="$suite" '$1 == "deb" && $3 == s { print $2 }'
) || true
mirror=$(head -1 <<<"$mirror")

# Whether the kernel runs i386 programs: a 93-byte one that only exits, with status 7. Wine's 32-bit part is
# one; a kernel built or started without IA-32 emulation refuses it (and qemu-i386 runs Wine far too slowly).
i386_nativo() {
  local f esito=0
  f=$(mktemp)
  printf '\177ELF\1\1\1\0\0\0\0\0\0\0\0\0\2\0\3\0\1\0\0\0\124\200\4\10\64\0\0\0\0\0\0\0\0\0\0\0\64\0\40\0\1\0\0\0\0\0\0\0\1\0\0\0\0\0\0\0\0\200\4\10\0\200\4\10\135\0\0\0\135\0\0\0\5\0\0\0\0\20\0\0\270\1\0\0\0\263\7\315\200' >"$f"
  chmod +x "$f"
  "$f" 2>/dev/null || esito=$?
  rm -f "$f"
  [ "$esito" = 7 ]
}

# dentro DIR CMD...: CMD in the chroot DIR, in mount and PID namespaces of its own (what it mounts, and any
# process it leaves, end with it), with /proc, /sys, /dev and a /dev/shm of its own, plus the folders of
# $CHROOT_CARTELLE (one a line) each at its own path.
dentro() {
  local r=$1 c
  shift
  export CHROOT_CARTELLE
  while read -r c; do [ -z "$c" ] || mkdir -p "$r$c"; done <<<"${CHROOT_CARTELLE:-}"
  mkdir -p "$r/proc" "$r/sys" "$r/dev"
  unshare -m -p -f --propagation private -- bash -euo pipefail -c '
    r=$1
    shift
    mount -t proc proc "$r/proc"
    mount --rbind /sys "$r/sys"
    mount --rbind /dev "$r/dev"
    mount -t tmpfs -o mode=1777 shm "$r/dev/shm"
    while read -r c; do [ -z "$c" ] || mount --bind "$c" "$r$c"; done <<<"${CHROOT_CARTELLE:-}"
    exec chroot "$r" /usr/bin/env PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin \
      HOME=/root DEBIAN_FRONTEND=noninteractive "$@"' _ "$r" "$@"
}

# A chroot is of use only where the kernel runs Wine's 32-bit part.
pronto() {
  [ -n "$suite" ] && [ -f "$(cartella "$1")/.checkordl" ] &&
    [ "$(cat "$(cartella "$1")/.checkordl")" = "$(timbro "$1")" ] && i386_nativo
}

# crea ARCH: the chroot made aside and put in its place only when complete.
crea() {
  local a=$1 d n p=pacchetti_$1
  d=$(cartella "$a")
  pronto "$a" && return 0
  n=$d.nuovo
  rm -rf "$n"
  debootstrap --variant=minbase --arch="$a" "$suite" "$n" "$mirror"
  cp /etc/resolv.conf "$n/etc/resolv.conf" 2>/dev/null || true
  # No service of a package starts inside.
  printf '#!/bin/sh\nexit 101\n' >"$n/usr/sbin/policy-rc.d"
  chmod 755 "$n/usr/sbin/policy-rc.d"
  [ "$a" != amd64 ] || dentro "$n" dpkg --add-architecture i386
  dentro "$n" apt-get update -qq
  # shellcheck disable=SC2086
  dentro "$n" apt-get install -y -qq --no-install-recommends ${!p} >/dev/null
  dentro "$n" apt-get clean
  timbro "$a" >"$n/.checkordl"
  rm -rf "$d"
  mv "$n" "$d"
}

prepara() {
  local perche=""
  [ "$(id -u)" = 0 ] || perche="not run as root"
  i386_nativo || perche="this kernel runs no 32-bit x86 program, as Wine's 32-bit part is"
  command -v debootstrap >/dev/null || perche="no debootstrap"
  command -v unshare >/dev/null || perche="no unshare"
  [ -n "$suite" ] || perche="no suite in /etc/os-release"
  [ -n "$mirror" ] || perche="no package source for $suite in the apt configuration"
  if [ -n "$perche" ]; then
    echo "wine chroots: not made ($perche); the 32-bit build is checked but not run"
    return 0
  fi
  mkdir -p "$cache"
  exec 9>"$cache/.lock"
  flock 9
  local inizio=$SECONDS a
  for a in amd64 i386; do
    crea "$a" >"$cache/chroot-$a.log" 2>&1 &
  done
  for a in amd64 i386; do
    wait -n || true
  done
  for a in amd64 i386; do
    if pronto "$a"; then
      echo "wine chroots: $a ready in $(cartella "$a") ($((SECONDS - inizio)) s)"
    else
      echo "wine chroots: $a not made ($(tail -1 "$cache/chroot-$a.log" 2>/dev/null)); see $cache/chroot-$a.log"
      rm -rf "$(cartella "$a").nuovo"
    fi
  done
  return 0
}

case ${1:-} in
prepara) prepara ;;
pronto) pronto "$2" ;;
esegui)
  a=$2
  shift 2
  pronto "$a" || { echo "wine chroots: $a is not made" >&2; exit 1; }
  # The real files some tests read lie beside the repository, where there are any.
  reali=$(realpath -e "$radice/../shared/realdata" 2>/dev/null || true)
  CHROOT_CARTELLE=$(printf '%s\n' "$radice" "$reali") dentro "$(cartella "$a")" bash -c 'cd "$0" && exec "$@"' "$radice" "$@"
  ;;
*)
  sed -n 's/^# usage: /usage: /p; s/^#        /       /p' "$0" >&2
  exit 2
  ;;
esac
