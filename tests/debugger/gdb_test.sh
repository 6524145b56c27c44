#!/usr/bin/env bash
# Lets gdb show records of a stopped program, with the printers that it loads by itself: those beside
# the library in the build folder, then those installed with a stripped library. For a static library,
# with the printers in the sources.
# Arguments: gdb, the program, the printers in the sources, the folder of a shared library, the build
# folder.
set -euo pipefail
gdb=$1 program=$2 printers=$3 library=${4:-} build=${5:-}
folder=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

records=()
while IFS= read -r line; do
  records+=(-ex "echo ${line%% = *}\\040=\\040" -ex "output ${line%% = *}" -ex 'echo \n')
done <"$folder/shown.txt"

# Arguments: how gdb gets the printers.
show() {
  LC_ALL=C "$gdb" -nx -batch -iex "set width 0" "$@" -ex "break ShowAll" -ex run "${records[@]}" \
    "$program" 2>&1 | sed '1,/^Breakpoint 1, /d' | sed -n '/ = /p'
}

if [ -z "$library" ]; then
  show -ex "source $printers" | diff "$folder/shown.txt" -
  exit
fi
show -iex "add-auto-load-safe-path $library" | diff "$folder/shown.txt" -

# Without symbols the tolerance can't be read, and every reversed box is taken for a null one.
cmake --install "$build" --prefix "$work" --strip >/dev/null
library=$(dirname "$(find "$work" -name libkvgeom.so)")
LD_LIBRARY_PATH=$library show -iex "set auto-load scripts-directory $work/share/gdb/auto-load" \
  -iex "set auto-load safe-path $work/share/gdb/auto-load" |
  diff <(sed 's/^real = GBox/& null/' "$folder/shown.txt") -
