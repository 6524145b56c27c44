#!/usr/bin/env bash
# Compares what the shared library exports with the list of what it promises to.
# Arguments: the library, the list.
set -euo pipefail
# What a sanitizer or the coverage run adds is not the library's own.
nm -DC --defined-only "$1" | cut -c 20- | grep -vE '^(__|_init$|_fini$|mangled_path|llvm_)' |
  LC_ALL=C sort | diff "$2" -
