#!/bin/sh
# Builds and runs the consumers: run.sh PREFIX, where the package was installed.
set -eu

here=$(dirname -- "$(readlink -f -- "$0")")
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

# Only the package's own files may be found, wherever the prefix lies.
for consumer in c11 cpp17; do
  cp -r "$here/$consumer" "$work/"
  quietly cmake -S "$work/$consumer" -B "$work/$consumer/build" -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_PREFIX_PATH="$prefix"
  quietly cmake --build "$work/$consumer/build"
  must_say_good "$consumer" "$work/$consumer/build/consumer"
done

library=$(find "$prefix" -name 'libPXL.so.??' -print -quit)
folder=$(dirname "$library")
PKG_CONFIG_PATH=$folder/pkgconfig
export PKG_CONFIG_PATH
# Its flags are quoted for a shell.
eval "cc -std=c11 '$work/c11/main.c' $(pkg-config --cflags --libs pxl)" \
  '"-Wl,-rpath,$folder"' -o "'$work/by_pkg_config'"
must_say_good 'c11 by pkg-config' "$work/by_pkg_config"

must_say_good python python3 "$here/python/consumer.py" "$library"
