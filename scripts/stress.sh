#!/usr/bin/env bash
# stress.sh [windows|linux] [ROUNDS]: builds what it needs and ends processes in every way, 1000 times
# each, while they log into files that are flushed, rotated and compressed. Without a platform it does so
# on both, Windows under Wine. Stops at the first line that is missing, doubled or torn.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

say() { echo "stress: $((SECONDS / 60)) min: $*"; }
die() { echo "stress: $*" >&2; exit 1; }
usage="usage: scripts/stress.sh [windows|linux] [ROUNDS]"

platforms=(linux windows)
case ${1-} in
    linux|windows) platforms=("$1"); shift ;;
esac
export ZOL_TEST_ROUNDS=${1-1000}
[[ $ZOL_TEST_ROUNDS =~ ^[1-9][0-9]*$ && $# -le 1 ]] || die "$usage"
log=build/logs/stress

if [ ${#platforms[@]} = 1 ]; then scripts/setup.sh test "${platforms[0]}"; else scripts/setup.sh test; fi
mkdir -p build/logs
for platform in "${platforms[@]}"; do
    say "$platform: building"
    { cmake --preset "$platform" && cmake --build --preset "$platform" --target zol_process_end_tests; } \
        >"$log.$platform.build" 2>&1 || { tail -n 20 "$log.$platform.build" >&2; die "$platform cannot be built"; }
    say "$platform: $ZOL_TEST_ROUNDS rounds of each end, output in $log.$platform"
    run=()
    [ "$platform" = linux ] || run=(scripts/wine.sh)
    program=build/$platform/bin/zol_process_end_tests
    [ "$platform" = linux ] || program+=.exe
    "${run[@]}" "$program" --gtest_fail_fast >"$log.$platform" 2>&1 ||
        { grep -B 20 -m 1 '^\[  FAILED' "$log.$platform" >&2; die "$platform: failed"; }
    say "$platform: passed"
done
