# Prints the progress of a long build. Sourced by common.sh.

# The status that ninja prints at the start of a line. The mark distinguishes it from the compiler's messages.
progress_mark='@steps '
# Seconds between two lines.
progress_interval=${AIBRIDGE_PROGRESS_SECONDS:-15}

# Runs a build and prints the elapsed time and the finished steps while it takes long. Other lines of its output are
# printed unchanged.
with_progress() {
    NINJA_STATUS="$progress_mark%f %t " "$@" | print_progress
}

print_progress() {
    local begun=$SECONDS next=$((SECONDS + progress_interval)) line= part steps= result finished total
    while :; do
        result=0
        IFS= read -r -t 1 part || result=$?
        line+=$part
        # After a timeout, the rest of the line follows later.
        if [ $result -le 128 ]; then
            case $line in
                "$progress_mark"*) read -r _ finished total _ <<<"$line"; steps="$finished of $total" ;;
                "" | "ninja: no work to do.") ;;
                *) printf '%s\n' "$line" ;;
            esac
            line=
        fi
        if [ -n "$steps" ] && [ $SECONDS -ge $next ]; then
            printf '   %4d s, %s steps\n' $((SECONDS - begun)) "$steps"
            next=$((SECONDS + progress_interval))
        fi
        [ $result -eq 0 ] || [ $result -gt 128 ] || return 0
    done
}
