# Structures that begin with their size may get members at their end, and nothing else: awk -f sized_structures.awk
# BEFORE AFTER, two descriptions. Prints the names of those that changed in another way; fails where there are some.

FNR == 1 { ++file }

/<class-decl name='k_text_[a-z_]*_t'.*>$/ && !/\/>$/ {
    split($0, parts, "'")
    name = parts[2]
    members = ""
}

name != "" && /<(data-member|var-decl) / { members = members $0 "\n" }

/<\/class-decl>/ && name != "" {
    if (file == 1) before[name] = members
    else after[name] = members
    name = ""
}

END {
    for (name in before) {
        grown = before[name] ~ /^[^\n]*\n *<var-decl name='size' / && index(after[name], before[name]) == 1
        if (!grown && after[name] != before[name]) { print name; failed = 1 }
    }
    exit failed
}
