#!/usr/bin/env bash
# demo.sh [windows|linux] [FILE]: builds examples/two-modules and runs it on FILE, /var/log/dpkg.log
# by default, on both platforms or on the given one; on Windows, which is Wine here, also
# examples/registry. Log lines go to standard error, everything else to standard output.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

say() { echo "demo: $*"; }
die() { echo "demo: $*" >&2; exit 1; }

platforms=(linux windows)
case ${1-} in
    linux|windows) platforms=("$1"); shift ;;
esac
[ $# -le 1 ] || die "usage: scripts/demo.sh [windows|linux] [FILE]"

# Checked before anything is built; the host checks again.
file=${1-/var/log/dpkg.log}
[ -e "$file" ] || die "cannot read '$file': there is no such file"
[ ! -d "$file" ] || die "cannot read '$file': it is a folder"
[ -r "$file" ] || die "cannot read '$file': no permission"
[[ $file = /* ]] || file=$PWD/$file

cd "$root"
for platform in "${platforms[@]}"; do
    say "preparing the machine for $platform"
    scripts/setup.sh demo "$platform"

    # In a folder of its own: these options would stay in the cache of build/$platform.
    say "building for $platform"
    build=build/demo/$platform
    targets=(TwoModulesHost)
    [ "$platform" = linux ] || targets+=(RegistryExample)
    cmake --preset "$platform" -B "$build" -DZOL_BUILD_TESTS=OFF -DZOL_BUILD_TOOLS=OFF
    cmake --build "$build" --target "${targets[@]}"

    say "running on $platform with $file"
    if [ "$platform" = windows ]; then
        scripts/wine.sh "$build/bin/TwoModulesHost.exe" "Z:${file//\//\\}"
        say "running the registry example"
        scripts/wine.sh "$build/bin/RegistryExample.exe"
    else
        "$build/bin/TwoModulesHost" "$file"
    fi
done
