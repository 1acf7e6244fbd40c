#!/usr/bin/env bash
# accept-boundary.sh: stores the module's present boundary as the one to hold: exported names,
# layouts, slots and exception types in tests/abi/goldens. Read what it changed before you
# commit it; docs/binary-contract.md tells what a release may change.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

say() { echo "accept-boundary: $*"; }

scripts/setup.sh
export ZOL_ACCEPT_GOLDENS=1
say "linux: building and storing"
cmake --preset linux >/dev/null
cmake --build --preset linux --target zol_boundary_tests >/dev/null
build/linux/bin/zol_boundary_tests --gtest_brief=1

say "windows: building and storing"
cmake --preset windows >/dev/null
cmake --build --preset windows >/dev/null
scripts/wine.sh build/windows/bin/zol_boundary_tests.exe --gtest_brief=1
say "windows: building with clang and storing"
ctest --preset windows -R OtherBuilds.FrameworkOfClangInReleaseAsCxx23
say "Visual C++: storing"
tests/abi/msvc/check.sh --accept

git --no-pager diff --stat -- tests/abi/goldens
say "stored; 'git diff tests/abi/goldens' shows what changed"
