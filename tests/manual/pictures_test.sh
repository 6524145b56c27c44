#!/usr/bin/env bash
# The manual's pictures are those that the program draws.
# Arguments: the program, the folder with the pictures.
set -euo pipefail
drawn=$(mktemp -d)
trap 'rm -rf "$drawn"' EXIT
"$1" "$drawn"
diff <(cd "$2" && tail -n +1 -- *.svg) <(cd "$drawn" && tail -n +1 -- *.svg)
