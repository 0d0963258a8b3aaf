_lexiquill() {
    local current=${COMP_WORDS[COMP_CWORD]}
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W 'search list plan review export help' -- "${current,,}")
    fi
}
complete -F _lexiquill lexiquill Lexiquill
