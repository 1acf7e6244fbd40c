#!/usr/bin/env bash
# demo.sh [windows|linux] [FILE]: builds the demo and runs it on FILE, /var/log/dpkg.log if none is
# given; on both platforms, Windows under Wine, if none is given. Log lines go to standard error,
# everything else to standard output.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

say() { echo "demo: $*"; }
die() { echo "demo: $*" >&2; exit 1; }

platforms=(linux windows)
case ${1-} in
    linux|windows) platforms=("$1"); shift ;;
esac
[ $# -le 1 ] || die "usage: scripts/demo.sh [windows|linux] [FILE]"

# Looked at before anything is built; the host does so again.
file=${1-/var/log/dpkg.log}
[ -e "$file" ] || die "cannot read '$file': there is no such file"
[ ! -d "$file" ] || die "cannot read '$file': it is a folder"
[ -r "$file" ] || die "cannot read '$file': no permission"
[[ $file = /* ]] || file=$PWD/$file

cd "$root"
say "preparing the machine"
scripts/setup.sh

for platform in "${platforms[@]}"; do
    say "building for $platform"
    cmake --preset "$platform"
    cmake --build --preset "$platform" --target DemoHost DemoReader DemoAuditor Console

    say "running on $platform with $file"
    if [ "$platform" = windows ]; then
        scripts/wine.sh build/windows/bin/DemoHost.exe "Z:${file//\//\\}"
    else
        build/linux/bin/DemoHost "$file"
    fi
done
