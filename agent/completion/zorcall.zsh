#compdef zorcall
# zsh completion of zorcall. The program lists the candidates: options, tools, arguments, and the drives and disks of the
# running host.
_zorcall() {
    if [[ ${words[CURRENT-1]} == --script ]]; then
        _files
        return
    fi
    local -a complete unfinished
    local candidate text
    while IFS=$'\t' read -r candidate text; do
        # A value follows the equals sign.
        if [[ $candidate == *= ]]; then
            unfinished+=("$candidate:$text")
        else
            complete+=("$candidate:$text")
        fi
    done < <("${words[1]}" __complete "${(j: :)words[1,CURRENT-1]} $PREFIX" 2>/dev/null)
    _describe -t arguments argument unfinished -S ''
    _describe -t values value complete
}

# Called by the completion system, or read by a start-up file.
if [[ ${funcstack[1]} == _zorcall ]]; then
    _zorcall "$@"
else
    compdef _zorcall zorcall
fi
