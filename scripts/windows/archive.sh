# A toolchain's archive is <name of its folder>.tar.xz. The folder's path occurs in text files (CMake packages, .pc, .prl,
# .pri, .la), where it must be correct, and in a few binaries, which do not need it.

toolchain_archive() { printf '%s/%s.tar.xz' "${AIBRIDGE_WINDOWS_ARCHIVES:-}" "$(basename "$(toolchain_dir)")"; }

# Last step of building and of unpacking: verifies that a folder contains a toolchain that works at its final path.
check_toolchain() {
    local folder=$1 file
    for file in qt/bin/Qt5Core.dll qt/bin/Qt5Quick.dll qt/bin/Qt5QuickControls2.dll qt/plugins/platforms/qwindows.dll \
        qt/qml/QtQuick/Layouts/qquicklayoutsplugin.dll qt/bin/moc thrift/lib/libthrift.a googletest/lib/libgmock.a \
        boost/boost/version.hpp bin/$triple-g++; do
        [ -s "$folder/$file" ] || { echo "$file is missing"; return 1; }
    done
    grep -qx "prefix=$(toolchain_dir)/thrift" "$folder/thrift/lib/pkgconfig/thrift.pc" ||
        { echo "thrift.pc names another folder"; return 1; }
    "$folder/qt/bin/moc" -v || { echo "moc does not run here"; return 1; }
}

# Replaces the path at which a toolchain was packed with this machine's folder. thrift.pc contains the packed path.
replace_packed_path() {
    local folder=$1 packed
    packed=$(sed -n 's,^prefix=\(/.*\)/thrift$,\1,p' "$folder/thrift/lib/pkgconfig/thrift.pc")
    [ -n "$packed" ] || { echo "thrift.pc does not contain an absolute prefix"; return 1; }
    grep -rlIZF -e "$packed" "$folder" | PACKED=$packed PLACE=$(toolchain_dir) \
        xargs -0 -r perl -pi -e 's/\Q$ENV{PACKED}\E/$ENV{PLACE}/g'
}

# The functions up to unpack_toolchain handle each failure explicitly: their callers test the result, which disables "set -e".
unpack_and_check() {
    local archive=$1 scratch=$2
    tar -xf "$archive" -C "$scratch" --no-same-owner --strip-components=1 &&
        replace_packed_path "$scratch" && check_toolchain "$scratch"
}

# Moves an unpacked toolchain to its final path. "complete" is created last, so an interrupted move is detected.
install_unpacked() {
    local scratch=$1 dir=$2 entry
    rm -f "$scratch/complete"
    for entry in "$scratch"/*; do
        rm -rf "${dir:?}/${entry##*/}" && mv "$entry" "$dir/" || return 1
    done
    rm -rf "$dir/work"
    touch "$dir/complete"
}

# Unpacks the toolchain from its archive. Fails if the archive is missing or its check fails. The caller holds the lock.
unpack_toolchain() {
    local archive dir scratch code=0
    archive=$(toolchain_archive)
    dir=$(toolchain_dir)
    [ -n "${AIBRIDGE_WINDOWS_ARCHIVES:-}" ] && [ -e "$archive" ] || return 1
    say "unpacking $archive"
    scratch=$(mktemp -d "$cache_root/unpack.XXXXXX")
    if ! { unpack_and_check "$archive" "$scratch" && install_unpacked "$scratch" "$dir"; } \
        >"$dir/logs/unpack.log" 2>&1; then
        code=1
        tail -n 5 "$dir/logs/unpack.log"
        say "The archive is unusable."
    fi
    rm -rf "$scratch"
    return $code
}

# Replaces every absolute path that ends in the toolchain's name with one of the same length, so that binaries keep their
# layout. The folder's bare name stays, because it depends only on the recipe.
hide_paths() {
    local folder=$1 name=$2
    grep -rlZF -e "/$name" "$folder" | NAME=$name xargs -0 -r perl -0777 -pi -e '
        s{/[\w.+~\@%/-]*?\Q$ENV{NAME}\E}{"/packed-toolchain" . "_" x (length($&) - 17)}ge'
}

# Writes the archive of the complete toolchain into a folder. The archive is reproducible and contains no path or user
# of this machine.
pack_toolchain() {
    local target=$1 dir name scratch code=0
    dir=$(toolchain_dir)
    name=$(basename "$dir")
    mkdir -p "$target"
    scratch=$(mktemp -d "$cache_root/pack.XXXXXX")
    mkdir "$scratch/$name"
    tar -cf - -C "$dir" --exclude=./work --exclude=./logs --exclude=./lock . | tar -xf - -C "$scratch/$name"
    hide_paths "$scratch/$name" "$name"
    if grep -rqF -e "$dir" -e "$cache_root" "$scratch/$name"; then
        rm -rf "$scratch"
        die "The archive still contains a path of this machine: $cache_root"
    fi
    tar -cf - -C "$scratch" --sort=name --mtime=@0 --owner=0 --group=0 --numeric-owner "$name" | xz >"$scratch/archive"
    mv "$scratch/archive" "$target/$name.tar.xz"
    rm -rf "$scratch"
    say "packed: $target/$name.tar.xz, $(du -h "$target/$name.tar.xz" | cut -f1)"
}
