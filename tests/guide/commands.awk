# The commands in the indented blocks of one section of a Markdown page: awk -v heading=HEADING -v into=FOLDER. An empty
# heading is what comes before the first. Each command becomes a file N.command; what a page shows of its output, which
# is where the command stands behind "$ ", becomes N.output. A line that ends in "\" is continued.

/^## / { is_inside = ($0 == "## " heading) }
NR == 1 && heading == "" { is_inside = 1 }
/^ *```/ { is_fenced = !is_fenced }
!is_inside || is_fenced { next }
is_continued { add(substr($0, 5)); next }
/^    \$ / { command(substr($0, 7)); is_output = 1; blanks = ""; next }
/^    / && is_output { print blanks substr($0, 5) > name ".output"; blanks = ""; next }
/^$/ && is_output { blanks = blanks "\n"; next }
/^    / { command(substr($0, 5)); next }
{ is_output = 0 }

function command(text) {
    name = sprintf("%s/%02d", into, ++count)
    add(text)
}

function add(line) {
    print line > (name ".command")
    is_continued = line ~ /\\$/
}
