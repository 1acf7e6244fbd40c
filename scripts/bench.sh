#!/usr/bin/env bash
# bench.sh [windows|linux] [--only REGEX]: builds the benchmarks and measures nine times how long the
# product's operations take, beside the least that they could take and beside other libraries; on
# both platforms, Windows under Wine, if none is given. Makes build/bench/<platform>.md and shows it.
# With --only, measures only the works whose names match, and neither sizes nor compilers.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

say() { echo "bench: $((SECONDS / 60)) min: $*" >&2; }
die() { echo "bench: $*" >&2; exit 1; }

platforms=(linux windows)
only=''
while [ $# -gt 0 ]; do
    case $1 in
        linux|windows) platforms=("$1"); shift ;;
        --only)
            [ $# -ge 2 ] || die "--only lacks its expression"
            only=$2
            shift 2 ;;
        *) die "usage: scripts/bench.sh [windows|linux] [--only REGEX]" ;;
    esac
done

repetitions=9
milliseconds=20 # of each repetition
longest=300     # seconds that one program may take
results=build/bench
logs=build/logs

# The logs of last resort that are measured are not the machine's own.
export ZOL_BENCHMARK_CRISIS_LOG=1
export ZOL_WINEPREFIX=$PWD/$results/wine

run_logged() { # LOG COMMAND...
    local log=$1
    shift
    "$@" >"$log" 2>&1 || { tail -n 50 "$log" >&2; die "failed, the whole output is in $log: $*"; }
}

build() { # PLATFORM
    say "$1: building"
    run_logged "$logs/bench-$1.configure" cmake --preset "$1" -B "$results/$1" \
        -DZOL_BUILD_BENCHMARKS=ON -DZOL_BUILD_TESTS=OFF -DZOL_BUILD_EXAMPLES=OFF \
        -DZOL_BUILD_TOOLS=OFF -DZOL_BUILD_BACKENDS=OFF
    run_logged "$logs/bench-$1.build" cmake --build "$results/$1"
}

# With a /var/log of their own, empty and in memory.
run_linux() { # PROGRAM ARGUMENT...
    local user=()
    [ "$(id -u)" = 0 ] || user=(--user --map-root-user)
    # shellcheck disable=SC2016
    unshare "${user[@]}" --mount sh -c 'mount -t tmpfs tmpfs /var/log && exec "$@"' sh \
        "$results/linux/bin/$1" "${@:2}"
}

run_windows() { # PROGRAM ARGUMENT...
    rm -f "$ZOL_WINEPREFIX"/drive_c/zol*.log
    scripts/wine.sh "$results/windows/bin/$1.exe" "${@:2}"
}

measure() { # PLATFORM PROGRAM
    say "$1: $2"
    local result=0
    # A function in a shell of its own, which timeout can end.
    export -f "run_$1"
    results=$results timeout "$longest" bash -c 'set -euo pipefail; "$@"' bash "run_$1" "$2" \
        --only "$only" --repetitions "$repetitions" --milliseconds "$milliseconds" \
        >>"$results/$1.results" || result=$?
    # Under Wine, a program that has done all its work does not end now and then: whether it has, the
    # table tells.
    [ "$result" = 0 ] || { [ "$1" = windows ] && [ "$result" = 124 ]; } || die "$2 failed on $1"
}

describe() { # PLATFORM COMPILER
    echo "- Machine: $(lscpu | sed -n 's/^Model name: *//p'), $(nproc) cores; Linux $(uname -r)"
    echo "- Compiler: $("$2" --version | head -n 1)"
    echo "- Flags: $(sed -n '/"command":.*SmallDriver\.cpp\.o/p' "$results/$1/compile_commands.json" |
        grep -oE ' -(O|std|f|m)[^ ]*' | sort -u | tr -d '\n' | cut -c 2-)"
    if [ "$1" = windows ]; then
        echo "- Run under $(wine --version 2>/dev/null)"
    fi
    echo "- Beside: $(dpkg-query -W -f '${Package} ${Version}\n' "${peers[@]}" |
        paste -s -d , | sed 's/,/, /g')"
    echo "- Each row: the median of $repetitions repetitions, in which the subjects take turns, of at" \
        "least $milliseconds ms each; an installation's are shorter"
}

