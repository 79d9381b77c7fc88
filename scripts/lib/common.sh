# Shared by the scripts: folders, package installation and the build.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
build_dir=$root/build

say() { printf '== %s\n' "$*"; }
die() { printf '%s: %s\n' "$(basename "$0")" "$*" >&2; exit 2; }

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
    (cd "$root" && cmake --build --preset "$preset" "${targets[@]}" -- --quiet)
}
