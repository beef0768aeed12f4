#!/usr/bin/env bash
# expect_file.sh FILE COMMAND...: runs a command, which must succeed and print what is in the file.
set -euo pipefail
expected=$1
shift
diff "$expected" <("$@" || echo "exit code $?")
