#!/usr/bin/env bash
# Code compiled for larger processors must not be taken for that of another source: its objects may
# define no weak symbol (an inline function, an instance of a template), for of those that several
# objects define, the linker keeps any one. Argument: the folder with the objects.
set -euo pipefail
objects=$(find "$1" -name 'kernels_avx*.o')
[ "$(wc -l <<<"$objects")" -eq 6 ] || {
  echo "6 objects are expected, not: $objects"
  exit 1
}
# What begins with two underscores is the compiler's own.
weak=$(xargs nm --defined-only --print-file-name <<<"$objects" | awk '$(NF - 1) ~ /[WwVvu]/ && $NF !~ /^__|^DW\.ref/')
[ -z "$weak" ] || {
  echo "$weak"
  exit 1
}
