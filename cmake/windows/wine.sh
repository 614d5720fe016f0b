#!/bin/sh
# Runs a program for Windows: wine.sh PROGRAM [ARGUMENT...]. Without a program
# it makes ready what programs need.
#
# Windows' folders are the project's own, in build/wine. The server behind them
# is started, and the folders are made, before any program runs and without its
# output: else the first program's reader would wait until the server ends.
set -eu

root=$(dirname -- "$(readlink -f -- "$0")")/../..
folder=$(cd "$root" && pwd)/build/wine
WINEPREFIX=$folder/prefix
WINESERVER=/usr/lib/wine/wineserver64
WINELOADER=/usr/lib/wine/wine64
WINEARCH=win64
WINEDEBUG=${WINEDEBUG:--all}
# No .NET, no browser, no menus, no debugger.
WINEDLLOVERRIDES='mscoree,mshtml=;winemenubuilder.exe=d;winedbg.exe=d'
export WINEPREFIX WINESERVER WINELOADER WINEARCH WINEDEBUG WINEDLLOVERRIDES
unset DISPLAY

make_ready() {
  mkdir -p "$WINEPREFIX"
  exec 9>"$folder/lock"
  flock 9
  # The server stays for a minute after its last program.
  "$WINESERVER" -p60 >/dev/null 2>&1 9>&- || true # it may run already
  if [ ! -e "$folder/ready" ]; then
    "$WINELOADER" wineboot >/dev/null 2>&1 9>&-
    touch "$folder/ready"
  fi
  exec 9>&-
}

make_ready
[ $# = 0 ] || exec "$WINELOADER" "$@"
