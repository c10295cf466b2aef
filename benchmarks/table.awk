# Makes a Markdown table of the lines that the benchmark programs print (benchmarks/Comparison.h), and sentences of their notes.
BEGIN { FS = "|" }
$1 == "row" {
    if (!rows++) {
        print "| what | beside | reach | ratio | quartiles | ours | the other | |"
        print "|---|---|---|---|---|---|---|---|"
    }
    reached = $5 + 0 <= $4 + 0
    if (reached) good++
    printf "| %s | %s | %s | %s | %s to %s | %s | %s | %s |\n", $2, $3, $4, $5, $6, $7, $8, $9,
        reached ? "reached" : "**missed**"
}
$1 == "note" { notes = notes "\n" $2 }
END {
    printf "\n%d of %d rows are reached.\n", good, rows
    if (notes != "") print notes
}
