#!/bin/sh
# uninlined.sh COMPILER LIBRARY_DIR SCRATCH_DIR DEFINITIONS COMMON_SOURCES [UNIT FLAGS]...
#
# Compiles the library so that every function is there that is not inlined by force, and runs no_shared_weak_symbols.sh
# on it. Lists are separated by blanks.
set -eu
compiler=$1
library=$2
scratch=$3
definitions=$4
common=$5
shift 5

# object_of SOURCE [FLAG...]: compiles it and prints the name of the object.
object_of() {
  source=$1
  shift
  object=$scratch/$(echo "$source" | tr / _).o
  # shellcheck disable=SC2086
  "$compiler" -std=c++20 -O1 -fno-inline -fPIC -fvisibility=hidden $definitions -I"$library" "$@" \
    -c "$library/$source" -o "$object"
  echo "$object"
}

rm -rf "$scratch"
mkdir -p "$scratch"
common_objects=
for source in $common; do
  object=$(object_of "$source")
  common_objects="$common_objects $object"
done
unit_objects=
while [ $# -gt 0 ]; do
  # shellcheck disable=SC2086
  object=$(object_of "$1" $2)
  unit_objects="$unit_objects $object"
  shift 2
done
# shellcheck disable=SC2086
sh "$(dirname "$0")/no_shared_weak_symbols.sh" "$scratch" "$common_objects" $unit_objects
