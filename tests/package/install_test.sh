#!/usr/bin/env bash
# Installs the library, moves the installed tree, and builds and runs the consumer project against it:
# through the CMake package, and through pkg-config as C++17.
# Arguments: the build folder, the C++ compiler, the flags, the generator and the toolchain file of the
# build, the suffix of programs; and the command that runs programs, if they don't run as they are.
set -euo pipefail
build=$1 cxx=$2 flags=$3 generator=$4 toolchain=$5 suffix=$6
run=("${@:7}")
consumer=$(cd "$(dirname "$0")/consumer" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work/installed" >/dev/null
mv "$work/installed" "$work/moved"
lib=$(dirname "$(find "$work/moved" -name kvgeom.pc)")/..

if shared=$(ls "$lib"/libkvgeom.so 2>/dev/null); then
  soname=$(objdump -p "$shared" | awk '$1 == "SONAME" { print $2 }')
  [ -e "$lib/$soname" ] || { echo "SONAME $soname is not installed"; exit 1; }
fi

cmake -S "$consumer" -B "$work/cmake" -G "$generator" -DCMAKE_PREFIX_PATH="$work/moved" \
  -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_CXX_FLAGS="$flags" >/dev/null
cmake --build "$work/cmake" >/dev/null
# Windows looks for DLLs beside the program.
if dll=$(ls "$work"/moved/bin/*.dll 2>/dev/null); then
  cp "$dll" "$work"
  cp "$dll" "$work/cmake"
fi
"${run[@]}" "$work/cmake/consumer$suffix"

export PKG_CONFIG_PATH=$lib/pkgconfig
# shellcheck disable=SC2046,SC2086 # flags are several words
"$cxx" -std=c++17 -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wold-style-cast -Werror $flags \
  "$consumer/main.cpp" -o "$work/consumer$suffix" $(pkg-config --cflags --libs kvgeom)
LD_LIBRARY_PATH=$lib "${run[@]}" "$work/consumer$suffix"

if [ -x "$work/moved/bin/kvprobe" ]; then
  "$work/moved/bin/kvprobe" --version
fi
