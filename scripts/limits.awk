# Compares figures with their limits: awk -v group=GROUP -f limits.awk limits.txt FIGURES
# A line of limits.txt is "NAME <= LIMIT" or "NAME >= LIMIT", one of FIGURES "NAME = VALUE". A name begins with its
# group. Every figure has to have a limit, and every limit of the group a figure.

function fail(name, words) {
    printf "%-52s %s\n", name, words
    failed = 1
}

/^#/ || NF == 0 { next }

FILENAME == ARGV[1] {
    if (index($0, group " ") != 1) next
    name = $0
    sub(/ *[<>]=.*/, "", name)
    if (match($0, /[<>]=/) == 0) { fail($0, "is no limit"); next }
    relation[name] = substr($0, RSTART, 2)
    limit[name] = substr($0, RSTART + 2) + 0
    next
}

{
    name = $0
    sub(/ = .*/, "", name)
    value = $0
    sub(/.* = /, "", value)
    seen[name] = 1
    if (!(name in limit)) { fail(name, value ", which has no limit"); next }
    keeps = relation[name] == "<=" ? value + 0 <= limit[name] : value + 0 >= limit[name]
    printf "%-52s %12s  %s %s%s\n", name, value, relation[name], limit[name], keeps ? "" : "  MISSED"
    if (!keeps) failed = 1
}

END {
    for (name in limit) if (!(name in seen)) fail(name, "was not measured")
    exit failed
}
