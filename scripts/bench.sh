#!/usr/bin/env bash
# bench.sh [windows|linux] [--only REGEX]: builds the benchmarks and measures nine times how long the
# product's operations take, compared with the least that they could take and with other libraries.
# Without a platform it measures both, Windows under Wine. Writes build/bench/<platform>.md and prints
# it. With --only, measures only the rows whose name, "workload | subject", matches; no sizes and no
# compile times.
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
            [ $# -ge 2 ] || die "--only needs an expression"
            only=$2
            shift 2 ;;
        *) die "usage: scripts/bench.sh [windows|linux] [--only REGEX]" ;;
    esac
done

repetitions=9
milliseconds=20 # of each repetition
lines=200000    # of each repetition that writes into a file
timeout=300     # seconds for one program
programs=(Operations Installation Loading)
results=build/bench
logs=build/logs

# The crisis logs that are measured are not the machine's own.
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
        -DZOL_BUILD_TOOLS=OFF -DZOL_BUILD_BACKENDS=ON
    run_logged "$logs/bench-$1.build" cmake --build "$results/$1"
}

# With an empty /var/log in memory.
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

# Errors go to the program's log.
run_program() { # PLATFORM PROGRAM ARGUMENT...
    local result=0 log=$logs/bench-$1.$2
    # A function in a shell of its own, which timeout can end.
    export -f "run_$1"
    results=$results timeout "$timeout" bash -c 'set -euo pipefail; "$@"' bash "run_$1" "Benchmark$2" \
        "${@:3}" 2>"$log" || result=$?
    # Under Wine, a program that has written its results sometimes does not end. tables.py refuses
    # incomplete results.
    [ "$result" = 0 ] || { [ "$1" = windows ] && [ "$result" = 124 ]; } ||
        { tail -n 20 "$log" >&2; die "$2 failed on $1"; }
}

measure() { # PLATFORM PROGRAM
    say "$1: $2"
    run_program "$1" "$2" \
        --benchmark_enable_random_interleaving=true --benchmark_repetitions="$repetitions" \
        --benchmark_min_time="$(printf '0.%03d' "$milliseconds")" --benchmark_filter="$only" \
        >"$results/$1.$2.json"
}

# That the file consists of all lines, each with time stamp, level, logger and text. The program that
# wrote them has ended.
check_lines() { # FILE ROW
    local digits='[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}\.[0-9]{3,6}' whole all
    whole=$(LC_ALL=C grep -cE "^$digits (INFO|info) \[benchmarks\] .{40}"$'\r?$' "$1" || true)
    all=$(wc -l <"$1")
    if [ "$whole" != "$lines" ] || [ "$all" != "$lines" ]; then
        die "$2: the file has $all lines, of which $whole are as they should be, and not $lines"
    fi
}

# Latencies: one process for each measurement, the subjects of a workload in turns.
measure_files() { # PLATFORM
    say "$1: Files"
    local folder=$results/files rows workload row result=$results/$1.Files.json
    : >"$result"
    rows=$(run_program "$1" Files list | tr -d '\r' | grep -E -- "$only" || true)
    while read -r workload; do
        for _ in $(seq "$repetitions"); do
            while read -r row; do
                rm -rf "$folder"
                mkdir "$folder"
                run_program "$1" Files measure "$row" "$folder/zol.log" "$lines" >>"$result" </dev/null
                check_lines "$folder/zol.log" "$row"
            done < <(grep -F -- "$workload | " <<<"$rows")
        done
    done < <(sed -n 's/ | .*//p' <<<"$rows" | uniq)
    rm -rf "$folder"
}

describe() { # PLATFORM COMPILER
    echo "- Machine: $(lscpu | sed -n 's/^Model name: *//p'), $(nproc) cores; Linux $(uname -r)"
    echo "- Compiler: $("$2" --version | head -n 1)"
    echo "- Flags: $(sed -n '/"command":.*Operations\.cpp\.o/p' "$results/$1/compile_commands.json" |
        grep -oE ' -(O|std|f|m)[^ ]*' | sort -u | tr -d '\n' | cut -c 2-)"
    if [ "$1" = windows ]; then
        echo "- Run under $(wine --version 2>/dev/null)"
    fi
    echo "- Peers: $(dpkg-query -W -f '${Package} ${Version}\n' "${peers[@]}" |
        paste -s -d , | sed 's/,/, /g')"
    echo "- Each row: the median of $repetitions repetitions of at least $milliseconds ms each, in which" \
        "the subjects take turns"
    echo "- Each row of a line into a file: the medians of $repetitions repetitions of $lines statements" \
        "each, in ns, every repetition in a process of its own; the subjects take turns"
}

# Sizes of what a program has to ship, without debug information.
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

# For tables.py: name and flags of what to compile.
linux_libraries() {
    echo "Empty"
    echo "Zol -DLIBRARY_ZOL -Iinclude"
    echo "Spdlog -DLIBRARY_SPDLOG -DSPDLOG_FMT_EXTERNAL -DFMT_HEADER_ONLY"
    echo "SpdlogLibrary -DLIBRARY_SPDLOG $(pkg-config --cflags spdlog)"
    echo "Log4cplus -DLIBRARY_LOG4CPLUS $(pkg-config --cflags log4cplus)"
    echo "BoostLog -DLIBRARY_BOOST_LOG -DBOOST_LOG_DYN_LINK"
    echo "Log4cxx -DLIBRARY_LOG4CXX $(pkg-config --cflags liblog4cxx)"
    echo "Glog -DLIBRARY_GLOG $(pkg-config --cflags libglog)"
}

windows_libraries() {
    echo "Empty"
    echo "Zol -DLIBRARY_ZOL -Iinclude"
    echo "Spdlog -DLIBRARY_SPDLOG -DSPDLOG_FMT_EXTERNAL -DFMT_HEADER_ONLY -isystem build/deps/include"
}

bench() { # PLATFORM COMPILER PEER...
    local platform=$1 compiler=$2 files=() times latencies
    peers=("${@:3}")
    for program in "${programs[@]}"; do
        measure "$platform" "$program"
        files+=("$results/$platform.$program.json")
    done
    measure_files "$platform"
    times=$(benchmarks/tables.py times "${files[@]}")
    latencies=$(benchmarks/tables.py latencies "$repetitions" "$results/$platform.Files.json")
    [ -n "$times$latencies" ] || die "no row matches $only"
    {
        describe "$platform" "$compiler"
        printf '%s' "${times:+$'\n'$times$'\n'}" "${latencies:+$'\n'$latencies$'\n'}"
        if [ -z "$only" ]; then
            say "$platform: sizes and compile times"
            echo
            "${platform}_sizes"
            echo
            "${platform}_libraries" | benchmarks/tables.py compile "$compiler" "$repetitions"
        fi
    } >"$results/$platform.md.new"
    mv "$results/$platform.md.new" "$results/$platform.md"
}

scripts/setup.sh benchmarks >&2
scripts/fetch-benchmark.sh >&2
mkdir -p "$results" "$logs"
for platform in "${platforms[@]}"; do
    build "$platform"
done
for platform in "${platforms[@]}"; do
    if [ "$platform" = linux ]; then
        bench linux g++ libspdlog-dev libfmt-dev liblog4cplus-dev libboost-log-dev liblog4cxx-dev \
            libgoogle-glog-dev
    else
        bench windows x86_64-w64-mingw32-g++-posix libspdlog-dev libfmt-dev
    fi
    echo "# $platform"
    echo
    cat "$results/$platform.md"
    echo
done
say "the tables are in $results"
