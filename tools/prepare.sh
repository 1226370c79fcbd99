# shellcheck shell=bash
# What ./run and ./test share; sourced by them. Sets `root`, `build` and `state`, and gives the steps.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=$root/build/release
state=$root/.local
mkdir -p "$state/log" || exit 1

# The precompiled headers can only be cached when ccache does not look too closely.
export CCACHE_SLOPPINESS=pch_defines,time_macros CCACHE_BASEDIR=$root CCACHE_NOHASHDIR=1

# step NAME LOG COMMAND...: runs a command quietly; on failure says which step failed, shows the end of its
# log, and ends the script.
step() {
    local name=$1 log=$state/log/$2.log start=$SECONDS
    shift 2
    printf '%s ... ' "$name" >&2
    if "$@" >"$log" 2>&1 </dev/null; then
        echo "done ($((SECONDS - start)) s)" >&2
        return
    fi
    echo "failed" >&2
    { grep -E 'error|FAILED|E:' "$log" || cat "$log"; } | tail -n 15 >&2
    echo "The step \"$name\" failed; the whole log is ${log#"$root"/}" >&2
    exit 1
}

missing_packages() {
    local package
    while read -r package; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || echo "$package"
    done <"$root/tools/packages.txt"
}

install_packages() {
    local as_root=()
    [ "$(id -u)" = 0 ] || as_root=(sudo -n)
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq update &&
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get -qq install -y --no-install-recommends "$@"
}

# Installs what tools/packages.txt lists, where the system has Debian's package tools.
prepare_packages() {
    local stamp=$state/packages.stamp missing
    cmp -s "$root/tools/packages.txt" "$stamp" && return
    if command -v dpkg-query >/dev/null && command -v apt-get >/dev/null; then
        missing=$(missing_packages)
        if [ -n "$missing" ] && [ "$(id -u)" != 0 ] && ! sudo -n true 2>/dev/null; then
            echo "Packages are missing. Install them, then try again:" >&2
            echo "  sudo apt-get install --no-install-recommends" "${missing//$'\n'/ }" >&2
            exit 1
        fi
        # shellcheck disable=SC2086
        [ -z "$missing" ] || step "Installing packages" packages install_packages $missing
    else
        echo "This is no Debian system; tools/packages.txt names what is needed." >&2
    fi
    cp "$root/tools/packages.txt" "$stamp"
}

# build_targets [TARGET...]: configures where it was never done, and builds the targets, or everything. With
# DETAILSTYLES_STRICT a warning is an error.
build_targets() {
    local strict=()
    [ -z "${DETAILSTYLES_STRICT:-}" ] || strict=(-DCMAKE_COMPILE_WARNING_AS_ERROR=ON)
    { [ -f "$build/build.ninja" ] && [ ${#strict[@]} = 0 ]; } ||
        step "Configuring" configure cmake -S "$root" --preset release "${strict[@]}"
    step "Building" build cmake --build "$build" ${1:+--target "$@"}
}
