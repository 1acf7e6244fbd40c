#!/usr/bin/env bash
# fetch-source.sh BINARY SOURCE VERSION FOLDER: downloads the original sources of a Debian source package,
# without Debian's changes, into a new folder, from the archive that offers the binary package. The
# machine's own package lists stay as they are.
set -euo pipefail

say() { echo "fetch-source: $*"; }
die() { echo "fetch-source: $*" >&2; exit 1; }

[ $# = 4 ] || die "usage: scripts/fetch-source.sh BINARY SOURCE VERSION FOLDER"
binary=$1 source=$2 version=$3 folder=$(realpath -m "$4")

say "fetching the sources of $source $version"
rm -rf "$folder"
mkdir -p "$folder/lists/partial"
apt-cache policy "$binary" |
    awk '/^ +[0-9]+ [a-z]+:\/\// { split($3, part, "/"); print "deb-src", $2, part[1], part[2] }' |
    sort -u >"$folder/sources.list"
[ -s "$folder/sources.list" ] || die "no archive offers $binary: run apt-get update"

apt=(apt-get -q
    -o "Dir::Etc::SourceList=$folder/sources.list" -o Dir::Etc::SourceParts=-
    -o "Dir::State::Lists=$folder/lists" -o APT::Sandbox::User=root)
if ! (
    cd "$folder" && "${apt[@]}" update &&
    "${apt[@]}" source --download-only --tar-only --only-source "$source=$version"
) >"$folder/log" 2>&1; then
    tail -n 20 "$folder/log" >&2
    die "cannot fetch the sources of $source $version"
fi
