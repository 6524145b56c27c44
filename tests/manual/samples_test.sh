#!/usr/bin/env bash
# The manual's samples print what the manual says.
# Arguments: what they must print, the program, and the command before it that runs programs.
set -euo pipefail
diff "$1" <("${@:3}" "$2" | tr -d '\r')
