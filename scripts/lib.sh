# Functions that the scripts share: the project's folder, installing missing packages, configuring and building.
# Sourced, not run. Needs only bash and the tools of a bare Debian or Ubuntu.
set -euo pipefail

project=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
jobs=$(getconf _NPROCESSORS_ONLN 2>/dev/null || echo 2)
missing_packages=()

say() { printf '== %s\n' "$*"; }

fail() {
  printf 'error: %s\n' "$*" >&2
  exit 1
}

# quietly COMMAND...: prints the output of the command only if it fails, and returns its status.
quietly() {
  local log status=0
  log=$(mktemp)
  "$@" >"$log" 2>&1 || status=$?
  [[ $status -eq 0 ]] || cat "$log" >&2
  rm -f "$log"
  return $status
}

# want_command COMMAND PACKAGE: adds PACKAGE to the missing packages if COMMAND doesn't exist.
want_command() {
  command -v "$1" >/dev/null 2>&1 || missing_packages+=("$2")
}

# want_file FILE PACKAGE: adds PACKAGE to the missing packages if FILE, for instance a header, doesn't exist.
want_file() {
  [[ -e $1 ]] || missing_packages+=("$2")
}

want_library_tools() {
  want_command g++ g++
  want_command cmake cmake
  want_command ninja ninja-build
}

want_build_tools() {
  want_library_tools
  want_file /usr/include/CLI/CLI.hpp libcli11-dev
  want_file /usr/include/nlohmann/json.hpp nlohmann-json3-dev
}

want_tests() { want_file /usr/include/gtest/gtest.h libgtest-dev; }

# Google Benchmark, and the libraries that zmatrix is measured beside.
want_benchmarks() {
  want_file /usr/include/benchmark/benchmark.h libbenchmark-dev
  want_file /usr/include/absl/container/flat_hash_map.h libabsl-dev
  want_file /usr/include/sparsehash/dense_hash_map libsparsehash-dev
  want_file /usr/include/datrie/trie.h libdatrie-dev
  want_file /usr/include/primesieve.h libprimesieve-dev
  want_file /usr/include/smf.h libsmf-dev
  want_command pkg-config pkg-config
}

# Installs the missing packages; uses sudo if there are any and the user is not root.
install_missing() {
  [[ ${#missing_packages[@]} -gt 0 ]] || return 0
  local packages=("${missing_packages[@]}") as_root=()
  missing_packages=()
  command -v apt-get >/dev/null 2>&1 || fail "please install these first (Debian's names): ${packages[*]}"
  if [[ $(id -u) -ne 0 ]]; then
    command -v sudo >/dev/null 2>&1 || fail "please install these as root first: apt-get install ${packages[*]}"
    as_root=(sudo)
  fi
  say "installing ${packages[*]}"
  quietly "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -q &&
    quietly "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
      apt-get install -y -q --no-install-recommends "${packages[@]}" ||
    fail "could not install ${packages[*]}"
}

# install_if_offered FILE PACKAGE: installs an optional package; goes on without it if the system doesn't offer it or can't install it.
install_if_offered() {
  [[ ! -e $1 ]] && apt-cache show "$2" >/dev/null 2>&1 || return 0
  want_file "$1" "$2"
  (install_missing) || say "doing without $2"
  missing_packages=()
}

# configure_preset PRESET [CMAKE OPTION...]: configures build/PRESET.
configure_preset() {
  local preset=$1
  shift
  local generator=()
  [[ -e $project/build/$preset/CMakeCache.txt ]] || generator=(-G Ninja)
  (cd "$project" && quietly cmake --preset "$preset" "${generator[@]}" "$@")
}

# build_preset PRESET [CMAKE OPTION...]: configures and builds into build/PRESET.
build_preset() {
  configure_preset "$@" && cmake --build "$project/build/$1" --parallel "$jobs"
}

# build_shared_library FILE: builds the shared library for release, and writes it to FILE without debug symbols.
build_shared_library() {
  say "building the shared library"
  [[ -e $project/build/release/CMakeCache.txt ]] || configure_preset release -DZMATRIX_BUILD_COMMAND=OFF
  (cd "$project" && quietly cmake --build build/release --parallel "$jobs" --target zmatrix)
  mkdir -p "$(dirname "$1")"
  strip --strip-unneeded -o "$1" "$project/build/release/src/libzmatrix.so"
}

jars=/usr/share/java

want_java() {
  want_command javac openjdk-17-jdk-headless
  want_file $jars/jna.jar libjna-java
}

# write_javadoc FOLDER: writes the javadoc of the Java binding; a warning is an error.
write_javadoc() {
  local files
  mapfile -t files < <(find "$project/bindings/java/src/main" -name '*.java' | sort)
  quietly javadoc -quiet -encoding UTF-8 -Xdoclint:all -Xwerror -notimestamp -d "$1" -cp $jars/jna.jar "${files[@]}"
}
