#!/usr/bin/env bash
# package.sh [windows|linux]: installs the packages that the build needs, builds the SDK without tests
# and examples and writes its archives, for Linux also its Debian packages, to build/packages. Without
# an argument it does so for both platforms.
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

# run_logged LOG COMMAND...: writes the output to the log and prints its end if the command fails.
run_logged() {
    local log=$1
    shift
    "$@" >"$log" 2>&1 || { tail -n 100 "$log" >&2; die "failed: $*; the full output is in $log"; }
}

mkdir -p "$logs" "$packages"
for platform in "${platforms[@]}"; do
    scripts/setup.sh sdk "$platform"
    preset=$platform-sdk
    log=$logs/$preset
    say "$platform: building"
    run_logged "$log.configure" cmake --preset "$preset"
    run_logged "$log.build" cmake --build --preset "$preset"

    say "$platform: packaging"
    made=$(mktemp -d -p "$packages")
    run_logged "$log.cpack" cpack --preset "$preset" -B "$PWD/$made"
    rm -rf "$made/_CPack_Packages"
    for file in "$made"/*; do
        mv -f "$file" "$packages/"
        say "$platform: $packages/${file##*/}, $(stat -c %s "$packages/${file##*/}") bytes"
    done
    rmdir "$made"
done
