#!/usr/bin/env bash
# build_as_shown.sh PROJECT DIRECTORY: runs the lines of the README that build and install the library, in a copy of the
# project and with a home of its own, and what they install by the CMake lines that follow.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/blocks.sh"
project=$1 directory=$2

rm -rf "$directory"
mkdir -p "$directory/project" "$directory/home"
cp -r "$project"/{CMakeLists.txt,CMakePresets.json,cmake,Processing,examples,gstreamer,README.md} "$directory/project"
cd "$directory/project"
export HOME=$directory/home
eval "$(blocks README.md sh | grep '^cmake ')"
cmake -S examples/consumer -B consumer -D CMAKE_PREFIX_PATH="$HOME/.local"
cmake --build consumer
consumer/consumer
