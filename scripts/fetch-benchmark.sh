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

scripts/fetch-source.sh "$package" "$source" "$version" "$fetch"
rm -rf "$target"
mkdir -p "$target"
tar -xf "$(find "$fetch" -name '*.orig.tar.*' ! -name '*.asc')" -C "$target" --strip-components=1
rm -rf "$fetch"
echo "$version" >"$target/version"
