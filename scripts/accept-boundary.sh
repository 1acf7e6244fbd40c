#!/usr/bin/env bash
# accept-boundary.sh: stores the module's present boundary as the one to hold: exported names,
# layouts, slots and exception types in tests/boundary/goldens. Read what it changed before you
# commit it; docs/binary-contract.md tells what a release may change.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

say() { echo "accept-boundary: $*"; }

scripts/setup.sh
for preset in linux windows; do
    say "$preset: building"
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset" --target zol_boundary_tests >/dev/null
done
say "linux: storing"
ZOL_ACCEPT_GOLDENS=1 build/linux/bin/zol_boundary_tests --gtest_brief=1
say "windows: storing"
ZOL_ACCEPT_GOLDENS=1 scripts/wine.sh build/windows/bin/zol_boundary_tests.exe --gtest_brief=1

git --no-pager diff --stat -- tests/boundary/goldens
say "stored; 'git diff tests/boundary/goldens' shows what changed"
