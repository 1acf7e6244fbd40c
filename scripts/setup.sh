#!/usr/bin/env bash
# setup.sh [PROFILE] [windows|linux]: installs what a bare Debian 12 or 13 lacks for a job, on one
# platform or on both, and puts the headers and sources that the cross build uses into build/deps.
# A second run costs nothing. Profiles, each with what the ones before it need:
#   demo        compilers, CMake, Boost, spdlog, fmt, UTF8-CPP and zlib; Wine for Windows
#   sdk         the libraries of zol-backend-check, and what makes packages
#   test        what scripts/test.sh needs (the default)
#   all         what scripts/test.sh all needs: clang's sanitizers, the documents, syslog-ng, and for
#               Visual C++'s ABI a linker and runtime libraries
#   benchmarks  demo, and the libraries that scripts/bench.sh compares with
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

say() { echo "setup: $*"; }
die() { echo "setup: $*" >&2; exit 1; }
usage="usage: scripts/setup.sh [demo|sdk|test|all|benchmarks] [windows|linux]"

profile=test
case ${1-} in
    demo|sdk|test|all|benchmarks) profile=$1; shift ;;
esac
case ${1-} in
    '') platforms=(windows linux) ;;
    windows|linux) platforms=("$1"); shift ;;
    *) die "$usage" ;;
