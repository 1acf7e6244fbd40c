#!/usr/bin/env bash
# compile.sh TREE: compiles every source of the product for Visual C++'s binary interface. Which
# they are, and with what flags, is CMake's own knowledge of a build for Windows.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(cd "$here/../../.." && pwd)
tree=$(realpath -m "${1:?usage: compile.sh TREE}")

say() { echo "compile: $*"; }
die() { echo "compile: $*" >&2; exit 1; }

# CMake reads both only once for a tree.
settings=$(cat "$here/target.cfg" "$here/toolchain.cmake")
if [ -e "$tree/settings" ]; then
    [ "$settings" = "$(cat "$tree/settings")" ] || rm -rf "$tree"
elif [ -n "$(ls -A "$tree" 2>/dev/null)" ]; then
    die "$tree has other things in it"
fi
mkdir -p "$tree"
echo "$settings" >"$tree/settings"

rm -f "$tree/objects"
say "configuring $tree"
cmake -S "$root" -B "$tree" -G Ninja --toolchain "$here/toolchain.cmake" \
    -DCMAKE_BUILD_TYPE=None -DZOL_BUILD_TESTS=OFF -DZOL_BUILD_TOOLS=OFF >"$tree/configure.log" 2>&1 ||
    { cat "$tree/configure.log" >&2; die "cannot configure"; }

mapfile -t objects < <(ninja -C "$tree" -t targets all | sed -n 's/\.obj: .*/.obj/p' | sort -u)
[ ${#objects[@]} -gt 0 ] || die "CMake knows of no sources"
say "compiling ${#objects[@]} sources"
ninja -C "$tree" -j "$(nproc)" -k 0 "${objects[@]}" || die "not every source compiles"
printf '%s\n' "${objects[@]}" >"$tree/objects"
