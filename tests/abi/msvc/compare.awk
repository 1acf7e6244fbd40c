# awk -v number=WORD -v was=WORD -f compare.awk EXPECTED ACTUAL: names what differs between two lists
# of classes, each with its lines below it, and fails if anything does. The first word of a line is
# a number, which WORD tells the meaning of, or a name.

function differs(text) {
    print text
    failed = 1
}

function lineName(position, part) {
    split(position, part, SUBSEP)
    return (part[2] ~ /^[0-9]+$/ ? number " " part[2] : part[2]) " of " part[1]
}

FNR == 1 { ++file }

/^[^ ]/ {
    class = $0
    if (file == 1) {
        expectedClass[class]
    } else {
        actualClass[class]
        if (!(class in expectedClass)) {
            differs("in the boundary, but not in the list: " class)
        }
    }
    next
}

{
    key = $1
    sub(/^ *[^ ]+ +/, "")
    time = ++times[file, class, key]
    position = class SUBSEP key SUBSEP time
    if (file == 1) {
        expected[position] = $0
        order[++lines] = position
        classOf[position] = class
        next
    }
    actual[position] = $0
    if (!(class in expectedClass)) {
        next
    }
    if (!(position in expected)) {
        differs(lineName(position) ": " was " absent, is " $0)
    } else if (expected[position] != $0) {
        differs(lineName(position) ": " was " " expected[position] ", is " $0)
    }
}

END {
    for (i = 1; i <= lines; ++i) {
        position = order[i]
        class = classOf[position]
        if (!(class in actualClass)) {
            if (!(class in told)) {
                differs("in the list, but not in the boundary: " class)
            }
            told[class]
        } else if (!(position in actual)) {
            differs(lineName(position) ": " was " " expected[position] ", is absent")
        }
    }
    exit failed
}
