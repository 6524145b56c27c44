#!/usr/bin/env bash
# Compares what the shared library exports with the list of what it promises to.
# Arguments: the library, the list, the objdump for such libraries.
set -euo pipefail
if [ "$(head -c 2 "$1")" = MZ ]; then # a DLL
  # The table's lines are a number in brackets and the name, without C's leading underscore. There a
  # stream's type has another name.
  names=$("$3" -p "$1" | awk '/^\[Ordinal\/Name Pointer\]/ { table = 1; next }
    !NF { table = 0 }
    table { print $NF }' | sed 's/6_iobuf/8_IO_FILE/')
else
  names=$(nm -D --defined-only "$1" | awk '{ print $NF }')
fi
# What a sanitizer or the coverage run adds is not the library's own.
c++filt <<<"$names" | grep -vE '^(__|_init$|_fini$|mangled_path|llvm_)' |
  LC_ALL=C sort | diff "$2" -
