# The code blocks of one section of a Markdown page, each into a file of its own: -v heading=HEADING -v into=FOLDER.
# A block that is fenced becomes STEP-N.LANGUAGE, where STEP is the number of the list item that it is in, 0 outside of
# one; N counts the blocks of the section. Rows "| STEP | `words` |" go to the file "words", STEP and words by a tab.

/^## / { is_inside = ($0 == "## " heading); step = 0; next }
!is_inside { next }
/^ *```/ && file == "" {
    indent = match($0, /`/) - 1
    language = substr($0, indent + 4)
    file = sprintf("%s/%d-%02d.%s", into, step, ++count, language == "" ? "text" : language)
    printf "" > file
    next
}
/^ *```/ { close(file); file = ""; next }
file != "" { print substr($0, indent + 1) > file; next }
/^[0-9]+\. / { step = $1 + 0 }
/^\| [0-9]+ \| `.*` \|$/ {
    words = $0
    sub(/^\| [0-9]+ \| `/, "", words)
    sub(/` \|$/, "", words)
    gsub(/\\\|/, "|", words)
    printf "%d\t%s\n", $2, words > (into "/words")
}
