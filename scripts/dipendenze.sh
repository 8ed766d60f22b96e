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
