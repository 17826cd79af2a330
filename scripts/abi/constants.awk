# Reads preprocessed C with its definitions (cc -E -dD) and prints what a header under FOLDER gives a name and a value:
# "constant NAME" for enumerators and macros, "macro NAME(PARAMETERS) TEXT" for those that take parameters.

/^# [0-9]+ "/ { ours = index($3, "\"" FOLDER "/") == 1; next }
ours && /^#define [A-Za-z_0-9]+\(/ { sub(/^#define/, "macro"); print; next }
ours && /^#define / && NF > 2 { print "constant " $2 } # those without a text keep a header from being read twice
/^#/ { next }
ours { text = text " " $0 }

END {
    while (match(text, /(^|[^A-Za-z_0-9])enum( [A-Za-z_0-9]+)? *{[^}]*}/)) {
        body = substr(text, RSTART, RLENGTH)
        text = substr(text, RSTART + RLENGTH)
        gsub(/.*{|}/, "", body)
        count = split(body, enumerators, ",")
        for (i = 1; i <= count; ++i)
            if (match(enumerators[i], /[A-Za-z_][A-Za-z_0-9]*/))
                print "constant " substr(enumerators[i], RSTART, RLENGTH)
    }
}
