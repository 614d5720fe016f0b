#!/bin/sh
# Runs a program for Windows: wine.sh PROGRAM [ARGUMENT...]. Without a program
# it makes ready what programs need.
#
# Windows' folders are the project's own, in build/wine. A server stands behind
# them, and services of Windows that the first program starts and that keep its
# output open for as long as they live. So the first program is one of Windows'
# own, whose output is not read.
set -eu

root=$(dirname -- "$(readlink -f -- "$0")")/../..
folder=$(cd "$root" && pwd)/build/wine
WINEPREFIX=$folder/prefix
# Debian keeps the programs out of the path.
PATH=$PATH:/usr/lib/wine
WINELOADER=$(command -v wine64) || {
  echo 'wine.sh: there is no wine64; install the package of that name' >&2
  exit 127
}
WINESERVER=$(command -v wineserver64 || command -v wineserver)
WINEARCH=win64
WINEDEBUG=${WINEDEBUG:--all}
# No .NET, no browser, no menus, no debugger.
WINEDLLOVERRIDES='mscoree,mshtml=;winemenubuilder.exe=d;winedbg.exe=d'
export WINEPREFIX WINESERVER WINELOADER WINEARCH WINEDEBUG WINEDLLOVERRIDES
# Names of files are UTF-8, independent of the user's settings.
LC_ALL=C.UTF-8
export LC_ALL
unset DISPLAY

# The server stays for a minute after its last program, and says by its status
# whether there is one already.
make_ready() {
  mkdir -p "$WINEPREFIX"
  exec 9>"$folder/lock"
  flock 9
  if "$WINESERVER" -p60 >/dev/null 2>&1 9>&-; then
    "$WINELOADER" wineboot >/dev/null 2>&1 9>&-
  fi
  exec 9>&-
}

make_ready
[ $# = 0 ] || exec "$WINELOADER" "$@"
