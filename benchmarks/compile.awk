# awk -v repetitions=NUMBER -f median.awk -f compile.awk
#
# Makes a Markdown table of lines of two fields, the name of a source and the milliseconds that its
# compilation took; the one that is called Empty is what the others are compared with.

BEGIN { FS = "\t" }

!($1 in times) { source[++sources] = $1 }

{ time[$1, ++times[$1]] = $2 }

END {
    for (s = 1; s <= sources; ++s) {
        require_times(source[s])
        middle[source[s]] = median(source[s])
    }
    print "| A source with ten lines of | ms to compile, median | more than an empty one |"
    print "|---|--:|--:|"
    for (s = 1; s <= sources; ++s) {
        printf "| %s | %.0f | %.0f |\n", source[s], middle[source[s]], \
            middle[source[s]] - middle["Empty"]
    }
}
