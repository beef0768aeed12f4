#!/usr/bin/env bash
# shown_lines_are_in.sh README LANGUAGE FILE: every line that the README shows in this language is one of the file.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/blocks.sh"
lines=0
while IFS= read -r line; do
  if ! grep -qxF -- "$line" "$3"; then
    echo "$3 lacks the line: $line" >&2
    exit 1
  fi
  lines=$((lines + 1))
done < <(blocks "$1" "$2")
((lines > 0))
