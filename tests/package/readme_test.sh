#!/usr/bin/env bash
# The README's sample is the code that the consumer project compiles and runs.
# Arguments: the README, the consumer's source.
set -euo pipefail
diff <(sed -n '/^```cpp$/,/^```$/p' "$1" | sed '1d;$d') \
  <(sed -n '/^\/\/ \[readme\]$/,/^\/\/ \[readme\]$/p' "$2" | sed '1d;$d')
