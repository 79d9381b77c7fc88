# shellcheck shell=bash
# A udevd that several private disk services share: udevd exists once per computer. Sourced by with-disk-service.
# The first service starts it unless one is running, and the last one ends it and removes the folders that it made.
#
# Every service holds a shared lock on udevd.users. udevd.lock guards the start and the end. The kernel releases the
# locks of a killed service.

udevd_program=${UDEVD:-/lib/systemd/systemd-udevd}
udevd_state=${UDEVD_STATE:-/run/lock/disk-service}
# Folders that udevd makes.
udevd_folders=${UDEVD_FOLDERS:-/run/udev /dev/disk /dev/block /dev/char}

udevd_answers() { udevadm control --ping --timeout=1 >/dev/null 2>&1; }

run_udevd() {
    local folder i
    # A second attempt finds the folders of the first one.
    [ -e "$udevd_state/udevd.made" ] ||
        for folder in $udevd_folders; do [ -e "$folder" ] || printf '%s\n' "$folder"; done >"$udevd_state/udevd.made"
    # A killed udevd leaves its control socket. Watches of an earlier one make this one miss changes of devices: their
    # numbers are used again for others.
    rm -rf "${udevd_folders%% *}"/{control,watch,watch.old}
    PARTITION_SCAN_BUSY=1 LD_PRELOAD=$2 setsid "$udevd_program" >"$1" 2>&1 8>&- 9>&- &
    printf '%s\n' $! >"$udevd_state/udevd.pid"
    for ((i = 0; i < 400; i++)); do
        udevd_answers && break
        sleep 0.05
    done
}

# Usage: start_udevd LOG PRELOAD. Returns 1 if udevd does not answer.
start_udevd() {
    local attempt
    mkdir -p "$udevd_state"
    exec 8>>"$udevd_state/udevd.lock" 9>>"$udevd_state/udevd.users"
    flock 8
    # A udevd that is just ending can still answer, or can remove the socket of the new one.
    for attempt in 1 2 3; do
        udevd_answers && udevd_answers && break
        run_udevd "$1" "$2"
    done
    flock --shared 9
    flock --unlock 8
    udevd_answers
}

# The start may have failed at any point.
stop_udevd() {
    local pid folder i
    { flock 8 && flock --nonblock 9; } 2>/dev/null || return 0
    if pid=$(cat "$udevd_state/udevd.pid" 2>/dev/null); then
        kill "$pid" 2>/dev/null || true
        for ((i = 0; i < 400; i++)); do
            kill -0 "$pid" 2>/dev/null || break
            sleep 0.05
        done
        while read -r folder; do rm -rf "$folder"; done <"$udevd_state/udevd.made"
    fi
    rm -f "$udevd_state/udevd.pid" "$udevd_state/udevd.made"
}
