#!/usr/bin/env bash
# read.sh TREE: reads the module's boundary, as Visual C++ would see it, into TREE/boundary:
#   exports.txt         what the objects that compile.sh made export, undecorated and decorated
#   functions.txt       the same without data
#   imports.txt         the same for what the public headers alone declare for import
#   importable.txt      what of exports.txt a header can declare, in the form of imports.txt
#   layouts.txt         the records of classes that export something or have virtual functions
#   slots.txt           the virtual tables of these
#   slots.declared.txt  these tables for Linux, where they keep the order of declaration
set -euo pipefail
export LC_ALL=C
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(cd "$here/../../.." && pwd)
tree=$(realpath -m "${1:?usage: read.sh TREE}")
out=$tree/reading

say() { echo "read: $*"; }
die() { echo "read: $*" >&2; exit 1; }

[ -e "$tree/objects" ] || die "$tree has not been compiled: run compile.sh"
rm -rf "$out" "$tree/boundary"
mkdir -p "$out"
cd "$out"

options=(-std=c++17 -I"$root/include" -DZOL_FRAMEWORK_OTHER_STANDARD_LIBRARY)
for_visual_cpp=(clang++-19 --config="$here/target.cfg" "${options[@]}")
for_linux=(clang++-19 --target=x86_64-linux-gnu "${options[@]}")

# with_undecorated < DECORATED: both forms of each name.
with_undecorated() {
    llvm-undname-19 | awk '
        NR % 3 == 1 { decorated = $0 }
        NR % 3 == 2 { print $0 "  " decorated }
    ' | sort
}

# Of a destructor, clang tells from a header another entry than the one that is exported.
with_plain_destructors() {
    sed -E 's/^.* (ZOL::[^ ]+)::(~[^ (]+|`vbase dtor.)\(void\)  .*/\1, the destructor/' | sort
}

say "exported names"
grep '^src/' "$tree/objects" | sed "s|^|$tree/|" | xargs -d '\n' llvm-readobj-19 --coff-directives |
    grep -oE '/EXPORT:[^ ]+' | sed 's|^/EXPORT:||; s/"//g' | sort -u >directives ||
    die "the objects export nothing"
sed 's/,DATA$//' directives | with_undecorated >exports.txt
grep -v ',DATA$' directives | with_undecorated >functions.txt

say "imported names"
(cd "$root/include" && find ZOL/Framework -name '*.h' | sort | sed 's/.*/#include "&"/') >headers.cpp
[ -s headers.cpp ] || die "there are no public headers"
"${for_visual_cpp[@]}" -fsyntax-only \
    -Xclang -ast-dump=json -Xclang -ast-dump-filter=ZOL::Framework headers.cpp >headers.json
# A declaration's own keys stand four columns left of those of its attributes.
awk -F '"' '
    { match($0, /^ */); column = RLENGTH }
    $2 == "id" { decorated[column] = "" }
    $2 == "mangledName" { decorated[column] = $4 }
    $2 == "pure" { decorated[column] = "" }
    $2 == "kind" && $4 == "DLLImportAttr" && decorated[column - 4] != "" { print decorated[column - 4] }
' headers.json | sort -u | with_undecorated | with_plain_destructors >imports.txt
# Virtual tables are exported with their classes, and have no declaration.
grep -v '`vftable' exports.txt | with_plain_destructors >importable.txt

say "layouts"
# A class that exports something: all of the name but its last part.
awk -F '  ' '{ sub(/\(.*/, "", $1); sub(/.* /, "", $1); sub(/::[^:]*$/, "", $1); print $1 }' \
    exports.txt | sort -u >exporting
"${for_visual_cpp[@]}" -fsyntax-only -Xclang -fdump-record-layouts-complete headers.cpp | awk '
    function finish() {
        if (wanted) { print record }
        wanted = 0
    }
    BEGIN { while ((getline name < "exporting") > 0) { exports[name] = 1 } }
    /^\*\*\* Dumping AST Record Layout/ { finish(); heading = 1; next }
    heading {
        heading = 0
        ours = $4 ~ /^ZOL::Framework::/
        wanted = $4 in exports
        record = $4
        next
    }
    !ours || !/^ *[0-9]* \|/ { next }
    $1 == "|" {
        gsub(/[][,|=]/, " ")
        for (i = 1; i <= NF; i += 2) { record = record "\n    " $i " " $(i + 1) }
        next
    }
    {
        offset = $1
        sub(/^ *[0-9]+ \|   /, "")
        # Not that of a stream out of the standard library, which a line has within.
        if (offset == 0 && /vftable pointer/ && !/\(basic_/) { wanted = 1 }
        record = record "\n    " offset " " $0
    }
    END { finish() }
' >layouts.txt
awk '/^[^ ]/ { class = $0 } / 0 .*vftable pointer/ { print class }' layouts.txt | sort -u >polymorphic

say "slots"
# A class that inherits from each, with a function that needs the virtual table: this lays out the
# table of an abstract class too.
{
    cat headers.cpp
    awk '{
        slots = $0
        gsub("::", "__", slots)
        print "struct " slots " : " $0 " { " slots "(const " slots "& other); };"
        print slots "::" slots "(const " slots "& other) : " $0 "(other) {}"
    }' polymorphic
} >slots.cpp

# tables WORD: the virtual tables of these classes, which the compiler announces by that word. What
# stands before the functions is no slot, and the two destructors of Linux are one.
tables() {
    awk -v word="$1" -v quote="'" '
        BEGIN {
            while ((getline name < "polymorphic") > 0) {
                slots = name
                gsub("::", "__", slots)
                class[slots] = name
            }
        }
        index($0, word " for " quote) == 1 {
            parts = split($0, part, quote)
            slots = part[parts - 1]
            inside = slots in class
            if (inside) { print class[slots] }
            slot = 0
            next
        }
        !inside || !/^ *[0-9]+ \|/ { if (/^$/) { inside = 0 } next }
        / RTTI$| offset_to_top / || /\[deleting\]$/ { next }
        {
            sub(/^ *[0-9]+ \| /, "")
            if (/::~/) {
                $0 = class[slots] "::~" class[slots] "()"
                gsub(/~.*::/, "~")
            }
            print "    " slot++ " " $0
        }
    '
}

"${for_visual_cpp[@]}" -c -o slots.obj -Xclang -fdump-vtable-layouts slots.cpp | tables VFTable >slots.txt
"${for_linux[@]}" -c -o slots.o -Xclang -fdump-vtable-layouts slots.cpp | tables Vtable \
    >slots.declared.txt
for slots in slots.txt slots.declared.txt; do
    grep '^[^ ]' "$slots" | sort | cmp -s - polymorphic ||
        die "$slots lacks virtual tables, or has them twice"
done

# Complete, and only now to be seen.
mv "$out" "$tree/boundary"
