# Makes a change to a file as a block of a guide shows it: awk -v root=FOLDER -f apply.awk BLOCK. The block's first line
# is the file's name. The others are lines of the file, marked by " " where they stay, "-" where they go and "+" where
# they come; a line without a mark is an empty one. What stays and goes has to stand in the file, and once.

FNR == 1 { name = $0; next }
$0 == "" && marked == 0 { next }
{ marked++ }
!/^-/ { after = after substr($0, 2) "\n" }
!/^\+/ { before = before substr($0, 2) "\n" }

END {
    path = root "/" name
    while ((getline line < path) > 0) text = text line "\n"
    close(path)
    at = index("\n" text, "\n" before)
    rest = substr(text, at + length(before))
    if (before == "" || at == 0) fail("the lines that stay and go are not there")
    if (index("\n" rest, "\n" before) > 0) fail("the lines that stay and go are there twice")
    printf "%s", substr(text, 1, at - 1) after rest > path
}

function fail(problem) {
    print name ": " problem > "/dev/stderr"
    exit 1
}
