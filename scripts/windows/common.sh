# Shared by the scripts for Windows: where the toolchain lies, how the packages come, how Wine is started.
source "$(dirname "${BASH_SOURCE[0]}")/../lib/common.sh"
source "$root/scripts/windows/recipe.sh"

triple=x86_64-w64-mingw32
windows_build=$root/build-windows
windows_packages=$root/scripts/windows/packages
cache_root=${AIBRIDGE_WINDOWS_CACHE:-$HOME/.cache/aibridge-windows}

# The folder of the toolchain that this recipe and this compiler make. Needs the compiler.
toolchain_dir() {
    local compiler recipe
    compiler=$($triple-g++-posix -dumpfullversion) || die "$triple-g++-posix is missing: run scripts/windows/toolchain"
    recipe=$(sha256sum <"$root/scripts/windows/recipe.sh" | cut -c1-10)
    printf '%s/qt%s-thrift%s-gcc%s-%s' "$cache_root" "$qt_version" "$thrift_version" "$compiler" "$recipe"
}

toolchain_complete() { [ -e "$(toolchain_dir)/complete" ]; }
