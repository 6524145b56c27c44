# Shared by the scripts beside it: what they need from the system. Sourced, not run.

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# zlib1g-dev: what libassimp-dev needs and does not name.
packages_to_build=(g++ cmake ninja-build libassimp-dev zlib1g-dev libcli11-dev nlohmann-json3-dev)
packages_to_test=("${packages_to_build[@]}" assimp-utils binutils libgtest-dev locales pkg-config python3
  gdb mandoc fish zsh)
# Not g++-multilib, which excludes the compiler for Arm: what that adds is where to find the kernel's
# headers, and the preset knows.
packages_for_linux32=(g++-12-multilib cmake ninja-build binutils googletest locales pkg-config python3
  gdb)
packages_for_windows=(g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix cmake ninja-build binutils
  googletest pkg-config python3 wine wine64)
packages_to_compare=("${packages_for_linux32[@]}" "${packages_for_windows[@]}" clang g++-aarch64-linux-gnu
  qemu-user)
packages_to_bench=(g++ cmake ninja-build libbenchmark-dev libeigen3-dev libimath-dev libocct-foundation-dev
  libocct-modeling-data-dev libcgal-dev python3)
# A real building to try it on.
packages_with_models=(assimp-testmodels)
packages_to_check=(clang clang-format clang-tidy gappa libclang-rt-14-dev)

# Installs those of the given Debian packages that are missing, and says so in one line.
need() {
  local missing=() package
  for package in "$@"; do
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] ||
      missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return
  echo "Installing from Debian: ${missing[*]}"
  local as_root=()
  [ "$(id -u)" -eq 0 ] || as_root=(sudo)
  {
    "${as_root[@]}" apt-get update -q &&
      "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -q -y --no-install-recommends "${missing[@]}"
  } >build/setup.log 2>&1 || {
    cat build/setup.log
    exit 1
  }
}

# Configures and builds a preset, or only the targets that follow --target; quiet unless something is
# wrong.
build() {
  cmake --preset "$1" >"build/$1.log" 2>&1 || {
    cat "build/$1.log"
    exit 1
  }
  cmake --build --preset "$1" "${@:2}" >"build/$1.log" 2>&1 || {
    cat "build/$1.log"
    exit 1
  }
}

mkdir -p build
