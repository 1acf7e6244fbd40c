# awk -v repetitions=NUMBER -f median.awk -f table.awk
#
# Makes a Markdown table of what the drivers write: the median of each row's repetitions, beside that
# of the floor of its work and, for the product, that of the fastest peer.

BEGIN { FS = "\t" }

{ sub(/\r$/, "") } # of a Windows program

NF != 3 && NF != 5 {
    print "table.awk: not a line of a driver: " $0 >"/dev/stderr"
    exit failed = 1
}

{ row = $1 FS $2 FS $3 }

!(row in known) {
    known[row] = 1
    if (!($1 in members)) {
        work[++works] = $1
    }
    member[$1, ++members[$1]] = row
    role[row] = $2
    subject[row] = $3
}

NF == 5 { time[row, ++times[row]] = $5 }

function shown(nanoseconds) {
    return sprintf(nanoseconds < 100 ? "%.1f" : "%.0f", nanoseconds)
}

function ratio(number, to) {
    return to ? sprintf("%.2f", number / to) : ""
}

function print_work(name,    m, row, floor, best, mark) {
    for (m = 1; m <= members[name]; ++m) {
        row = member[name, m]
        require_times(row)
        middle[row] = median(row)
        if (role[row] == "floor") {
            floor = middle[row]
        }
        if (role[row] == "peer" && (!best || middle[row] < best)) {
            best = middle[row]
        }
    }
    for (m = 1; m <= members[name]; ++m) {
        row = member[name, m]
        mark = role[row] == "product" ? "**" : ""
        printf "| %s | %s | %s | %s | %s |\n", m == 1 ? name : "", mark subject[row] mark, \
            mark shown(middle[row]) mark, ratio(middle[row], floor), \
            role[row] == "product" ? ratio(middle[row], best) : ""
    }
}

END {
    if (failed) {
        exit 1
    }
    print "| Work | Subject | ns, median | to the floor | to the best peer |"
    print "|---|---|--:|--:|--:|"
    for (w = 1; w <= works; ++w) {
        print_work(work[w])
    }
}
