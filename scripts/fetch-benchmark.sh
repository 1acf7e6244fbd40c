#!/usr/bin/env bash
# fetch-benchmark.sh: lays the sources of Google Benchmark into build/deps/benchmark. Debian builds the
# library for Linux only; both platforms build the same sources. A second run does nothing.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

die() { echo "fetch-benchmark: $*" >&2; exit 1; }

source=benchmark
package=libbenchmark-dev # the package that the sources build: names the version and the archive
target=$PWD/build/deps/benchmark
fetch=$target.fetch

version=$(apt-cache show --no-all-versions "$package" 2>/dev/null |
    awk '/^Version:/ { version = $2 } /^Source: .*\(/ { gsub(/[()]/, "", $3); version = $3 } END { print version }')
[ -n "$version" ] || die "no archive offers $package: run apt-get update"
[ "$(cat "$target/version" 2>/dev/null || true)" != "$version" ] || exit 0

echo "fetch-benchmark: fetching the sources of $source $version"
rm -rf "$target" "$fetch"
mkdir -p "$target" "$fetch/lists/partial"

# Use the archive that offers the package, without a change to the machine's own lists.
apt-cache policy "$package" |
    awk '/^ +[0-9]+ [a-z]+:\/\// { split($3, part, "/"); print "deb-src", $2, part[1], part[2] }' |
    sort -u >"$fetch/sources.list"
apt=(apt-get -q
    -o "Dir::Etc::SourceList=$fetch/sources.list" -o Dir::Etc::SourceParts=-
    -o "Dir::State::Lists=$fetch/lists" -o APT::Sandbox::User=root)
(
    cd "$fetch" && "${apt[@]}" update &&
    "${apt[@]}" source --download-only --only-source "$source=$version"
) >"$fetch/log" 2>&1 || { tail -n 20 "$fetch/log" >&2; die "cannot fetch the sources of $source $version"; }

tar -xf "$(find "$fetch" -name '*.orig.tar.*' ! -name '*.asc')" -C "$target" --strip-components=1
rm -rf "$fetch"
echo "$version" >"$target/version"
