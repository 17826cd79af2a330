# shellcheck shell=bash
# What asks the functions that are made of the table of commands. Behind "=" stands the value of the option before it:
# bash makes words of both.
_kcnvrt() {
    local tool=${COMP_WORDS[0]} word=${COMP_WORDS[COMP_CWORD]} command="" place=0 option="" offer i
    COMPREPLY=()
    for ((i = 1; i < COMP_CWORD; ++i)); do
        if [ -n "$option" ]; then
            [ "${COMP_WORDS[i]}" = = ] || option=
        elif [[ ${COMP_WORDS[i]} = -?* ]]; then
            option=${COMP_WORDS[i]}
            [ -n "$(_kcnvrt_value "$command" "$option")" ] || option=
        elif [ -z "$command" ]; then
            command=${COMP_WORDS[i]}
        else
            ((++place))
        fi
    done
    if [ -n "$option" ]; then
        [ "$word" != = ] || word=
        offer=$(_kcnvrt_value "$command" "$option")
    elif [[ $word = -* ]]; then
        offer="words $(_kcnvrt_options "$command")"
    elif [ -z "$command" ]; then
        offer="words $_kcnvrt_commands"
    else
        offer=$(_kcnvrt_operand "$command" "$place")
    fi
    case $offer in
        files)
            compopt -o filenames 2> /dev/null
            mapfile -t COMPREPLY < <(compgen -f -- "$word")
            ;;
        words*) mapfile -t COMPREPLY < <(compgen -W "${offer#words}" -- "$word") ;;
        commands) mapfile -t COMPREPLY < <(compgen -W "$_kcnvrt_commands" -- "$word") ;;
        sections) _kcnvrt_sections ;;
        places) _kcnvrt_places 's/[[*|].*//' ;;
    esac
}

# The names of the layout that is asked for, or of both; behind a slash places.
_kcnvrt_sections() {
    local layout=.
    if [[ $word = /* ]]; then
        _kcnvrt_places
        return
    fi
    [[ $command != @(schema|example) ]] || layout=^${COMP_WORDS[COMP_CWORD - 1]}
    [[ " ${COMP_WORDS[*]} " != *" --to-old "* ]] || layout=^old
    [[ " ${COMP_WORDS[*]} " != *" --to-new "* ]] || layout=^new
    mapfile -t COMPREPLY < <("$tool" sections 2> /dev/null |
        awk -v layout="$layout" -v word="$word" '$0 ~ layout && index($2, word) == 1 && !seen[$2]++ { print $2 }')
}

# _kcnvrt_places [EDIT]: places of the layouts, section by section, as sed leaves them. Where they are those of a file
# they end before its entries, which have names of their own.
_kcnvrt_places() {
    local section=${word#/}
    section=${section#Device/}
    compopt -o nospace 2> /dev/null
    mapfile -t COMPREPLY < <(
        if [[ $section = */* ]]; then
            "$tool" mapping "${section%%/*}" 2> /dev/null | grep -o '/[^ ]*' | sed "${1:-}"
        else
            "$tool" sections 2> /dev/null | sed 's|^old\t|/|; s|^new\t|/Device/|; s|$|/|'
        fi | awk -v word="$word" 'index($0, word) == 1 && !seen[$0]++'
    )
}

complete -F _kcnvrt kcnvrt
