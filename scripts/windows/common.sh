# Shared by the scripts for Windows: the toolchain's folder, package lists and starting Wine.
source "$(dirname "${BASH_SOURCE[0]}")/../lib/common.sh"
source "$root/scripts/windows/recipe.sh"

triple=x86_64-w64-mingw32
windows_build=$root/build-windows
windows_packages=$root/scripts/windows/packages
cache_root=${AIBRIDGE_WINDOWS_CACHE:-$HOME/.cache/aibridge-windows}
cache_root=${cache_root%/}

# The toolchain's folder for this recipe and this compiler. The compiler must be installed.
toolchain_dir() {
    local compiler recipe
    compiler=$($triple-g++-posix -dumpfullversion) || die "$triple-g++-posix is missing. Run scripts/windows/toolchain first."
    recipe=$(sha256sum <"$root/scripts/windows/recipe.sh" | cut -c1-10)
    printf '%s/qt%s-thrift%s-gcc%s-%s' "$cache_root" "$qt_version" "$thrift_version" "$compiler" "$recipe"
}

toolchain_complete() { [ -e "$(toolchain_dir)/complete" ]; }

# Sets the environment for Wine: its prefix, no display, no debug output, and the toolchain's libraries on its path.
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
    # The first program starts Wine's services, which keep its output open after it ends.
    wine cmd /c ver </dev/null >/dev/null 2>&1 || true
    export AIBRIDGE_WINE_READY=1
}

# Converts a path of this system to a Wine path.
windows_path() { printf 'Z:%s' "${1//\//\\}"; }

# Creates the prefix, with the null graphics driver.
make_prefix() {
    mkdir -p "$WINEPREFIX"
    (
        flock 9
        [ ! -e "$WINEPREFIX/made" ] || exit 0
        timeout 300 wine wineboot -i >"$WINEPREFIX/boot.log" 2>&1 || die "Wine could not create its prefix. See $WINEPREFIX/boot.log."
        wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f >/dev/null 2>&1
        wineserver -w
        touch "$WINEPREFIX/made"
    ) 9>"$WINEPREFIX.lock"
}
