#!/usr/bin/env bash
# The version and its day are the same wherever they are written.
# Arguments: the folder of the project, the version.
set -euo pipefail
cd "$1"
day=$(sed -n "s/^## \[$2\] - //p" CHANGELOG.md)
echo "version $2 of ${day:?is not in CHANGELOG.md}"
grep -qx "version: $2" CITATION.cff
grep -qx "date-released: $day" CITATION.cff
head -n 1 packaging/debian/changelog | grep -qF "kvgeom ($2-"
[ "$(date -u -d "$(sed -n 's/^ -- .*>  //p' packaging/debian/changelog | head -n 1)" +%F)" = "$day" ]
