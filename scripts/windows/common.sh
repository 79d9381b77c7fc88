# Shared by the scripts for Windows: where the toolchain lies, how the packages come, how Wine is started.
source "$(dirname "${BASH_SOURCE[0]}")/../lib/common.sh"
source "$root/scripts/windows/recipe.sh"

triple=x86_64-w64-mingw32
windows_build=$root/build-windows
windows_packages=$root/scripts/windows/packages
cache_root=${AIBRIDGE_WINDOWS_CACHE:-$HOME/.cache/aibridge-windows}
cache_root=${cache_root%/}

# The folder of the toolchain that this recipe and this compiler make. Needs the compiler.
toolchain_dir() {
    local compiler recipe
    compiler=$($triple-g++-posix -dumpfullversion) || die "$triple-g++-posix is missing: run scripts/windows/toolchain"
    recipe=$(sha256sum <"$root/scripts/windows/recipe.sh" | cut -c1-10)
    printf '%s/qt%s-thrift%s-gcc%s-%s' "$cache_root" "$qt_version" "$thrift_version" "$compiler" "$recipe"
}

toolchain_complete() { [ -e "$(toolchain_dir)/complete" ]; }

# Sets the environment for Wine: a prefix of ours, no display, no sound of its own, the libraries of the toolchain.
set_up_wine() {
    [ -z "${AIBRIDGE_WINE_READY:-}" ] || return 0
    local dir gcc
    dir=$(toolchain_dir)
    gcc=$(dirname "$($triple-g++-posix -print-file-name=libstdc++-6.dll)")
    export WINEPREFIX=${WINEPREFIX:-$windows_build/wine}
    export WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES="mscoree,mshtml="
    export WINEPATH="$(windows_path "$dir/qt/bin");$(windows_path "$gcc");$(windows_path "/usr/$triple/lib");$(windows_path "$windows_build/bin")"
    unset DISPLAY WAYLAND_DISPLAY
    [ -e "$WINEPREFIX/made" ] || make_prefix
    # The first program starts Wine's services, which would hold its output open beyond its end.
    wine cmd /c ver </dev/null >/dev/null 2>&1 || true
    export AIBRIDGE_WINE_READY=1
}

# A path of this system as Wine names it.
windows_path() { printf 'Z:%s' "${1//\//\\}"; }

# Makes the prefix; programs find no display, on purpose, and ask for none.
make_prefix() {
    mkdir -p "$WINEPREFIX"
    (
        flock 9
        [ ! -e "$WINEPREFIX/made" ] || exit 0
        timeout 300 wine wineboot -i >"$WINEPREFIX/boot.log" 2>&1 || die "Wine's prefix could not be made: $WINEPREFIX/boot.log"
        wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f >/dev/null 2>&1
        wineserver -w
        touch "$WINEPREFIX/made"
    ) 9>"$WINEPREFIX.lock"
}
