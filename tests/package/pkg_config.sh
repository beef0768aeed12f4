#!/usr/bin/env bash
# pkg_config.sh LIBDIR SOURCE PROGRAM COMPILER [FLAG...]: builds a source with what pkg-config says of the library
# installed in LIBDIR, and runs the program.
set -euo pipefail
libdir=$1 source=$2 program=$3
shift 3

export PKG_CONFIG_PATH=$libdir/pkgconfig
read -ra flags <<<"$(pkg-config --cflags --libs morvane)"
"$@" -std=c++20 "$source" "${flags[@]}" -Wl,-rpath,"$libdir" -o "$program"
"$program"
