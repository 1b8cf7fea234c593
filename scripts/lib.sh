# Shared by the scripts of this folder: where the project is, and how its packages come onto a Debian or Ubuntu machine.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

build_packages=(g++ cmake ninja-build ccache qt6-base-dev libpugixml-dev libxxhash-dev libchm-dev fp-utils python3)
run_packages=(fonts-dejavu-core)
accessibility_packages=(at-spi2-core dbus-daemon openbox python3-pyatspi xauth xdotool xvfb)
headless_packages=(xvfb xdotool imagemagick)

say() { printf '%s\n' "$*" >&2; }

# Installs those of the named packages that are missing; says which. Elsewhere than on Debian and Ubuntu it only goes on.
install_missing() {
    command -v dpkg-query >/dev/null && command -v apt-get >/dev/null || return 0
    local package status missing=()
    for package in "$@"; do
        status=$(dpkg-query -W -f='${db:Status-Abbrev}' "$package" 2>/dev/null) || status=
        [[ $status == ii* ]] || missing+=("$package")
    done
    ((${#missing[@]})) || return 0
    local as_root=()
    if ((EUID != 0)); then
        command -v sudo >/dev/null || { say "Please install as root: ${missing[*]}"; return 1; }
        as_root=(sudo)
    fi
    say "Installing ${missing[*]}"
    "${as_root[@]}" apt-get update -qq >&2
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >&2
}

# Configures a preset when it has not been, and builds it.
build_preset() {
    local preset=$1 log
    shift
    cd "$root"
    if [[ ! -f build/$preset/build.ninja ]]; then
        log=$(mktemp)
        if ! cmake --preset "$preset" >"$log" 2>&1; then
            cat "$log" >&2
            rm -f "$log"
            return 1
        fi
        rm -f "$log"
    fi
    cmake --build --preset "$preset" "$@" >&2
}

# Starts a virtual display and sets DISPLAY to it. The caller ends it: its process is $display_server.
# It does not start anew when its last client has gone: one that comes at that moment would be turned away.
start_display() {
    local number
    exec 3<> <(:)
    Xvfb -displayfd 3 -screen 0 1366x768x24 -nolisten tcp -noreset >/dev/null 2>&1 &
    display_server=$!
    read -r -t 20 number <&3 || { say "The virtual display did not start."; return 1; }
    export DISPLAY=:$number
}
