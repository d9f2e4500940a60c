#!/usr/bin/env bash
# Makes the Debian package of build/release and puts it to the test; see the help below.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."
name=kelpa
tree=build/release
# Where the package has to lie to be found; the tree itself is full of other things.
folder=$tree/package

usage() {
    cat <<'HELP'
usage: scripts/check_package.sh [--install]

Builds build/release, makes the Debian package of it in build/release/package, and checks it: the desktop's validators,
lintian, what is in it, whether a bare Debian has all it depends on, and the unpacked program on a virtual desktop.

  --install   instead of the unpacked program, installs the package on this machine (as root, or with sudo), tries the
              installed program, and removes it again, which must leave nothing behind. Not done where a Kelpa is
              installed already.
  --help      this text
HELP
}

install=no
for argument in "$@"; do
    case $argument in
        --install) install=yes ;;
        --help | -h)
            usage
            exit 0
            ;;
        *)
            echo "check_package: unknown option '$argument'; --help tells what there is" >&2
            exit 2
            ;;
    esac
done

fail() {
    echo "check_package: $*" >&2
    exit 1
}

build_package() {
    scripts/build.sh release kelpa kelpa_packaging
    mkdir -p $folder
    rm -f $folder/"$name"_*.deb
    (cd $folder && cpack --config ../CPackConfig.cmake >cpack.log) || fail "cpack failed: $(cat $folder/cpack.log)"
    rm -rf $folder/_CPack_Packages
    packages=("$folder/$name"_*.deb)
    package=$PWD/${packages[0]}
    [[ ${#packages[@]} = 1 && -f $package ]] || fail 'cpack made no package, or more than one'
    echo "$package: $(stat --format=%s "$package") bytes"
}

check_contents() {
    unpacked=$(mktemp -d)
    dpkg-deb --extract "$package" "$unpacked"
    desktop-file-validate "$unpacked"/usr/share/applications/*.desktop
    appstreamcli validate --no-net "$unpacked"/usr/share/metainfo/*.xml
    lintian --allow-root --fail-on error,warning "$package"
    /usr/bin/python3 tests/package/package_test.py "$package" "$unpacked"
}

# What apt would do on a system of which nothing is installed yet; no root needed, and nothing is done.
check_dependencies() {
    local plan
    plan=$(apt-get -o Dir::State::status=/dev/null -o Debug::NoLocking=yes --simulate --no-install-recommends \
        install "$package" 2>&1) || fail "a bare system cannot have the package: $plan"
    echo "a bare system takes $(grep -c '^Inst ' <<<"$plan") packages for it"
}

# What of the package is on this machine; nothing of a package that is not there.
leftovers() {
    local file
    while read -r file; do
        [[ $file = ./usr/*[!/] && -e /${file#./} ]] && echo "/${file#./}"
    done < <(dpkg-deb --fsys-tarfile "$package" | tar --list)
    find /usr/share /usr/libexec /usr/bin /etc /var/lib -xdev -iname "*$name*" ! -path '/var/lib/dpkg/*' ! -path '/var/lib/apt/*'
    dpkg-query --show "$name" 2>/dev/null || true
}

# As it is typed by hand, but silent when all goes well, and without what is only recommended.
apt() {
    local log=$folder/apt.log
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=300 \
        --yes --no-install-recommends "$@" </dev/null >"$log" 2>&1 || { cat "$log" >&2; return 1; }
}

installed_packages() {
    dpkg-query --show --showformat='${db:Status-Status} ${Package}:${Architecture}\n' | sed -n 's/^installed //p' | LC_ALL=C sort
}

# Removes the package with what came along with it, and nothing that was there before.
remove_again() {
    local new
    mapfile -t new < <(LC_ALL=C comm -13 <(echo "$before") <(installed_packages))
    before=
    ((${#new[@]} == 0)) || apt purge "${new[@]}"
}

install_and_remove() {
    local left
    if ((EUID != 0)); then
        command -v sudo >/dev/null || fail 'neither root nor sudo here: the package cannot be installed'
        as_root=(sudo)
    fi
    left=$(leftovers)
    [[ -z $left ]] || fail "a $name is installed here already, and stays:"$'\n'"$left"
    before=$(installed_packages)
    apt install "$package" || fail 'the package cannot be installed'
    KELPA_PROGRAM=/usr/bin/$name /usr/bin/python3 tests/package/installed_test.py || fail 'the installed program does not work'
    remove_again || fail 'the package cannot be removed'
    left=$(leftovers)
    [[ -z $left ]] || fail "the removed package leaves behind:"$'\n'"$left"
    echo 'installed, seen at work, and removed without a trace'
}

# Whatever goes wrong, the machine stays as it was.
clean_up() {
    [[ -z $unpacked ]] || rm -rf "$unpacked"
    [[ -z $before ]] || remove_again
}

as_root=()
unpacked=
before=
trap clean_up EXIT
build_package
check_contents
check_dependencies
if [[ $install = yes ]]; then
    install_and_remove
else
    KELPA_PROGRAM=$unpacked/usr/bin/$name /usr/bin/python3 tests/package/installed_test.py || fail 'the unpacked program does not work'
fi
