#!/usr/bin/env bash
# lint.sh [all] [PATH...]: checks sources with clang-tidy, those of Windows with the headers of
# mingw-w64. Without arguments, the sources that differ from the default branch of origin, or every
# source if there is no such branch; with all, every source; with paths, the sources below them.
# What has passed once is not checked again until it, a header or the configuration changes.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

say() { echo "lint: $*"; }
die() { echo "lint: $*" >&2; exit 1; }

rooms='src|backends|examples|tests|tools'
work=build/lint

default_branch() {
    local branch
    for branch in "$(git rev-parse --abbrev-ref origin/HEAD 2>/dev/null || true)" origin/main origin/master; do
        if [ -n "$branch" ] && git rev-parse --verify --quiet "$branch^{commit}" >/dev/null; then
            echo "$branch"
            return
        fi
    done
}

# The paths, as an expression, of what changed since the branch: sources, and those that include a
# changed header.
changed_since() {
    local base changed header
    base=$(git merge-base HEAD "$1")
    changed=$({ git diff --name-only "$base"; git ls-files --others --exclude-standard; } | sort -u)
    if grep -qE '(^|/)\.clang-tidy$' <<<"$changed"; then
        echo '.'
        return
    fi
    {
        grep -E '\.cpp$' <<<"$changed" || true
        { grep -E '\.h$' <<<"$changed" || true; } | while read -r header; do
            git grep -lE "#include \"([^\"]*/)?${header##*/}\"" -- '*.cpp' || true
        done
    } | sort -u | sed 's|[.+]|\\&|g; s|^|^|; s|$|$|' | paste -s -d '|'
}

configure() { # PLATFORM OPTION...: its compile commands go to build/lint/PLATFORM
    cmake -S . -B "$work/$1" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_EXPORT_COMPILE_COMMANDS=ON \
        -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON "${@:2}" >"$work/$1.configure" 2>&1 ||
        { tail -n 20 "$work/$1.configure" >&2; die "the sources for $1 cannot be configured"; }
    sed -n "s|^ *\"file\": \"$PWD/\(.*\)\",*$|\1|p" "$work/$1/compile_commands.json" |
        grep -E "^($rooms)/" | sort -u
}

check() { # PLATFORM SOURCE
    local key
    key=$({ echo "$common"; echo "$1 $2"; cat "$2"; } | sha256sum | cut -d ' ' -f 1)
    [ ! -e "$work/passed/$key" ] || return 0
    local output result=0
    output=$(clang-tidy -quiet -p "$work/$1" "$2" 2>&1) || result=$?
    if [ "$result" = 0 ]; then
        touch "$work/passed/$key"
    else
        grep -vE '^[0-9]+ warnings? (and [0-9]+ errors? )?generated|^Suppressed |^Use -header-filter' <<<"$output"
        return 1
    fi
}

wanted='.'
if [ "${1-}" = all ]; then
    [ $# = 1 ] || die "usage: scripts/lint.sh [all] [PATH...]"
elif [ $# -gt 0 ]; then
    wanted=$(printf '^%s\n' "$@" | paste -s -d '|')
else
    branch=$(default_branch)
    if [ -n "$branch" ]; then
        wanted=$(changed_since "$branch")
        say "sources that differ from $branch"
    fi
fi
if [ -z "$wanted" ]; then
    say "0 sources passed"
    exit 0
fi

mkdir -p "$work/passed"
configure linux -DCMAKE_CXX_COMPILER=clang++ >"$work/linux.sources"
configure windows --toolchain "$PWD/cmake/mingw-w64-clang.cmake" |
    comm -13 "$work/linux.sources" - >"$work/windows.sources"
common=$({ clang-tidy --version; git ls-files '*.h' '*.clang-tidy' | xargs cat 2>/dev/null; } | sha256sum)
export common work
export -f check
for platform in linux windows; do
    sed -nE "\\#$wanted#s|^|$platform |p" "$work/$platform.sources"
done >"$work/sources"
xargs -r -P "$(nproc)" -L 1 bash -c 'check "$1" "$2"' check <"$work/sources" ||
    die "clang-tidy has findings"
say "$(wc -l <"$work/sources") sources passed"
