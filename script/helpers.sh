# shellcheck shell=bash
# Shared by the commands in this directory, which source it. Not a command itself.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
log_dir=$root/build/log
jobs=$(nproc 2>/dev/null || echo 2)

fail() {
  echo "$(basename "$0"): $*" >&2
  exit 1
}

have() { command -v "$1" >/dev/null 2>&1; }

# usage_if_asked FIRST_ARGUMENT: prints the comment at the head of the command, which is its manual.
usage_if_asked() {
  case "${1-}" in
    -h | --help)
      sed -n '2,/^$/ { s/^# \{0,1\}//; p }' "$0"
      exit 0
      ;;
  esac
}

# logged NAME COMMAND...: adds the command's output to NAME's log; shows the log's end when the command fails.
logged() {
  local log=$log_dir/$1.log
  shift
  mkdir -p "$log_dir"
  if ! "$@" >>"$log" 2>&1; then
    echo "--- failed: $*" >&2
    echo "--- the last lines of $log:" >&2
    tail -n 40 "$log" >&2
    return 1
  fi
}

# build_preset PRESET [TARGET...]: configures build/PRESET and builds the targets, or everything.
build_preset() {
  local preset=$1
  shift
  local options=() targets=()
  if have ccache; then options+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_C_COMPILER_LAUNCHER=ccache); fi
  if (($#)); then targets=(--target "$@"); fi
  (
    cd "$root" &&
      logged "$preset" cmake --preset "$preset" "${options[@]}" &&
      logged "$preset" cmake --build --preset "$preset" -j "$jobs" "${targets[@]}"
  )
}

duration() { printf '%d min %02d s' $(($1 / 60)) $(($1 % 60)); }
