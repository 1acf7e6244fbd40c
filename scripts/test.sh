#!/usr/bin/env bash
# test.sh [windows|linux]: sets up the machine, then builds and tests everything: for Windows under
# Wine; for Linux with g++, with clang++ and with the sanitizers, where format, lint and the
# documentation's site are checked too. Goes on behind a failure, and ends with a line for each part.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

say() { echo "test: $((SECONDS / 60)) min: $*"; }
die() { echo "test: $*" >&2; exit 1; }

case ${1-} in
    windows) presets=(windows) ;;
    linux) presets=(linux linux-clang linux-asan linux-tsan) ;;
    '') presets=(windows linux linux-clang linux-asan linux-tsan) ;;
    *) die "usage: scripts/test.sh [windows|linux]" ;;
esac

logs=build/logs
summary=()
failed=0

finish_part() { # NAME RESULT [FAILED]
    summary+=("$1: $2")
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

test_preset() {
    local preset=$1 log=$logs/$1
    say "$preset: building"
    if ! run_logged "$log.configure" cmake --preset "$preset" ||
        ! run_logged "$log.build" cmake --build --preset "$preset"; then
        finish_part "$preset" "does not build" FAILED
        return
    fi
    say "$preset: testing"
    # Under Wine, a program that has done all its work does not end now and then.
    local again=()
    [ "$preset" != windows ] || again=(--repeat after-timeout:3)
    local result=0
    # CI reads the tests' own closing lines.
    ctest --preset "$preset" "${again[@]}" >"$log.test" 2>&1 || result=$?
    if [ "$result" != 0 ]; then
        sed -n '/\*\*\*/p; /^The following tests FAILED/,$p' "$log.test"
        say "$preset: the tests' whole output is in $log.test"
    fi
    local line
    line=$(grep -E '% tests passed' "$log.test" || echo "no test was run")
    echo "$line"
    if [ "$result" = 0 ] && [[ $line = 100%* ]]; then
        finish_part "$preset" "passed, $line"
    else
        finish_part "$preset" "$line" FAILED
    fi
}

check_format() {
    say "format: checking"
    if git ls-files '*.h' '*.cpp' | xargs clang-format --dry-run --Werror; then
        finish_part format "passed"
    else
        finish_part format "clang-format would change files" FAILED
    fi
}

# Runs beside all the rest, in the time that others leave: Wine's tests wait more than they work.
start_lint() {
    say "lint: checking, beside what follows"
    run_logged "$logs/linux-clang.configure" cmake --preset linux-clang ||
        die "linux-clang cannot be configured"
    sed -n 's/^ *"file": "\(.*\)",*$/\1/p' build/linux-clang/compile_commands.json |
        grep -E "^$PWD/(src|backends|examples|tests|tools)/" | sort -u >"$logs/lint.sources"
    nice -n 19 xargs -P "$(nproc)" -n 4 clang-tidy -quiet -p build/linux-clang \
        <"$logs/lint.sources" >"$logs/lint" 2>&1 &
    lint=$!
    trap 'kill "$lint" 2>/dev/null || true' EXIT
}

finish_lint() {
    say "lint: waiting for the rest"
    trap - EXIT
    if wait "$lint"; then
        finish_part lint "passed, $(wc -l <"$logs/lint.sources") sources"
    else
        grep -vE '^[0-9]+ warnings? generated|^Suppressed ' "$logs/lint" | tail -n 200
        finish_part lint "clang-tidy has findings" FAILED
    fi
}

check_docs() {
    say "docs: making the site"
    if run_logged "$logs/docs" scripts/docs.sh; then
        finish_part docs "passed, $(grep -E '^[0-9]+ pages' "$logs/docs")"
    else
        finish_part docs "the site cannot be made" FAILED
    fi
}

scripts/setup.sh
mkdir -p "$logs"
if [ "${1-}" != windows ]; then
    start_lint
fi
for preset in "${presets[@]}"; do
    test_preset "$preset"
done
if [ "${1-}" != windows ]; then
    check_format
    check_docs
    finish_lint
fi

echo
for line in "${summary[@]}"; do
    say "$line"
done
[ "$failed" = 0 ] || die "failed: $failed of ${#summary[@]}"
say "all passed"
