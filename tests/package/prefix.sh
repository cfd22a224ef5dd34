# shellcheck shell=bash
# Installs a build into a prefix. To be sourced after report.sh. Not for two at a time from the same build.

# install_build BUILD_FOLDER PREFIX MANIFEST leaves the list of what was installed in the file MANIFEST. The one of what
# a user has installed from that build stays as it was.
install_build() {
    local list=$1/install_manifest.txt kept=$3.kept
    [[ ! -e $list ]] || mv "$list" "$kept"
    cmake --install "$1" --prefix "$2" >"$3.log" || fail "$(<"$3.log")"
    mv "$list" "$3"
    [[ ! -e $kept ]] || mv "$kept" "$list"
}
