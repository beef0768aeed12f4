# shellcheck shell=bash
# Shared by the scripts in this directory, which source it. Not a command itself.

# blocks FILE LANGUAGE: the lines of the fenced blocks in this language.
blocks() {
  awk -v fence='```' -v language="$2" '
    $0 == fence language { inside = 1; next }
    $0 == fence { inside = 0 }
    inside' "$1"
}
