#!/bin/sh
# no_shared_weak_symbols.sh SCRATCH_DIR COMMON_OBJECTS UNIT_OBJECT...
#
# The linker keeps one copy of an inline function or template that several objects define. If one of them were compiled
# for a processor with more instructions, its copy could end up in the code for one that lacks them. So the unit of a
# backend that is compiled with flags of its own may share no such symbol with any other object; and nothing of it may
# run before main, where no choice was made yet. Lists are separated by blanks.
set -eu
scratch=$1
common=$2
shift 2

# Where exceptions may pass, there can be a pointer to their handler, which holds no code.
weak_symbols() {
  nm --defined-only "$@" | awk 'NF == 3 && $2 ~ /^[WVuvwi]$/ && $3 !~ /^DW\.ref\./ { print $3 }' | sort -u
}

mkdir -p "$scratch"
wrong=$scratch/wrong
seen=$scratch/seen
: >"$wrong"
# shellcheck disable=SC2086
weak_symbols $common >"$seen"
for object in $common; do
  objdump -d --no-show-raw-insn "$object" | grep -m 5 -E '%[yz]mm' | sed "s#^#wide registers in $object: #" >>"$wrong"
done
for object in "$@"; do
  weak_symbols "$object" >"$scratch/weak"
  comm -12 "$scratch/weak" "$seen" | c++filt | sed "s#^#shared by $object: #" >>"$wrong"
  if objdump -h "$object" | grep -E '\.(init_array|ctors|preinit_array)' >>"$wrong"; then
    echo "$object runs code before main" >>"$wrong"
  fi
  echo "$(wc -l <"$scratch/weak") weak symbols in $object, $(wc -l <"$seen") in the others"
  sort -u "$scratch/weak" "$seen" -o "$seen"
done
cat "$wrong" >&2
test ! -s "$wrong"
