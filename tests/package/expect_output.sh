#!/usr/bin/env bash
# expect_output.sh LINE COMMAND...: runs a command, which must succeed and end its output with the line.
set -euo pipefail
expected=$1
shift
output=$("$@")
printf '%s\n' "$output"
[[ $(tail -n 1 <<<"$output") == "$expected" ]]
