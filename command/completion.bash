# Completion of sectrix for bash: verbs and options as its help tells them, values where the help lists them, and else files.
_sectrix() {
    local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} verb= help values
    [ "$COMP_CWORD" -le 1 ] || verb=${COMP_WORDS[1]}
    help=$("${COMP_WORDS[0]}" ${verb:+"$verb"} --help 2>/dev/null) || return
    COMPREPLY=()
    values=$(sed -nE "s/^ +(-[a-zA-Z],)?$previous [^{]*\{([^}]*)\}.*/\2/p" <<<"$help" | tr , ' ')
    if [[ $previous == -* && -n $values ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$values" -- "$word")
    elif [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$(grep -oE '^ +(-[a-zA-Z],)?--[a-z-]+' <<<"$help" | tr , ' ')" -- "$word")
    elif [ -z "$verb" ]; then
        mapfile -t COMPREPLY < <(compgen -W "$(sed -n '/^Verbs:/,/^$/s/^  \([a-z]\+\) .*/\1/p' <<<"$help")" -- "$word")
    fi
}
complete -o default -F _sectrix sectrix
