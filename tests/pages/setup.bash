# What the tests of pages and completions share.
load ../tool/setup

# commands: their names, as the help page lists them.
commands() { "${KCNVRT:?}" --help | sed -n '/^Commands:/,/^$/s/^  \([a-z][a-z-]*\) .*/\1/p'; }

# options [COMMAND]: those of its help page, long and short, a line each.
options() {
    "$KCNVRT" ${1:+"$1"} --help | sed -n '/^Options:/,/^$/p' | grep -oE '^  (-[a-zA-Z], |    )--[a-z-]+' |
        grep -oE -- '-[a-zA-Z]\b|--[a-z-]+' | sort
}
