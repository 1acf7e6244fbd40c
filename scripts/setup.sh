#!/usr/bin/env bash
# setup.sh [benchmarks]: installs what a bare Debian 12 lacks to build and test both platforms, and
# lays the headers and sources that the cross build uses into build/deps; with the argument, also what
# scripts/bench.sh compares with. A second run costs nothing.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

say() { echo "setup: $*"; }
die() { echo "setup: $*" >&2; exit 1; }

packages=(
    g++ clang cmake ninja-build                 # native builds
    libclang-rt-14-dev                          # clang's sanitizers and fuzzer
    g++-mingw-w64-x86-64-posix                  # cross build
    wine wine64                                 # runs what the cross build makes
    libboost-dev libboost-thread-dev libspdlog-dev libfmt-dev
    libcli11-dev nlohmann-json3-dev             # the tool that checks back ends
    googletest
    clang-format clang-tidy
    clang-19 llvm-19 libc++-19-dev libwine-dev  # Visual C++'s binary interface, without Visual C++
    valgrind                                    # counts the instructions of the hot paths
    xz-utils
    dpkg-dev file gdb libxml2-utils pkgconf     # the packages, and what their tests look with
    doxygen furo python3-breathe python3-myst-parser python3-sphinx python3-sphinx-copybutton # the site
)
case ${1-} in
    '') ;;
    benchmarks)
        packages+=(
            libbenchmark-dev pkgconf
            libspdlog-dev liblog4cplus-dev libboost-log-dev liblog4cxx-dev libgoogle-glog-dev # peers
        ) ;;
    *) die "usage: scripts/setup.sh [benchmarks]" ;;
esac
deps=build/deps

as_root() {
    if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

missing=()
for package in "${packages[@]}"; do
    status=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$status" = installed ] || missing+=("$package")
done
if [ ${#missing[@]} -gt 0 ]; then
    say "installing ${missing[*]}"
    log=$(mktemp)
    { as_root apt-get update &&
      as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}"
    } >"$log" 2>&1 || { tail -n 20 "$log" >&2; die "apt-get failed, its whole output is in $log"; }
    rm -f "$log"
fi

# Boost.Thread is a compiled library, and Debian builds it for Linux alone: fetch the sources that
# belong to the installed headers.
version=$(dpkg-query -W -f '${source:Version}' libboost1.74-dev)
if [ "$(cat "$deps/boost-thread/version" 2>/dev/null || true)" != "$version" ]; then
    say "fetching the sources of Boost.Thread $version"
    rm -rf "$deps/boost-thread" "$deps/fetch"
    mkdir -p "$deps/fetch/lists/partial"

    # The archive that offers the headers has the sources too; the machine's own lists stay as they are.
    apt-cache policy libboost1.74-dev |
        awk '/^ +[0-9]+ [a-z]+:\/\// { split($3, part, "/"); print "deb-src", $2, part[1], part[2] }' |
        sort -u >"$deps/fetch/sources.list"
    [ -s "$deps/fetch/sources.list" ] || die "no archive offers libboost1.74-dev: run apt-get update"

    root=$PWD/$deps/fetch
    apt=(apt-get -q
        -o "Dir::Etc::SourceList=$root/sources.list" -o Dir::Etc::SourceParts=-
        -o "Dir::State::Lists=$root/lists" -o APT::Sandbox::User=root)
    if ! (
        cd "$root" && "${apt[@]}" update &&
        "${apt[@]}" source --download-only --only-source "boost1.74=$version"
    ) >"$deps/fetch/log" 2>&1; then
        tail -n 20 "$deps/fetch/log" >&2
        die "cannot fetch the sources of boost1.74 $version"
    fi
    mkdir -p "$deps/boost-thread"
    tar -xJf "$root"/boost1.74_*.orig.tar.xz -C "$deps/boost-thread" --strip-components=4 \
        --wildcards '*/libs/thread/src/win32/*'
    rm -rf "$deps/fetch"
    echo "$version" >"$deps/boost-thread/version"
fi

# Links to the header-only parts, so that nothing else of the Linux headers leaks into the cross build.
mkdir -p "$deps/include"
for header in boost spdlog fmt CLI nlohmann; do
    ln -sfn "/usr/include/$header" "$deps/include/$header"
done

say "ready"
