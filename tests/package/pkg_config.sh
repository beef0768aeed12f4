#!/usr/bin/env bash
# pkg_config.sh README LIBDIR SOURCE DIRECTORY COMPILER [FLAG...]: builds a source as the README shows it, in the directory
# and with the library installed in LIBDIR, and runs the program.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/blocks.sh"
readme=$1 libdir=$2 source=$3 directory=$4
shift 4
compiler=("$@")

# Stands for the compiler in the line that is shown.
c++() { "${compiler[@]}" "$@"; }

line=$(blocks "$readme" sh | grep 'pkg-config')
mkdir -p "$directory"
cd "$directory"
cp "$source" main.cpp
rm -f consumer
export PKG_CONFIG_PATH=$libdir/pkgconfig LD_LIBRARY_PATH=$libdir
eval "$line"
./consumer
