# Sourced by the scripts that run the Windows build: Wine without a display, without questions and without
# waiting for ever.

# No window, no debug chatter, no offer to install Mono or Gecko (a dialog that would wait for a click).
# Prefixes are of the 64-bit kind where Wine has its 64-bit part, else (a 32-bit-only Wine) of the 32-bit one.
wine_ambiente() {
  unset DISPLAY WAYLAND_DISPLAY
  export WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
  WINE=$(command -v wine || command -v wine64 || echo /usr/lib/wine/wine64)
  WINEARCH=win32
  if command -v wine64 >/dev/null || [ -x /usr/lib/wine/wine64 ]; then WINEARCH=win64; fi
  export WINE WINEARCH
}

# A fresh prefix in $1, set up and with its server gone, so that its registry files are complete.
wine_prefisso() {
  export WINEPREFIX=$1
  rm -rf "$WINEPREFIX"
  timeout 300 wineboot -i >/dev/null 2>&1 || true
  timeout 120 wineserver -w
  [ -f "$WINEPREFIX/system.reg" ] || { echo "wineboot made no prefix in $WINEPREFIX" >&2; return 1; }
}

# The regional forms of dates, times and numbers set to those of the C library's "C" locale, which the
# native runs use: on Windows the program takes them from the user's settings.
wine_regionale() {
  local k='HKCU\Control Panel\International'
  wine_esegui reg add "$k" /v sShortDate /d yyyy-MM-dd /f >/dev/null
  wine_esegui reg add "$k" /v sTimeFormat /d HH:mm:ss /f >/dev/null
  wine_esegui reg add "$k" /v sDecimal /d . /f >/dev/null
}

# Runs a Windows program of the build; its exit status is the program's.
wine_esegui() {
  timeout "${WINE_TEMPO:-300}" "$WINE" "$@"
}

# The display's resolution, in dots per inch, that the prefix's programs are told (96 unless set).
wine_dpi() {
  wine_esegui reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$1" /f >/dev/null
}
