# Sourced by ./run, ./test and the scripts beside it: where things lie, and the two steps that all of them share.
project=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$project"
preset=${KV_PRESET:-release}
build=$project/build/$preset

say() { printf '%s\n' "$*" >&2; }

# Installs the packages of packages.txt that are missing; nothing is asked of the network when none is.
install_packages() {
    local missing=() package
    while read -r package; do
        case $package in ''|'#'*) continue ;; esac
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
    done < "$project/scripts/packages.txt"
    [ ${#missing[@]} -eq 0 ] && return
    local root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || { say "These packages are missing and only root can install them: ${missing[*]}"; exit 1; }
        root=(sudo)
    fi
    say "Installing ${#missing[@]} packages: ${missing[*]}"
    "${root[@]}" apt-get update -qq
    "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# Configures once and builds the targets named (all of them without a name).
build_targets() {
    [ -f "$build/build.ninja" ] || cmake --preset "$preset" >/dev/null
    local targets=()
    [ $# -gt 0 ] && targets=(--target "$@")
    cmake --build "$build" "${targets[@]}" >&2
}

# Qt wants a private folder for its run-time files.
if [ -z "${XDG_RUNTIME_DIR:-}" ]; then
    XDG_RUNTIME_DIR=$(mktemp -d)
    export XDG_RUNTIME_DIR
    trap 'rm -rf "$XDG_RUNTIME_DIR"' EXIT
fi
