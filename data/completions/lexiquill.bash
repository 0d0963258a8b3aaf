_lexiquill() {
    local current=${COMP_WORDS[COMP_CWORD]}
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W 'search lookup s list ls plan weekly w review r export help' -- "${current,,}")
    fi
}
complete -F _lexiquill lexiquill Lexiquill
