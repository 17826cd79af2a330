# The table of instructions, from the sizes that bench_instructions printed (the first file) and from what callgrind
# wrote about each step (the others).

FILENAME == ARGV[1] && NF == 0 { next } # between two conversions

FILENAME == ARGV[1] {
    label = $0
    sub(/^[0-9]+ [0-9]+ /, "", label)
    labels[++count] = label
    bytes[label] = $1
    nodes[label] = $2
    next
}

FNR == 1 { step = "" }

/^desc: Trigger: Client Request: / {
    step = $5
    sub(/^desc: Trigger: Client Request: [a-z]+ /, "")
    label = $0
}

/^summary: / && step != "" { instructions[step, label] = $2 }

END {
    split("least copy loads dumps", steps, " ")
    printf "%-36s %9s %12s %8s %8s %8s %8s %8s\n", "conversion", "bytes", "instructions", "/node", "/least",
        "/copy", "/loads", "/dumps"
    for (i = 1; i <= count; i++) {
        label = labels[i]
        converting = instructions["convert", label]
        printf "%-36s %9d %12d %8.1f", label, bytes[label], converting, converting / nodes[label]
        for (step = 1; step <= 4; step++) printf " %8.3f", converting / instructions[steps[step], label]
        printf "\n"
    }
}
