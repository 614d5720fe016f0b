# shellcheck shell=sh
# What the scripts of the verbs share. A script reads this file first.
set -eu

scripts=$(dirname -- "$(readlink -f -- "$0")")
root=$(dirname -- "$scripts")
jobs=$(nproc 2>/dev/null || echo 2)
# ./dev check sets the variable, so that all of its steps share one GCC build.
# shellcheck disable=SC2034 # used by the scripts
release=${PXL_DEV_PRESET:-release}

# ---- Messages ---------------------------------------------------------------

say() { printf 'dev: %s\n' "$*"; }
complain() { printf 'dev: %s\n' "$*" >&2; }
stop() {
  complain "$*"
  exit 1
}
misused() {
  complain "$* (./dev help lists the verbs)"
  exit 2
}

# takes_at_most MOST "$@"
takes_at_most() {
  most=$1
  shift
  [ $# -le "$most" ] || misused "too many arguments for ${0##*/}"
}

# ---- Packages ---------------------------------------------------------------

is_installed() {
  [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

missing_of() {
  for package in "$@"; do
    is_installed "$package" || printf '%s ' "$package"
  done
}

# How to become root for apt-get: an empty word for root itself.
find_root_command() {
  if [ "$(id -u)" = 0 ]; then
    as_root=
  elif sudo -n true 2>/dev/null; then
    as_root='sudo -n'
  elif [ -t 0 ] && command -v sudo >/dev/null; then
    as_root=sudo
  else
    return 1
  fi
}

apt() {
  # Without this a package's questions would wait for an answer for ever.
  # shellcheck disable=SC2086 # as_root is no word or several
  $as_root env DEBIAN_FRONTEND=noninteractive \
    apt-get -qq -o DPkg::Lock::Timeout=600 -o Dpkg::Use-Pty=0 "$@"
}

# need PURPOSE...: installs the missing ones of the packages for these purposes.
need() {
  packages=$("$root/dev" packages "$@")
  if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    list_requirements "$@"
    return
  fi
  # shellcheck disable=SC2086 # a list of names
  missing=$(missing_of $packages)
  [ -n "$missing" ] || return 0
  find_root_command || stop "cannot become root; first run: apt-get install $missing"
  say "installing: $missing"
  apt update || complain 'apt-get update failed; going on with the lists that are here'
  # shellcheck disable=SC2086 # a list of names
  apt install -y --no-install-recommends $missing >/dev/null ||
    stop "apt-get could not install: $missing"
}

# For systems on which nothing can be installed: once, what the build looks for,
# and for other purposes the names of Debian.
list_requirements() {
  if [ "$1" = build ]; then
    shift
    if [ -z "${PXL_DEV_REQUIREMENTS_LISTED:-}" ]; then
      say 'no apt-get on this system, so nothing is installed; the build needs:'
      sed -n '/^| /p' "$root/docs/building.md"
      PXL_DEV_REQUIREMENTS_LISTED=yes
      export PXL_DEV_REQUIREMENTS_LISTED
    fi
  fi
  [ $# = 0 ] || say "no apt-get on this system; ${0##*/} also needs what Debian calls:" \
    "$("$root/dev" packages "$@" | tr '\n' ' ')"
}

need_for_preset() {
  case $1 in
    asan | tsan | fuzz) need build clang ;;
    bench) need build bench ;;
    windows | package-windows) need windows ;;
    *) need build ;;
  esac
}

# ---- Building ---------------------------------------------------------------

# Runs a command and shows its output only if it fails.
quietly() {
  mkdir -p "$root/build"
  log=$(mktemp "$root/build/log.XXXXXX")
  if "$@" >"$log" 2>&1; then
    rm -f "$log"
  else
    cat "$log" >&2
    rm -f "$log"
    return 1
  fi
}

# configure PRESET
configure() {
  (cd "$root" && quietly cmake --preset "$1") || stop "the preset $1 cannot be configured"
}

# compile PRESET [TARGET]
compile() {
  say "building ${2:-everything} ($1)"
  configure "$1"
  (cd "$root" && cmake --build --preset "$1" --parallel "$jobs" ${2:+--target "$2"}) ||
    stop "the build failed ($1)"
}

# run_tests PRESET [CTEST ARGUMENT...]
run_tests() {
  preset=$1
  shift
  (cd "$root" && ctest --preset "$preset" --parallel "$jobs" "$@")
}

# regex_of NAME...: the regular expression of exactly these names
regex_of() { echo "^($(echo "$*" | tr ' ' '|'))\$"; }

# Tries what a build installs, as its users do: try_installed PRESET
try_installed() {
  prefix=$(mktemp -d)
  quietly cmake --install "$root/build/$1" --prefix "$prefix" || stop "cannot be installed: $1"
  "$scripts/support/try_consumers.sh" "$prefix" || stop "the installed package does not work: $prefix"
  rm -rf "$prefix"
}

# ---- Files ------------------------------------------------------------------

# The project's own files whose names match one of the given patterns.
own_files() {
  for pattern in "$@"; do
    find "$root" -mindepth 1 \( -name build -o -name '.git*' \) -prune -o \
      -type f -name "$pattern" -print
  done
}

# Runs a command on the lines of standard input; paths may hold blanks.
on_lines() { xargs -r -d '\n' "$@"; }
