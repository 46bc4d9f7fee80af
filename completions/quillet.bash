# bash completion for quillet(1): the switch as the first word, then two files.

_quillet() {
    local word=${COMP_WORDS[COMP_CWORD]} first=1
    COMPREPLY=()
    case ${COMP_WORDS[1]} in
        [-/]b*) [ "$COMP_CWORD" -gt 1 ] && first=2 ;;
    esac
    [ "$COMP_CWORD" -lt $((first + 2)) ] || return 0
    if [ "$COMP_CWORD" -eq 1 ] && [[ $word == -* ]]; then
        # shellcheck disable=SC2207  # the one word has no blanks
        COMPREPLY=($(compgen -W "-b" -- "$word"))
    fi
    # Syntax files are offered first; any other file may hold syntax as well.
    local name
    while IFS= read -r name; do
        COMPREPLY+=("$name")
    done < <(compgen -f -X '!*.@(syn|SYN)' -- "$word"; compgen -d -- "$word")
    if [ "${#COMPREPLY[@]}" -eq 0 ]; then
        while IFS= read -r name; do
            COMPREPLY+=("$name")
        done < <(compgen -f -- "$word")
    fi
} &&
    complete -o filenames -F _quillet quillet
