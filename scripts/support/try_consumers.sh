#!/bin/sh
# Builds and runs the consumers: try_consumers.sh PREFIX, where the package was installed.
# A package for Windows is cross-built against and run under Wine.
set -eu

scripts=$(dirname -- "$(readlink -f -- "$0")")
consumers=${scripts%/*/*}/tests/shipped/consumers
prefix=$(readlink -f -- "$1")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

quietly() {
  if ! "$@" >"$work/log" 2>&1; then
    cat "$work/log" >&2
    exit 1
  fi
}

# must_say_good NAME COMMAND...
must_say_good() {
  name=$1
  shift
  if [ "$("$@")" = good ]; then
    printf 'consumers: %s: good\n' "$name"
  else
    printf 'consumers: %s failed\n' "$name" >&2
    exit 1
  fi
}

if [ -e "$prefix/bin/PXL.dll" ]; then
  target=-DCMAKE_SYSTEM_NAME=Windows
  compiler=x86_64-w64-mingw32
  CC=$compiler-gcc-posix
  CXX=$compiler-g++-posix
  folder=$prefix/lib
  end=.exe
  # As users do who do not lay the libraries beside their program.
  run() { WINEPATH=$prefix/bin "$scripts/wine.sh" "$@" | tr -d '\r'; }
else
  target=
  CC=cc
  CXX=c++
  library=$(find "$prefix" -name 'libPXL.so.??' -print -quit)
  folder=$(dirname "$library")
  end=
  run() { "$@"; }
fi
export CC CXX

# Only the package's own files may be found, wherever the prefix lies.
for consumer in c11 cpp17; do
  cp -r "$consumers/$consumer" "$work/"
  quietly cmake -S "$work/$consumer" -B "$work/$consumer/build" -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_PREFIX_PATH="$prefix" ${target:+"$target"}
  quietly cmake --build "$work/$consumer/build"
  must_say_good "$consumer" run "$work/$consumer/build/consumer$end"
done

PKG_CONFIG_PATH=$folder/pkgconfig
export PKG_CONFIG_PATH
# Its flags are quoted for a shell.
eval "$CC -std=c11 '$work/c11/main.c' $(pkg-config --cflags --libs pxl)" \
  '"-Wl,-rpath,$folder"' -o "'$work/by_pkg_config$end'"
must_say_good 'c11 by pkg-config' run "$work/by_pkg_config$end"

[ -n "$target" ] ||
  must_say_good python python3 "$consumers/python/consumer.py" "$library"
