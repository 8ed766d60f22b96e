# Sourced by the other scripts: installs the Debian packages that are missing, nothing else.
installa() {
  local mancanti=()
  for p in "$@"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || mancanti+=("$p")
  done
  [ ${#mancanti[@]} -eq 0 ] && return 0
  local sudo=""
  [ "$(id -u)" -eq 0 ] || sudo="sudo"
  echo "installing: ${mancanti[*]}"
  $sudo env DEBIAN_FRONTEND=noninteractive apt-get update -qq
  $sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${mancanti[@]}" >/dev/null
}

# A locale with a decimal comma, for the size texts.
locale_italiano() {
  locale -a 2>/dev/null | grep -qi '^it_IT\.utf-\?8$' && return 0
  local sudo=""
  [ "$(id -u)" -eq 0 ] || sudo="sudo"
  $sudo localedef -i it_IT -f UTF-8 it_IT.UTF-8
}

# clang and the compiler runtime of its own version (the fuzzer's and the sanitizers' libraries), whichever
# clang the package source has.
installa_clang() {
  installa clang
  installa "libclang-rt-$(clang -dumpversion | cut -d. -f1)-dev"
}

# Runs a command with its output kept back, and shows the output only when it fails: a build's errors
# reach the screen, its progress does not.
silenzioso() {
  local log esito=0
  log=$(mktemp)
  "$@" >"$log" 2>&1 || esito=$?
  [ "$esito" -eq 0 ] || cat "$log" >&2
  rm -f "$log"
  return "$esito"
}
