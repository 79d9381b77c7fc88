# bash completion of zorcall. The program lists the candidates: options, tools, arguments, and the drives and disks of the
# running host.
_zorcall() {
    local line=${COMP_LINE:0:COMP_POINT} candidate
    local current=${line##*[[:space:]]}
    COMPREPLY=()
    if [[ $line == *[[:space:]]--script[[:space:]]"$current" ]]; then
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
        return
    fi
    while IFS=$'\t' read -r candidate _; do
        COMPREPLY+=("$candidate")
    done < <("$1" __complete "$line" 2>/dev/null)
    # bash replaces only the part after the last word break.
    if [[ $current == *=* && $COMP_WORDBREAKS == *=* ]]; then
        COMPREPLY=("${COMPREPLY[@]#"${current%%=*}="}")
    fi
    # A value follows.
    if [[ ${#COMPREPLY[@]} -eq 1 && ${COMPREPLY[0]} == *= ]]; then
        compopt -o nospace
    fi
}
complete -F _zorcall zorcall
