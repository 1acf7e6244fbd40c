#!/usr/bin/env bash
# test.sh [all] [windows|linux] [-R REGEX]: sets up the machine, then builds and tests for Windows under
# Wine and for Linux, and checks format and lint of what changed. With all, what CI runs: also the binary
# interface of Visual C++, a debug build, the sanitizers, every mixed build, packages, documents, and lint
# of everything. With -R, builds only what the tests need whose names match (of a test program, the names
# of its suites), and runs those. Continues after a failure, and ends with a line and a time for each part.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

start=$SECONDS
say() { echo "test: $(((SECONDS - start) / 60)) min: $*"; }
die() { echo "test: $*" >&2; exit 1; }
usage="usage: scripts/test.sh [all] [windows|linux] [-R REGEX]"

profile=test
platforms=(windows linux)
pattern=''
while [ $# -gt 0 ]; do
    case $1 in
        all) profile=all ;;
        windows|linux) platforms=("$1") ;;
        -R)
            [ $# -ge 2 ] || die "$usage"
            pattern=$2
            shift ;;
        *) die "$usage" ;;
    esac
    shift
done

# Every build of this run, those that tests make included, takes what was compiled before from ccache.
use_ccache() {
    export CMAKE_CXX_COMPILER_LAUNCHER=ccache CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1
    export CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
    export CCACHE_MAXSIZE=${CCACHE_MAXSIZE-5G}
}

logs=build/logs
summary=()
failed=0
partStart=0

begin_part() { # NAME
    partStart=$SECONDS
    say "$1"
}

finish_part() { # NAME RESULT [FAILED]
    local seconds=$((SECONDS - partStart))
    summary+=("$(printf '%3d:%02d  %s: %s' $((seconds / 60)) $((seconds % 60)) "$1" "$2")")
    if [ -n "${3-}" ]; then
        failed=$((failed + 1))
    fi
}

# run_logged LOG COMMAND...: its output goes to the log, and here if it fails.
run_logged() {
    local log=$1
    shift
    "$@" >"$log" 2>&1 || { tail -n 200 "$log"; return 1; }
}

# What -R needs: the programs with a source that has a test suite of such a name, or everything if the
# tests are scripts.
targets_for_pattern() { # PRESET
    local targets
    targets=$(
        grep -zorE 'TEST(_[FP])?\([A-Za-z0-9_]+,[[:space:]]*[A-Za-z0-9_]+' tests --include='*.cpp' |
            tr -d ' \n' | tr '\0' '\n' | sed -E 's/^([^:]*):TEST(_[FP])?\(([^,]*),(.*)/\3 \1/' |
            awk -v pattern="$pattern" '$1 ~ pattern { print $2 }' | sort -u |
            while read -r source; do
                sed -nE "s#.* -o [^ ]*/CMakeFiles/([^/]*)\\.dir/[^ ]* -c $PWD/$source\".*#\\1#p" \
                    "build/$1/compile_commands.json"
            done | sort -u
    )
    echo "${targets:-all}"
}

build_preset() { # PRESET
    local preset=$1 log=$logs/$1
    begin_part "$preset: building"
    local testAll=OFF
    if [ $profile = all ] && [ "$preset" != linux-debug ]; then
        testAll=ON
    fi
    if ! run_logged "$log.configure" cmake --preset "$preset" -DZOL_TEST_ALL=$testAll; then
        finish_part "$preset, build" "cannot be configured" FAILED
        return 1
    fi
    local targets=(all)
    if [ -n "$pattern" ]; then
        mapfile -t targets < <(targets_for_pattern "$preset")
    fi
    if ! run_logged "$log.build" cmake --build --preset "$preset" --target "${targets[@]}"; then
        finish_part "$preset, build" "failed" FAILED
        return 1
    fi
    finish_part "$preset, build" "passed"
}

# The names of the tests that timed out in a log of ctest, a line each.
timed_out() { sed -n 's/^ *[0-9]*\/[0-9]* Test *#[0-9]*: \([^ ]*\) \.*\*\*\*Timeout.*/\1/p' "$1"; }

