#!/bin/sh
# no_shared_weak_symbols.sh LEVELS COMPILER LIBRARY_DIR SCRATCH_DIR DEFINITIONS COMMON_SOURCES [UNIT FLAGS]...
#
# The linker keeps one copy of an inline function or template that several objects define. If one of them were compiled
# for a processor with more instructions, its copy could end up in the code for one that lacks them. So the unit of a
# backend that is compiled with flags of its own may share no such symbol with any other object, at any of the levels of
# optimisation; and nothing of it may run before main, where no choice was made yet. Lists are separated by blanks.
set -eu
levels=$1
compiler=$2
library=$3
scratch=$4
definitions=$5
common=$6
shift 6

compile() {
  # shellcheck disable=SC2086
  "$compiler" -std=c++20 -fPIC -fvisibility=hidden $definitions -I"$library" "$@"
}
# Where exceptions may pass, unoptimised code has a pointer to their handler, which holds no code.
weak_symbols() {
  nm --defined-only "$@" | awk 'NF == 3 && $2 ~ /^[WVuvwi]$/ && $3 !~ /^DW\.ref\./ { print $3 }' | sort -u
}

# check_level LEVEL [UNIT FLAGS]...: prints what is wrong at this level of optimisation.
check_level() {
  level=$1
  shift
  for source in $common; do
    object=$scratch/$(echo "$source" | tr / _).O$level.o
    compile "-O$level" -c "$library/$source" -o "$object"
    weak_symbols "$object"
    objdump -d --no-show-raw-insn "$object" | grep -m 5 -E '%[yz]mm' |
      sed "s#^#-O$level: wide registers in $source: #" >&2
  done | sort -u >"$scratch/seen.O$level"
  while [ $# -gt 0 ]; do
    object=$scratch/$(echo "$1" | tr / _).O$level.o
    # shellcheck disable=SC2086
    compile "-O$level" $2 -c "$library/$1" -o "$object"
    weak_symbols "$object" >"$object.weak"
    comm -12 "$object.weak" "$scratch/seen.O$level" | c++filt | sed "s#^#-O$level: shared by $1: #" >&2
    if objdump -h "$object" | grep -E '\.(init_array|ctors|preinit_array)' >&2; then
      echo "-O$level: $1 runs code before main" >&2
    fi
    echo "-O$level: $(wc -l <"$object.weak") weak symbols in $1, $(wc -l <"$scratch/seen.O$level") in the others"
    sort -u "$object.weak" "$scratch/seen.O$level" -o "$scratch/seen.O$level"
    shift 2
  done
}

rm -rf "$scratch"
mkdir -p "$scratch"
for level in $levels; do
  check_level $level "$@" 2>>"$scratch/wrong"
done
cat "$scratch/wrong" >&2
test ! -s "$scratch/wrong"
