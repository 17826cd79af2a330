# Reads preprocessed C and prints "KIND NAME" for each function that a header under FOLDER declares: KIND is "handler"
# for those with the signature of a section handler, "function" for the others.

function declared(statement) {
    while (match(statement, /__attribute__ *\(\([^;]*\)\)/))
        statement = substr(statement, 1, RSTART - 1) substr(statement, RSTART + RLENGTH)
    gsub(/[ \t]+/, " ", statement)
    sub(/^ /, "", statement)
    if (statement ~ /^typedef/ || !match(statement, /[A-Za-z_][A-Za-z_0-9]* ?\(/)) return
    name = substr(statement, RSTART, RLENGTH - 1)
    sub(/ $/, "", name)
    handler = statement ~ /^int [A-Za-z_0-9]+ ?\(json_t \*[a-z_]+, json_t \*[a-z_]+, k_err_t \*[a-z_]+\) ?$/
    print (handler ? "handler " : "function ") name
}

/^# [0-9]+ "/ { ours = index($3, "\"" FOLDER "/") == 1; next }
/^#/ { next }
ours { text = text " " $0 }

END {
    count = split(text, statements, ";")
    for (i = 1; i <= count; ++i) declared(statements[i])
}
