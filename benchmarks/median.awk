# What the other programs of this folder share: time[row, 1] to time[row, times[row]] are the
# measurements of a row.

function median(row,    i, j, value, sorted) {
    for (i = 1; i <= times[row]; ++i) {
        value = time[row, i] + 0
        for (j = i - 1; j >= 1 && sorted[j] > value; --j) {
            sorted[j + 1] = sorted[j]
        }
        sorted[j + 1] = value
    }
    i = int((times[row] + 1) / 2)
    return times[row] % 2 ? sorted[i] : (sorted[i] + sorted[i + 1]) / 2
}

# Without so many, something ended half-way.
function require_times(row) {
    if (times[row] != repetitions) {
        print "measured " times[row] + 0 " times, not " repetitions ": " row >"/dev/stderr"
        exit failed = 1
    }
}
