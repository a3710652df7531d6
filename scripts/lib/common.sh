# SPDX-License-Identifier: GPL-3.0-only
# shellcheck shell=bash
# What all scripts share. Sourced, never run: defines $root, the folder of the sources, and works from there.

script=$(realpath "$0")
root=$(realpath "$(dirname "${BASH_SOURCE[0]}")/../..")
cd "$root" || exit 1
logs=$root/build/logs

say() { printf '%s\n' "$*"; }

fail() {
    printf '%s\n' "$*" >&2
    exit 1
}

# logged TITLE LOG COMMAND...: runs a long command with its output in build/logs/LOG.log and one line on the screen; when it
# fails, the end of the log follows.
logged() {
    local title=$1 log=$logs/$2.log start=$SECONDS
    shift 2
    mkdir -p "$logs"
    printf '%s ... ' "$title"
    if "$@" >"$log" 2>&1 </dev/null; then
        printf 'done in %d s\n' $((SECONDS - start))
        return 0
    fi
    printf 'FAILED after %d s. The end of %s:\n\n' $((SECONDS - start)) "$log"
    tail -n 60 "$log"
    return 1
}

# configure PRESET [CMAKE_OPTION...]
configure() {
    local preset=$1
    shift
    logged "Configuring ($preset)" "configure-$preset" cmake --preset "$preset" "$@"
}

# build PRESET [TARGET...]: everything, or the named targets.
build() {
    local preset=$1
    shift
    logged "Building ($preset${*:+: $*})" "build-$preset" ninja -C "build/$preset" "$@"
}

# The comment at the head of a script is its help.
print_help() { sed -n '3,/^[^#]/{s/^# \{0,1\}//p}' "$script"; }
