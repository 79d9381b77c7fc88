# Copies the output of a host that keeps running, and prints its port in a line to copy when its agent has ended. Sourced
# by the scripts that start a host: zorhost ... > >(show_port COMMAND); COMMAND is an example of a call.
show_port() {
    local line port=
    # The host ends on Ctrl-C and closes its output.
    trap '' INT TERM
    while IFS= read -r line; do
        printf '%s\n' "$line"
        case $line in
            "agent service on "*) port=${line##*:} ;;
            ??:??:??.???" agent ended with exit code "*)
                say "The host keeps running until Ctrl-C. To call it from another terminal, copy the last line, then for example:"
                say "    $1"
                printf 'export AGENT_NATIVE_PORT=%s\n' "$port"
                ;;
        esac
    done
}
