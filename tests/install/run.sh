#!/usr/bin/env bash
# Installs a built zmatrix, moves the installed copy elsewhere, and builds the first example against it with gcc and clang,
# through find_package and through pkg-config; each program must print what the README says.
#   tests/install/run.sh BUILD_FOLDER
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/lib.sh"

build=${1:?the build folder of zmatrix}
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
here=$project/tests/install
program=$project/examples/first.c

# expect_output PROGRAM [ENVIRONMENT...]
expect_output() {
  local built=$1
  shift
  env "$@" "$built" >"$scratch/output" || fail "$built failed"
  diff "$project/examples/first.out" "$scratch/output" || fail "$built printed something else than examples/first.out"
}

quietly cmake --install "$build" --prefix "$scratch/first"
mv "$scratch/first" "$scratch/moved"
installed=$scratch/moved
pc=$(dirname "$(find "$installed" -name zmatrix.pc)")
libraries=$(dirname "$pc")
[[ -n $(find "$installed" -path '*/doc/*' -name LICENSE) ]] || fail "the licence is not installed"
"$installed/bin/zmatrix" --help >/dev/null || fail "the installed command does not run"
for row in man:share/man/man1/zmatrix.1 bash:share/bash-completion/completions/zmatrix zsh:share/zsh/site-functions/_zmatrix \
  fish:share/fish/vendor_completions.d/zmatrix.fish; do
  "$installed/bin/zmatrix" --print "${row%%:*}" | diff - "$installed/${row#*:}" || fail "${row#*:} is not the command's"
done

for compiler in gcc clang; do
  command -v "$compiler" >/dev/null || fail "$compiler is missing"

  say "find_package, $compiler"
  quietly cmake -S "$here" -B "$scratch/cmake-$compiler" -G Ninja -DCMAKE_C_COMPILER="$compiler" -DCMAKE_PREFIX_PATH="$installed"
  quietly cmake --build "$scratch/cmake-$compiler"
  expect_output "$scratch/cmake-$compiler/consumer_zmatrix"
  expect_output "$scratch/cmake-$compiler/consumer_static"

  say "pkg-config, $compiler"
  read -ra flags <<<"$(PKG_CONFIG_PATH=$pc pkg-config --cflags --libs zmatrix)"
  "$compiler" -std=c11 -Wall -Wextra -Wpedantic -Werror "$program" "${flags[@]}" -o "$scratch/shared-$compiler"
  expect_output "$scratch/shared-$compiler" LD_LIBRARY_PATH="$libraries"
done
say "the installed copy works"
