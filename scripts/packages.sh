# shellcheck shell=bash disable=SC2034
# The Debian packages that this project uses, in one place, and what brings them onto a machine. Meant to be sourced.

# Building the programs and their tests, and running them.
KELPA_BUILD_PACKAGES=(
    g++ cmake ninja-build pkg-config python3
    libsystemd-dev libplist-dev libsodium-dev nlohmann-json3-dev libxcb1-dev libxcb-randr0-dev libxcb-xinput-dev libxcb-xkb-dev
    libwayland-dev libwayland-bin wayland-protocols plasma-wayland-protocols qt6-wayland
    qt6-base-dev qt6-base-private-dev qt6-declarative-dev qt6-declarative-dev-tools qt6-svg-dev
    qml6-module-qtqml qml6-module-qtqml-workerscript qml6-module-qtquick qml6-module-qtquick-templates
    qml6-module-qtquick-window
    gettext librsvg2-bin
    libgtest-dev libbenchmark-dev
    fonts-dejavu-core fonts-wqy-microhei
)

# A virtual desktop: the demonstration, the desktop tests and the desktop benchmark.
KELPA_DESKTOP_PACKAGES=(
    xvfb openbox picom dbus python3-gi python3-xlib x11-xserver-utils
    xfce4-panel xfce4-indicator-plugin ayatana-indicator-application
)

# What the tests use beyond that.
KELPA_TEST_PACKAGES=(
    python3-fonttools python3-yaml xterm trayer locales xdg-utils python3-dbusmock at-spi2-core python3-pyatspi openssl
    mate-screensaver libglib2.0-bin pulseaudio pulseaudio-utils pipewire-pulse wireplumber dunst xfce4-notifyd
)

# The macOS face, built over GNUstep and run.
KELPA_MACOS_PACKAGES=(
    clang-19 lld-19 libclang-rt-19-dev g++ cmake ninja-build python3 librsvg2-bin
    libgnustep-gui-dev gnustep-back0.29-cairo libblocksruntime-dev libobjc-12-dev
    xvfb fonts-dejavu-core
)

# What `./test --all` adds.
KELPA_CHECK_PACKAGES=(
    "${KELPA_MACOS_PACKAGES[@]}"
    git clang libclang-rt-14-dev clang-format clang-tidy shellcheck libc++-16-dev
    sway grim foot mutter waybar awesome
    appstream desktop-file-utils dpkg-dev fish flatpak-builder libarchive-tools lintian makepkg man-db zsh
)

# The other program of the desktop benchmark.
KELPA_BENCHMARK_PACKAGES=(workrave libglib2.0-bin)

# Prints those of the given packages that are not installed, one a line.
kelpa_missing_packages() {
    local installed package
    # dpkg-query fails when it does not know one of the packages, which is no failure here.
    installed=$({ dpkg-query --show --showformat='${Package} ${db:Status-Status}\n' "$@" 2>/dev/null || true; } |
        sed -n 's/ installed$//p')
    for package in "$@"; do
        grep -qxF -- "$package" <<<"$installed" || printf '%s\n' "$package"
    done
}

# Installs what is missing of the given packages. Fails with a message that names them where that is impossible.
# Does nothing, and says nothing, when all of them are there.
kelpa_need_packages() {
    local missing=() as_root=()
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        kelpa_check_tools "$@"
        return
    fi
    mapfile -t missing < <(kelpa_missing_packages "$@")
    ((${#missing[@]})) || return 0
    if ((EUID != 0)); then
        if ! command -v sudo >/dev/null; then
            printf 'These packages are missing; install them as root and try again:\n  %s\n' "${missing[*]}" >&2
            return 1
        fi
        as_root=(sudo)
    fi
    printf 'Installing the packages that are missing:\n  %s\n' "${missing[*]}"
    if ! kelpa_install "${missing[@]}"; then
        printf 'Could not install the packages that are missing:\n  %s\n' "${missing[*]}" >&2
        return 1
    fi
}

# The installation itself, through the caller's as_root prefix; apt's chatter goes to a log that is shown only
# when something goes wrong.
kelpa_install() {
    local log status=0
    log=$(mktemp) || return 1
    {
        "${as_root[@]}" apt-get -o Acquire::Retries=3 update &&
            "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -o Acquire::Retries=3 \
                -o DPkg::Lock::Timeout=300 install --yes --no-install-recommends "$@"
    } </dev/null >"$log" 2>&1 || status=1
    ((status == 0)) || tail -n 25 "$log" >&2
    rm -f "$log"
    return "$status"
}

# Where there is no apt nobody can say which packages are there, so the tools themselves are looked for.
kelpa_check_tools() {
    local tool absent=()
    for tool in c++ cmake ninja pkg-config python3 msgfmt rsvg-convert wayland-scanner; do
        command -v "$tool" >/dev/null || absent+=("$tool")
    done
    if ((${#absent[@]})); then
        printf 'This is no Debian system (no apt-get), and these tools are missing: %s\n' "${absent[*]}" >&2
        printf 'Debian has what is needed in these packages; install what matches them here:\n  %s\n' "$*" >&2
        return 1
    fi
    if [[ ! -d build ]]; then
        printf 'No apt-get here: going on with what is installed. Should the build miss something, these are the\n'
        printf 'Debian packages to look for:\n  %s\n' "$*"
    fi
}
