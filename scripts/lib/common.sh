# Shared by the scripts: folders, help, package installation and the build.
# A script that sets own_help=1 before it sources this file answers -h and --help itself.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
build_dir=$root/build
source "$root/scripts/lib/progress.sh"

say() { printf '== %s\n' "$*"; }
die() { printf '%s: %s\n' "$(basename "$0")" "$*" >&2; exit 2; }

# The comment at the top of the script.
print_help() { sed -n '2,$ { /^#/!q; s/^# \{0,1\}//p }' "$0"; }
print_version() {
    printf '%s %s\n' "$(basename "$0")" "$(sed -n 's/^project(AIBridge VERSION \([^ ]*\).*/\1/p' "$root/CMakeLists.txt")"
}
case ${1:-} in
    -h | --help) [ -n "${own_help:-}" ] || { print_help; exit 0; } ;;
    --version) print_version; exit 0 ;;
esac

# A path as one word of a shell command, for zorhost --agent.
quoted() { printf "'%s'" "${1//\'/\'\\\'\'}"; }

# Installs the missing packages of a list (default: scripts/lib/packages) and prints their names.
install_packages() {
    local list=${1:-$root/scripts/lib/packages} missing=() name
    while read -r name; do
        case $name in '' | \#*) continue ;; esac
        dpkg-query -W -f='${Status}' "$name" 2>/dev/null | grep -q 'ok installed' || missing+=("$name")
    done <"$list"
    [ ${#missing[@]} -eq 0 ] && return
    say "installing: ${missing[*]}"
    local sudo=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || die "Installing packages requires root or sudo. Missing: ${missing[*]}"
        sudo=(sudo)
    fi
    "${sudo[@]}" apt-get update -qq
    "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" \
        >"${TMPDIR:-/tmp}/aibridge-install.log" 2>&1 ||
        { tail -n 20 "${TMPDIR:-/tmp}/aibridge-install.log" >&2; die "apt-get could not install the packages."; }
}

# Configures a CMake preset.
configure() {
    local preset=$1
    shift
    # Otherwise CMake prints several errors that do not name the cause.
    mkdir -p "$build_dir" 2>/dev/null && [ -w "$build_dir" ] ||
        die "The build needs the folder $build_dir, which cannot be written. Use a writable copy of the source."
    (cd "$root" && cmake --preset "$preset" "$@" >/dev/null)
}

# Builds the named targets of a preset; without names, all targets.
build() {
    local preset=$1
    shift
    local targets=()
    [ $# -gt 0 ] && targets=(--target "$@")
    (cd "$root" && with_progress cmake --build --preset "$preset" "${targets[@]}")
}