table() { # PLATFORM
    awk -v repetitions="$repetitions" -f benchmarks/median.awk -f benchmarks/table.awk \
        "$results/$1.results"
}

# Sizes of what a program has to bring along, without debug information.
sizes() { # STRIP MODULE FILE...
    local strip=$1 stripped
    shift
    stripped=$(mktemp)
    echo "| Module, stripped | bytes |"
    echo "|---|--:|"
    for file in "$@"; do
        "$strip" --strip-unneeded -o "$stripped" "$file"
        echo "| $(basename "$file") | $(stat -c %s "$stripped") |"
    done
    rm -f "$stripped"
}

# compile_times COMPILER: what to compile on standard input, one a line: the name that it has in the
# table, the source and the flags that it needs.
compile_times() {
    local object sources line source start end
    object=$(mktemp)
    mapfile -t sources
    for ((repetition = 0; repetition < repetitions; ++repetition)); do
        for line in "${sources[@]}"; do
            read -ra line <<<"$line"
            source=benchmarks/compile/${line[1]}.cpp
            start=${EPOCHREALTIME/[.,]/}
            "$1" -O2 -std=c++17 -c "${line[@]:2}" "$source" -o "$object"
            end=${EPOCHREALTIME/[.,]/}
            printf '%s\t%d.%03d\n' "${line[0]}" $(((end - start) / 1000)) $(((end - start) % 1000))
        done
    done
    rm -f "$object"
}

compile_table() { # COMPILER
    compile_times "$1" |
        awk -v repetitions="$repetitions" -f benchmarks/median.awk -f benchmarks/compile.awk
}

linux_sizes() {
    local libraries
    libraries=/usr/lib/$(gcc -print-multiarch)
    sizes strip "$results"/linux/bin/ZOL_Framework_r.*.so "$libraries"/libspdlog.so \
        "$libraries"/liblog4cplus.so "$libraries"/libboost_log.so "$libraries"/liblog4cxx.so \
        "$libraries"/libglog.so
}

windows_sizes() {
    sizes x86_64-w64-mingw32-strip "$results"/windows/bin/ZOL_Framework_r.*.dll
}

linux_sources() {
    echo "Empty Empty"
    echo "Zol Zol -Iinclude"
    echo "Spdlog Spdlog -DSPDLOG_FMT_EXTERNAL -DFMT_HEADER_ONLY"
    echo "SpdlogLibrary Spdlog $(pkg-config --cflags spdlog)"
    echo "Log4cplus Log4cplus $(pkg-config --cflags log4cplus)"
    echo "BoostLog BoostLog -DBOOST_LOG_DYN_LINK"
    echo "Log4cxx Log4cxx $(pkg-config --cflags liblog4cxx)"
    echo "Glog Glog $(pkg-config --cflags libglog)"
}

windows_sources() {
    echo "Empty Empty"
    echo "Zol Zol -Iinclude"
    echo "Spdlog Spdlog -DSPDLOG_FMT_EXTERNAL -DFMT_HEADER_ONLY -isystem build/deps/include"
}

bench() { # PLATFORM COMPILER DRIVER PEER...
    local platform=$1 compiler=$2 driver=$3
    peers=("${@:4}")
    rm -f "$results/$platform.results"
    measure "$platform" "$driver"
    measure "$platform" InstallationDriver
    measure "$platform" LoadDriver
    {
        describe "$platform" "$compiler"
        echo
        table "$platform"
        if [ -z "$only" ]; then
            say "$platform: sizes and compiler"
            echo
            "${platform}_sizes"
            echo
            "${platform}_sources" | compile_table "$compiler"
        fi
    } >"$results/$platform.md.new"
    mv "$results/$platform.md.new" "$results/$platform.md"
}

scripts/setup.sh benchmarks >&2
mkdir -p "$results" "$logs"
for platform in "${platforms[@]}"; do
    build "$platform"
done
for platform in "${platforms[@]}"; do
    if [ "$platform" = linux ]; then
        bench linux g++ GoogleDriver libspdlog-dev libfmt-dev liblog4cplus-dev libboost-log-dev \
            liblog4cxx-dev libgoogle-glog-dev
    else
        bench windows x86_64-w64-mingw32-g++-posix SmallDriver libspdlog-dev libfmt-dev
    fi
    echo "# $platform"
    echo
    cat "$results/$platform.md"
    echo
done
say "the tables are in $results"
