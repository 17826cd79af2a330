# Figures for limits.awk, out of a table that ./bench prints: awk -v table=instructions|memory -f figures.awk FILE
# Of each kind of conversion the worst: whole configurations in each direction, and sections that are not small. The
# last fields of a row are numbers, those before them its label, as "whole to-new 10 flags 1" or "wifi to-old 10".

function worst(name, value) {
    if (!(name in figures) || value > figures[name]) figures[name] = value
}

table == "memory" && $1 == "whole" {
    worst("memory whole " $2 ", allocations / fewest", $(NF - 2))
    worst("memory whole " $2 ", bytes above the result", $NF)
}

table == "instructions" && $1 == "whole" {
    split("least copy loads dumps", steps, " ")
    for (i = 1; i <= 4; i++) worst("instructions whole " $2 " / " steps[i], $(NF - 4 + i))
    count[$2, $3, $5] = $(NF - 5)
    per_node[$2, $3, $5] = $(NF - 4)
}

table == "instructions" && $2 ~ /^to-(new|old)$/ && $(NF - 6) >= 2048 {
    worst("instructions " ($1 ~ /^(tr069|dsl_vlan|DSL_Vlan)$/ ? $1 : "other sections") " " $2 " / copy", $(NF - 2))
}

END {
    for (name in figures) printf "%s = %s\n", name, figures[name]
    if (table != "instructions") exit
    split("to-new to-old", directions, " ")
    for (i in directions) {
        way = directions[i]
        name = "instructions whole " way
        printf "%s, a node, 100 / 10 = %.3f\n", name, per_node[way, 100, 0] / per_node[way, 10, 0]
        printf "%s, DSL VLANs / without = %.3f\n", name, count[way, 100, 1] / count[way, 100, 0]
    }
}
