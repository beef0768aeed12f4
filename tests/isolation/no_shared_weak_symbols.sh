#!/bin/sh
# no_shared_weak_symbols.sh COMPILER LIBRARY_DIR SCRATCH_DIR AVX2_SOURCE SOURCE...
#
# The linker keeps one copy of an inline function or template that several objects define. If one of them were compiled
# for AVX2, its copy could end up in the portable code and stop a processor without AVX2. So the AVX2 object may share no
# such symbol with the others, at any optimisation; and nothing of it may run before main, where no choice was made yet.
set -eu
compiler=$1
library=$2
scratch=$3
avx2=$4
shift 4

compile() { "$compiler" -std=c++20 -fPIC -fvisibility=hidden -I"$library" "$@"; }
weak_symbols() { nm --defined-only "$@" | awk 'NF == 3 && $2 ~ /^[WVuvwi]$/ { print $3 }' | sort -u; }

rm -rf "$scratch"
mkdir -p "$scratch"
bad=0
for level in 0 2 3; do
  objects=
  for source in "$@"; do
    object=$scratch/$(basename "$source").O$level.o
    compile -O$level -c "$library/$source" -o "$object"
    objects="$objects $object"
  done
  object=$scratch/avx2.O$level.o
  compile -O$level -mavx2 -c "$library/$avx2" -o "$object"

  weak_symbols "$object" >"$scratch/avx2"
  # shellcheck disable=SC2086
  weak_symbols $objects >"$scratch/others"
  if comm -12 "$scratch/avx2" "$scratch/others" | c++filt | grep .; then
    echo "-O$level: the symbols above are in the AVX2 object and in others"
    bad=1
  fi
  if objdump -h "$object" | grep -E '\.(init_array|ctors|preinit_array)'; then
    echo "-O$level: the AVX2 object runs code before main"
    bad=1
  fi
  # shellcheck disable=SC2086
  if objdump -d --no-show-raw-insn $objects | grep -m 5 '%ymm'; then
    echo "-O$level: AVX registers outside the AVX2 object"
    bad=1
  fi
  echo "-O$level: $(wc -l <"$scratch/avx2") weak symbols in the AVX2 object, $(wc -l <"$scratch/others") in the others"
done
exit $bad