esac
[ $# = 0 ] || die "$usage"
deps=build/deps

# has WORD LIST...: whether the word is one of the list.
has() {
    local word=$1
    shift
    [[ " $* " = *" $word "* ]]
}

as_root() {
    if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

missing() { # PACKAGE...: those that are not installed, a line each
    local package status
    for package in "$@"; do
        status=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
        [ "$status" = installed ] || echo "$package"
    done
}

updated=no
update() { # once: the lists of a new machine are empty or old
    [ "$updated" = no ] || return 0
    local log
    log=$(mktemp)
    as_root apt-get update >"$log" 2>&1 || { tail -n 20 "$log" >&2; die "apt-get update failed"; }
    rm -f "$log"
    updated=yes
}

install() { # PACKAGE...
    local packages log
    mapfile -t packages < <(missing "$@")
    [ ${#packages[@]} -gt 0 ] || return 0
    update
    say "installing ${packages[*]}"
    log=$(mktemp)
    as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y --no-install-recommends --no-remove "${packages[@]}" >"$log" 2>&1 ||
        { tail -n 20 "$log" >&2; die "apt-get failed, its whole output is in $log"; }
    rm -f "$log"
}

# An LLVM that can build for Visual C++'s ABI with Wine's headers: the oldest that can, and that is
# installed with all its parts or is offered by this release.
oldest_llvm=19
llvm_packages() { echo "clang-$1 clang-tools-$1 lld-$1 llvm-$1"; }
suitable_llvm() { # COMMAND...: of those versions for whose packages the command succeeds
    local version
    for version in $(sed 's/^clang-\([0-9]*\)$/\1/' | sort -n); do
        # shellcheck disable=SC2046
        if [ "$version" -ge "$oldest_llvm" ] && "$@" $(llvm_packages "$version"); then
            echo "$version"
            return
        fi
    done
}
are_installed() { [ -z "$(missing "$@")" ]; }
are_offered() { apt-cache show "$@" >/dev/null 2>&1; }

packages=(cmake ninja-build libboost-dev libspdlog-dev libfmt-dev libutfcpp-dev)
if has linux "${platforms[@]}"; then
    packages+=(g++ libboost-thread-dev zlib1g-dev)
fi
if has windows "${platforms[@]}"; then
    packages+=(g++-mingw-w64-x86-64-posix libz-mingw-w64-dev wine wine64 xz-utils)
fi
if has "$profile" sdk test all; then
    packages+=(libcli11-dev nlohmann-json3-dev dpkg-dev)
    if has linux "${platforms[@]}"; then
        packages+=(libelf-dev file)
    fi
fi
if has "$profile" test all; then
    packages+=(ccache googletest clang clang-format clang-tidy python3)
    if has linux "${platforms[@]}"; then
        packages+=(g++ valgrind)
        packages+=(rsyslog logrotate) # which the tests run with configurations of their own
    fi
fi
if [ "$profile" = all ]; then
    packages+=(
        gdb libxml2-utils pkgconf # what the tests of the packages look with
        doxygen furo python3-breathe python3-myst-parser python3-sphinx python3-sphinx-copybutton # the site
        libwine-dev               # the C headers for Visual C++'s ABI
        zlib1g-dev)               # whose sources are built for it
    if has linux "${platforms[@]}"; then
        packages+=(fakeroot lintian lld) # what the tests of the Debian packages and of other linkers use
        packages+=(libgmock-dev)          # GoogleTest as users have it, for docs/testing.md
    fi
fi
if [ "$profile" = benchmarks ]; then
    packages+=(pkgconf python3)
    if has linux "${platforms[@]}"; then
        packages+=(liblog4cplus-dev libboost-log-dev liblog4cxx-dev libgoogle-glog-dev)
    fi
fi
install "${packages[@]}"

if [ "$profile" = all ]; then
    if has linux "${platforms[@]}" && ! command -v ld.gold >/dev/null; then
        install binutils-gold # Debian 12 has it in binutils
    fi
    # The sanitizers and the fuzzer of the release's own clang, whose version is found.
    version=$(clang -dumpversion)
    install "libclang-rt-${version%%.*}-dev"
    llvm=$(dpkg-query -W -f '${Package}\n' 'clang-*' | grep -xE 'clang-[0-9]+' | suitable_llvm are_installed)
    if [ -z "$llvm" ]; then
        update
        llvm=$(apt-cache pkgnames clang- | grep -xE 'clang-[0-9]+' | suitable_llvm are_offered)
        [ -n "$llvm" ] || die "this release offers no LLVM $oldest_llvm or newer"
        # shellcheck disable=SC2046
        install $(llvm_packages "$llvm")
    fi
fi

if [ "$profile" = all ] && has linux "${platforms[@]}" && [ ! -e "$deps/syslog-ng/usr/sbin/syslog-ng" ]; then
    # A log collector that the tests run. It cannot be installed beside rsyslog: unpack it and those of
    # its libraries that are not installed.
    update
    mapfile -t parts < <(apt-get install --simulate --no-install-recommends syslog-ng-core |
        sed -n 's/^Inst \([^ ]*\) .*/\1/p')
    [ ${#parts[@]} -gt 0 ] || die "apt-get does not say what syslog-ng-core needs"
    say "unpacking ${parts[*]}"
    rm -rf "$deps/syslog-ng"
    mkdir -p "$deps/syslog-ng/packages"
    (cd "$deps/syslog-ng/packages" && apt-get download "${parts[@]}" >/dev/null 2>&1) ||
        die "apt-get cannot download ${parts[*]}"
    for part in "$deps"/syslog-ng/packages/*.deb; do
        dpkg -x "$part" "$deps/syslog-ng"
    done
    rm -r "$deps/syslog-ng/packages"
fi

if has windows "${platforms[@]}"; then
    # Boost.Thread is a compiled library, and Debian builds it for Linux only: fetch the sources that
    # belong to the installed headers.
    headers=$(dpkg-query -W -f '${Depends}' libboost-dev | grep -oE 'libboost[0-9.]+-dev' | head -n 1)
    [ -n "$headers" ] || die "libboost-dev does not name the package with the headers"
    source=$(dpkg-query -W -f '${source:Package}' "$headers")
    version=$(dpkg-query -W -f '${source:Version}' "$headers")
    if [ "$(cat "$deps/boost-thread/version" 2>/dev/null || true)" != "$version" ]; then
        scripts/fetch-source.sh "$headers" "$source" "$version" "$deps/boost-source"
        say "unpacking the sources of Boost.Thread $version"
        rm -rf "$deps/boost-thread"
        mkdir -p "$deps/boost-thread"
        tar -xJf "$deps/boost-source/$source"_*.orig.tar.xz -C "$deps/boost-thread" --strip-components=4 \
            --wildcards '*/libs/thread/src/win32/*'
        rm -rf "$deps/boost-source"
        echo "$version" >"$deps/boost-thread/version"
    fi

    # Links to the header-only parts, so that no other Linux header reaches the cross build.
    mkdir -p "$deps/include"
    for header in boost spdlog fmt utf8cpp CLI nlohmann; do
        ln -sfn "/usr/include/$header" "$deps/include/$header"
    done
fi

if [ "$profile" = all ]; then
    # LLVM's standard library cannot be installed beside that of another LLVM: unpack it, for a test on
    # Linux and for Visual C++'s ABI. Debian builds it for Linux only, so the sources are fetched as well.
    version=$(dpkg-query -W -f '${Version}' "clang-$llvm")
    if [ ! -d "$deps/libcxx/lib" ] || [ "$(cat "$deps/libcxx/version" 2>/dev/null || true)" != "$version" ]; then
        update
        parts=("libc++-$llvm-dev" "libc++1-$llvm" "libc++abi1-$llvm" "libunwind-$llvm")
        source=$(dpkg-query -W -f '${source:Package}' "clang-$llvm")
        scripts/fetch-source.sh "${parts[0]}" "$source" \
            "$(dpkg-query -W -f '${source:Version}' "clang-$llvm")" "$deps/libcxx-source"
        say "unpacking libc++ $version and its sources"
        rm -rf "$deps/libcxx"
        mkdir -p "$deps/libcxx"
        tar -xJf "$deps/libcxx-source/$source"_*.orig.tar.xz -C "$deps/libcxx" --strip-components=2 \
            --wildcards --no-wildcards-match-slash '*/libcxx/src'
        (cd "$deps/libcxx-source" && apt-get download "${parts[@]/%/=$version}" >/dev/null 2>&1) ||
            die "apt-get cannot download ${parts[*]} $version"
        for part in "$deps"/libcxx-source/*.deb; do
            dpkg -x "$part" "$deps/libcxx-source/packages"
        done
        mv "$deps/libcxx-source/packages/usr/lib/llvm-$llvm/include/c++/v1" "$deps/libcxx/include"
        mv "$deps/libcxx-source/packages/usr/lib/llvm-$llvm/lib" "$deps/libcxx/lib"
        rm -rf "$deps/libcxx-source"
        echo "$version" >"$deps/libcxx/version"
    fi
fi

if [ "$profile" = all ] && has windows "${platforms[@]}"; then
    # Debian builds zlib for Linux and for mingw only: fetch its sources for Visual C++'s ABI.
    version=$(dpkg-query -W -f '${source:Version}' zlib1g-dev)
    if [ "$(cat "$deps/zlib/version" 2>/dev/null || true)" != "$version" ]; then
        source=$(dpkg-query -W -f '${source:Package}' zlib1g-dev)
        scripts/fetch-source.sh zlib1g-dev "$source" "$version" "$deps/zlib-source"
        say "unpacking the sources of zlib $version"
        rm -rf "$deps/zlib"
        mkdir -p "$deps/zlib"
        # Releases of Debian differ in how the archive is compressed, and it may have a signature.
        archive=$(find "$deps/zlib-source" -name "${source}_*.orig.tar.*" ! -name '*.asc')
        tar -xf "$archive" -C "$deps/zlib" --strip-components=1 \
            --wildcards --no-wildcards-match-slash '*/*.[ch]'
        rm -rf "$deps/zlib-source"
        echo "$version" >"$deps/zlib/version"
    fi

    # The libraries of cmake/msvc-clang.cmake. That takes a minute.
    runtime=$deps/msvc-clang
    key=$(cat "$deps/libcxx/version" cmake/msvc-clang.cmake $(git ls-files cmake/msvc-clang) | sha256sum)
    if [ "$(cat "$runtime/key" 2>/dev/null || true)" != "$key" ]; then
        say "building the runtime libraries for Visual C++'s ABI"
        rm -rf "$runtime"
        mkdir -p "$runtime"
        { cmake -S cmake/msvc-clang -B "$runtime" -G Ninja -DCMAKE_BUILD_TYPE=None \
            --toolchain "$PWD/cmake/msvc-clang.cmake" -DZOL_LIBCXX="$PWD/$deps/libcxx" &&
            cmake --build "$runtime"; } >"$runtime.log" 2>&1 ||
            { tail -n 40 "$runtime.log" >&2; die "they cannot be built, the whole output is in $runtime.log"; }
        echo "$key" >"$runtime/key"
    fi
fi

say "ready: $profile ${platforms[*]}"
