# Whether an output is as a page shows it: awk -f shown.awk SHOWN OUTPUT. A line "..." of the page stands for any lines.

FNR == NR { shown[++count] = $0; next }
{ there[++lines] = $0 }

# Whether what is shown from `i` on fits the lines from `j` on.
function fits(i, j) {
    for (; i <= count; i++) {
        if (shown[i] == "...") {
            if (i == count) return 1
            for (; j <= lines; j++) if (fits(i + 1, j)) return 1
            return 0
        }
        if (j > lines || there[j] != shown[i]) return 0
        j++
    }
    return j > lines
}

END { exit !fits(1, 1) }
