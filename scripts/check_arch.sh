#!/usr/bin/env bash
# Builds the package for Arch from the sources as they are, with Arch's own tool, and tries the program in it. Of what Arch
# would install for it nothing is here, so that the names of its packages are only compared (tests/package).
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

fail() {
    echo "check_arch: $*" >&2
    exit 1
}

# The archive that a release would have at the recipe's address; the tool takes one that lies beside the recipe.
version=$(sed -n 's/^pkgver=//p' packaging/arch/PKGBUILD)
git ls-files --cached --others --exclude-standard -z |
    tar --create --gzip --null --files-from=- --transform="s,^,kelpa-$version/," --file="$folder/kelpa-$version.tar.gz"
cp packaging/arch/PKGBUILD "$folder"

# It will not run as root, and wants the system's package manager to exist.
as_nobody=()
if ((EUID == 0)); then
    as_nobody=(runuser -u nobody --)
    chown -R nobody: "$folder"
fi
chmod 755 "$folder"
(cd "$folder" && HOME=$folder PACMAN=true "${as_nobody[@]}" nice makepkg --nodeps --nocolor >makepkg.log 2>&1) ||
    fail "makepkg failed:"$'\n'"$(tail -n 30 "$folder/makepkg.log")"

packages=("$folder"/kelpa-"$version"-*.pkg.tar*)
[[ ${#packages[@]} = 1 && -f ${packages[0]} ]] || fail 'makepkg made no package, or more than one'
root=$folder/root
mkdir "$root"
tar --extract --file="${packages[0]}" --directory="$root"
for file in usr/bin/kelpa usr/lib/kelpa/kelpa-{view,tray,update} usr/share/licenses/kelpa/LICENSE; do
    [[ -s $root/$file ]] || fail "the package has no $file"
done
[[ ! -e $root/usr/libexec ]] || fail 'Arch has no libexec folder, and the package has one'
grep -qxF 'depend = hicolor-icon-theme' "$root/.PKGINFO" || fail 'the icons need the theme that they are part of'
echo "$(basename "${packages[0]}"): $(stat --format=%s "${packages[0]}") bytes"
KELPA_PROGRAM=$root/usr/bin/kelpa /usr/bin/python3 tests/package/installed_test.py || fail 'the unpacked program does not work'
