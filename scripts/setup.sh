# Sourced by ./cinder and ./check. Needs $root, the top of the checkout.

die() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# install_packages KIND...: installs what scripts/packages lists for these kinds and the machine
# lacks. Nothing is asked of the network where nothing is missing.
install_packages() {
    local kinds=" $* " missing=() kind name
    if ! command -v dpkg-query >/dev/null; then
        # Not Debian: whoever is here brings the tools; CMake names what it does not find.
        return 0
    fi
    while read -r kind name; do
        case $kind in '' | '#'*) continue ;; esac
        [[ $kinds == *" $kind "* ]] || continue
        [[ $(dpkg-query -W -f '${db:Status-Status}' "$name" 2>/dev/null) == installed ]] ||
            missing+=("$name")
    done <"$root/scripts/packages"
    [[ ${#missing[@]} -eq 0 ]] && return 0

    local as_root=()
    if [[ $(id -u) -ne 0 ]]; then
        command -v sudo >/dev/null || die "these Debian packages are missing and sudo is, too: ${missing[*]}"
        as_root=(sudo)
    fi
    printf 'Installing %s\n' "${missing[*]}" >&2
    local log
    log=$(mktemp)
    if ! { "${as_root[@]}" apt-get update &&
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get install -y --no-install-recommends "${missing[@]}"; } >"$log" 2>&1; then
        tail -n 20 "$log" >&2
        rm -f "$log"
        die "could not install: ${missing[*]}"
    fi
    rm -f "$log"
}

# quietly LOG COMMAND...: runs it with its output in LOG, which is shown where it fails.
quietly() {
    local log=$1
    shift
    mkdir -p "${log%/*}"
    "$@" >"$log" 2>&1 && return 0
    grep -E 'error|FAILED|Error' -A 6 "$log" | head -n 60 >&2 || true
    printf '%s failed; all of its output is in %s\n' "$1" "$log" >&2
    return 1
}
