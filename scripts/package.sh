#!/usr/bin/env bash
# package.sh [windows|linux]: sets up the machine, builds the SDK without tests and examples, and
# makes its archives, for Linux its Debian packages too, in build/packages; for both platforms if
# none is given.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

say() { echo "package: $*"; }
die() { echo "package: $*" >&2; exit 1; }

case ${1-} in
    windows|linux) platforms=("$1") ;;
    '') platforms=(windows linux) ;;
    *) die "usage: scripts/package.sh [windows|linux]" ;;
esac

packages=build/packages
logs=build/logs

# run_logged LOG COMMAND...: its output goes to the log, and here if it fails.
run_logged() {
    local log=$1
    shift
    "$@" >"$log" 2>&1 || { tail -n 100 "$log" >&2; die "failed: $*; its whole output is in $log"; }
}

scripts/setup.sh
mkdir -p "$logs" "$packages"
for platform in "${platforms[@]}"; do
    tree=build/package-$platform
    log=$logs/package-$platform
    say "$platform: building"
    run_logged "$log.configure" cmake --preset "$platform" -B "$tree" \
        -DZOL_BUILD_TESTS=OFF -DZOL_BUILD_EXAMPLES=OFF
    run_logged "$log.build" cmake --build "$tree"

    say "$platform: packaging"
    made=$(mktemp -d -p "$packages")
    run_logged "$log.cpack" cpack --config "$tree/CPackConfig.cmake" -B "$PWD/$made"
    rm -rf "$made/_CPack_Packages"
    for file in "$made"/*; do
        mv -f "$file" "$packages/"
        say "$platform: $packages/${file##*/}, $(stat -c %s "$packages/${file##*/}") bytes"
    done
    rmdir "$made"
done
