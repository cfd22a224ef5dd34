# shellcheck shell=bash
# How the scripts in this folder tell what they do. To be sourced.

# step TEXT says what is tried next.
step() {
    printf '== %s\n' "$*"
}

# fail TEXT MORE... says what is wrong, and more of it in lines of their own, and ends the script.
fail() {
    printf 'FAILED: %s\n' "$1" >&2
    shift
    (($# == 0)) || printf '%s\n' "$@" >&2
    exit 1
}

# wait_for SECONDS COMMAND... runs the command until it succeeds; fails when it does not in that time.
wait_for() {
    local deadline=$((SECONDS + $1))
    shift
    until "$@"; do
        ((SECONDS < deadline)) || return 1
        sleep 0.1
    done
}