# Under Wine, a program that has done all its work sometimes does not end. Such tests are repeated,
# each with a line of output, except those that test that a program ends.
maxRepeats=2
repeat_timeouts() { # PRESET: whether all that failed has passed then
    local preset=$1 log=$logs/$1 tests test
    mapfile -t tests < <(timed_out "$log.test")
    local count=${#tests[@]}
    if [ "$count" = 0 ] || [ "$count" -gt "$maxRepeats" ] ||
        ! grep -qE "tests passed, $count tests? failed" "$log.test"; then
        return 1
    fi
    for test in "${tests[@]}"; do
        say "$preset: repeating $test, which timed out"
        ctest --preset "$preset" -R "^${test//./\\.}\$" -LE no-repeat --no-tests=error >"$log.repeat" 2>&1 ||
            { cat "$log.repeat"; return 1; }
    done
}

# What ctest says of each failed test, with the end of the test's own output, and the list of them.
show_failures() { # LOG
    awk -v max=60 '
        function flush_lines(i) {
            for (i = (count > max ? count - max : 0); i < count; i++) print "    " lines[i]
            count = 0
        }
        /^ *[0-9]+\/[0-9]+ Test *#[0-9]+:/ { flush_lines(); failed = /\*\*\*/; if (failed) print; next }
        /^ *Start *[0-9]+: / { next }
        /^[0-9]+% tests passed/ { flush_lines(); failed = 0 }
        /^The following tests FAILED/ { list = 1 }
        list { print; next }
        failed { lines[count++] = $0 }
    ' "$1"
}

test_preset() { # PRESET
    local preset=$1 log=$logs/$1
    build_preset "$preset" || return 0
    begin_part "$preset: testing"
    local result=0 select=()
    [ -z "$pattern" ] || select=(-R "$pattern" --no-tests=error)
    ctest --preset "$preset" "${select[@]}" >"$log.test" 2>&1 || result=$?
    if [ "$result" != 0 ]; then
        show_failures "$log.test"
        say "$preset: the whole output of the tests is in $log.test"
        if repeat_timeouts "$preset"; then
            result=0
        fi
    fi
    # CI reads this line.
    local line
    line=$(grep -E '% tests passed' "$log.test" || echo "no test was run")
    echo "$line"
    if [ "$result" = 0 ]; then
        finish_part "$preset, tests" "passed, $line"
    else
        finish_part "$preset, tests" "$line" FAILED
    fi
}

check_format() {
    begin_part "format"
    if git ls-files '*.h' '*.cpp' | xargs clang-format --dry-run --Werror; then
        finish_part format "passed"
    else
        finish_part format "clang-format would change files" FAILED
    fi
}

# Runs beside all the rest, at the lowest priority: tests under Wine wait more than they work.
lint=''
start_lint() {
    say "lint: started in the background"
    nice -n 19 scripts/lint.sh "$@" >"$logs/lint" 2>&1 &
    lint=$!
    trap 'kill "$lint" 2>/dev/null || true' EXIT
}

finish_lint() {
    begin_part "lint: waiting for the rest"
    trap - EXIT
    if wait "$lint"; then
        finish_part "lint, after the other parts" "$(tail -n 1 "$logs/lint")"
    else
        tail -n 200 "$logs/lint"
        finish_part "lint, after the other parts" "failed, see $logs/lint" FAILED
    fi
}

check_docs() {
    begin_part "docs: building the site"
    if run_logged "$logs/docs" scripts/docs.sh; then
        finish_part docs "passed, $(grep -E '^[0-9]+ pages' "$logs/docs")"
    else
        finish_part docs "the site cannot be built" FAILED
    fi
}

begin_part "setup"
if [ ${#platforms[@]} = 1 ]; then
    scripts/setup.sh "$profile" "${platforms[0]}"
else
    scripts/setup.sh "$profile"
fi
finish_part setup "done"
use_ccache
if [ "$profile" = all ]; then
    export ZOL_TEST_ROUNDS=100 # of tests that repeat what happens at random, 20 by default
fi
mkdir -p "$logs"

presets=()
for platform in "${platforms[@]}"; do
    presets+=("$platform")
    if [ "$profile" = all ] && [ "$platform" = windows ]; then
        presets+=(windows-msvc-clang)
    elif [ "$profile" = all ]; then
        presets+=(linux-debug linux-asan linux-tsan)
    fi
done

if [ -n "$pattern" ]; then
    for preset in "${presets[@]}"; do
        test_preset "$preset"
        tail -n +1 "$logs/$preset.test" | grep -E '^ *[0-9]+/[0-9]+ Test' || true
    done
else
    if [ "$profile" = all ]; then
        start_lint all
    else
        start_lint
    fi
    for preset in "${presets[@]}"; do
        test_preset "$preset"
    done
    check_format
    if [ "$profile" = all ]; then
        check_docs
    fi
    finish_lint
fi

echo
for line in "${summary[@]}"; do
    echo "test: $line"
done
[ "$failed" = 0 ] || die "failed: $failed of ${#summary[@]} parts"
say "all passed"
