#!/usr/bin/env bash
# The DLL needs no other DLLs than the system's, and its entry point is the library's own, which asks
# Windows to leave out the calls for threads.
# Arguments: the DLL, the objdump for DLLs.
set -euo pipefail
imports=$("$2" -p "$1")
needed=$(awk '$1 == "DLL" && $2 == "Name:" { print tolower($3) }' <<<"$imports")
echo "needs" $needed
grep -qx kernel32.dll <<<"$needed"
if grep -vE '^(advapi32|kernel32|msvcrt|ucrtbase|api-ms-win-crt-.*)\.dll$' <<<"$needed"; then
  echo "no part of the system"
  exit 1
fi
grep -qw DisableThreadLibraryCalls <<<"$imports"
