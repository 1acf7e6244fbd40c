#!/usr/bin/env bash
# accept-goldens.sh: stores the module's present binary interface in tests/abi/goldens (exported
# names, layouts, levels, virtual slots, exception types) and the present instruction counts. Read
# the difference before you commit it; docs/binary-contract.md says what a release may change.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

say() { echo "accept-goldens: $*"; }

goldens=tests/abi/goldens
framework=ZOL_Framework_r.2.0.8.129

# store FILE COMMAND...: replaces the golden by what the command prints, if it succeeds.
store() {
    local file=$goldens/$1 lines
    shift
    lines=$("$@")
    printf '%s\n' "$lines" | tr -d '\r' >"$file"
}

scripts/setup.sh all
say "linux"
cmake --preset linux >/dev/null
cmake --build --preset linux --target zol_abi_dump >/dev/null
store exports.linux.txt build/linux/bin/zol_abi_dump exports
# The tests for Windows compare with these too.
for list in layouts levels slots exceptions; do
    store $list.txt build/linux/bin/zol_abi_dump $list
done

say "windows"
cmake --preset windows >/dev/null
cmake --build --preset windows --target zol_abi_dump >/dev/null
store exports.windows.txt scripts/wine.sh build/windows/bin/zol_abi_dump.exe exports

say "windows, the module built with clang"
tree=build/windows-clang
cmake -S . -B $tree -G Ninja --toolchain cmake/mingw-w64-clang.cmake -DCMAKE_BUILD_TYPE=Release \
    -DZOL_BUILD_TESTS=OFF -DZOL_BUILD_EXAMPLES=OFF -DZOL_BUILD_BACKENDS=OFF -DZOL_BUILD_TOOLS=OFF \
    >/dev/null
cmake --build $tree --target ZOL_Framework >/dev/null
# A program loads the modules beside it first.
cp build/windows/bin/zol_abi_dump.exe build/windows/bin/lib{stdc++-6,gcc_s_seh-1,winpthread-1}.dll $tree/bin/
[ -e $tree/bin/$framework.dll ]
store exports.windows-clang.txt scripts/wine.sh $tree/bin/zol_abi_dump.exe exports

say "Visual C++"
tree=build/windows-msvc-clang
cmake --preset windows-msvc-clang >/dev/null
cmake --build $tree --target ZOL_Framework >/dev/null
python3 tests/abi/msvc/msvc_abi.py accept $tree/tests/abi/msvc/settings.json

say "instruction counts"
tests/perf/accept.sh

git --no-pager diff --stat -- $goldens tests/perf
say "stored; 'git diff tests' shows what changed"
