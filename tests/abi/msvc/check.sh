#!/usr/bin/env bash
# check.sh CHECK TREE: one check of what read.sh read into TREE; says what is wrong, line by line.
#   exports, layouts, slots   against the lists in tests/abi/goldens
#   declared                  exported is what the public headers declare, and nothing else
#   foreign                   no name of another library in what is exported
#   cdecl                     how functions are called
#   order                     slots follow the order of declaration
# check.sh --accept [TREE]: makes the present boundary the expected one.
set -euo pipefail
export LC_ALL=C
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(cd "$here/../../.." && pwd)
goldens=$root/tests/abi/goldens
check=${1:?usage: check.sh CHECK TREE, or check.sh --accept [TREE]}
tree=$(realpath -m "${2:-$root/build/linux/tests/abi/msvc/tree}")
boundary=$tree/boundary

say() { echo "check: $*"; }
die() { echo "check: $*" >&2; exit 1; }

# golden KIND: the list; a boundary that nobody has accepted yet fails.
golden() {
    local list=$goldens/$1.msvc.txt
    [ -s "$list" ] || die "$list is missing: scripts/accept-boundary.sh makes it"
    echo "$list"
}

# none MESSAGE < LINES: there are none, or each is told.
none() {
    ! sed "s/^/$1: /" | grep .
}

# same LIST BOUNDARY NOT-IN-LIST NOT-IN-BOUNDARY: two files of sorted lines.
same() {
    local result=0
    comm -13 "$1" "$2" | none "$3" || result=1
    comm -23 "$1" "$2" | none "$4" || result=1
    return "$result"
}

# accepting CHECK...: a failure of these may be intended.
accepting() {
    "$@" || die "to accept an intended change: scripts/accept-boundary.sh"
}

check_exports() {
    local list
    list=$(golden exports)
    accepting same "$list" exports.txt \
        "exported, but not in the list" "in the list, but not exported"
}

check_layouts() {
    local list
    list=$(golden layouts)
    accepting awk -v number=offset -v was=was -f "$here/compare.awk" "$list" layouts.txt
}

check_slots() {
    local list
    list=$(golden slots)
    accepting awk -v number=slot -v was=was -f "$here/compare.awk" "$list" slots.txt
}

check_declared() {
    same imports.txt importable.txt \
        "exported, but not declared in a public header" "declared in a public header, but not exported"
}

check_foreign() {
    awk '/@(std|boost)@@/' exports.txt | none "another library's name is in"
}

# What stands before the first bracket ends with the convention and the name.
check_cdecl() {
    awk '!/^[^(]*__cdecl ZOL::[^ (]+\(/' functions.txt | none "not __cdecl"
}

check_order() {
    awk -v number=slot -v was=declared -f "$here/compare.awk" slots.declared.txt slots.txt
}

if [ "$check" = --accept ]; then
    "$here/compile.sh" "$tree"
    "$here/read.sh" "$tree"
    mkdir -p "$goldens"
    for kind in exports layouts slots; do
        cp "$boundary/$kind.txt" "$goldens/$kind.msvc.txt"
        say "accepted $goldens/$kind.msvc.txt"
    done
    exit
fi

[ -d "$boundary" ] || die "$tree has not been read: run read.sh"
cd "$boundary"
case $check in
    exports | layouts | slots | declared | foreign | cdecl | order) "check_$check" ;;
    *) die "no such check: $check" ;;
esac
say "$check: as expected"
