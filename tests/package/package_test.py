#!/usr/bin/python3
"""What is in the package: the manual and the shells know what the program knows, and nothing is missing.

usage: package_test.py PACKAGE ROOT      (the package's file and the folder it was unpacked into)
"""
import gzip
import json
import os
import pty
import re
import select
import shutil
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
if len(sys.argv) < 3:
    sys.exit(__doc__.strip())
PACKAGE, ROOT = (Path(sys.argv.pop(1)).resolve() for _ in range(2))
SHARE = ROOT / "usr/share"
MANIFEST = PROJECT / "packaging/flatpak/app.orvane.Kelpa.json"


def output(*command, **options):
    return subprocess.run(command, capture_output=True, text=True, check=True, **options).stdout


class Words(unittest.TestCase):
    """What --help lists: the options, the commands, and what goes with the command `status`."""

    @classmethod
    def setUpClass(cls):
        help_text = output(ROOT / "usr/bin/kelpa", "--help")
        cls.options = set(re.findall(r"^  (--[-\w]+)", help_text, re.M))
        cls.commands = set(re.findall(r"^  (\w+)", help_text, re.M))
        history = re.search(r"^  history .*?(?=^  \w|^\w)", help_text, re.M | re.S)[0]
        cls.of_status = set(re.findall(r"--[-\w]+", help_text.replace(history, ""))) - cls.options
        cls.of_history = set(re.findall(r"--[-\w]+", history))

    def test_the_help_lists_some(self):
        self.assertIn("--help", self.options)
        self.assertIn("status", self.commands)
        self.assertIn("--follow", self.of_status)
        self.assertIn("--days", self.of_history)

    def test_the_manual_tells_of_each(self):
        environment = {**os.environ, "MANWIDTH": "100", "MANPAGER": "cat", "LC_ALL": "C.UTF-8"}
        manual = output("man", "-l", SHARE / "man/man1/kelpa.1.gz", env=environment)

        def tags(section):
            text = re.search(rf"^{section}\n(.*?)(?=^\S)", manual, re.M | re.S)[1]
            return {word for tag in re.findall(r"^ {7}(\S.*)$", text, re.M) for word in re.findall(r"^[-\w]+|--[-\w]+", tag)}

        self.assertEqual(tags("OPTIONS"), self.options)
        self.assertLessEqual(self.commands | self.of_status | self.of_history, tags("COMMANDS"))
        self.assertEqual(set(re.findall(r"^ {7}(\d)\b", manual, re.M)), {"0", "1", "2", "3"})

    def check_completion(self, complete):
        """`complete` gives what a shell offers at the end of a line."""
        self.assertEqual({word for word in complete("kelpa ") if word[0] != "-"}, self.commands)
        self.assertEqual(complete("kelpa --"), self.options)
        self.assertEqual(complete("kelpa status --") - {"--help"}, self.of_status)
        self.assertEqual(complete("kelpa history --") - {"--help"}, self.of_history)
        self.assertEqual(complete("kelpa sk"), {"skip"})
        self.assertEqual(complete("kelpa skip "), set())
        self.assertEqual(complete("kelpa pause "), {"until"})
        self.assertEqual(complete("kelpa pause until "), {"tomorrow"})

    def test_bash_completes_them(self):
        script = SHARE / "bash-completion/completions/kelpa"

        def complete(line):
            words = line.split(" ")
            return set(output("bash", "-c", '. "$1"; shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _kelpa; '
                                            'for word in "${COMPREPLY[@]}"; do echo "$word"; done', "bash", script,
                              *words).split()) - ({"--help"} if words[1] in ("pause", "skip") else set())

        self.check_completion(complete)

    def test_fish_completes_them(self):
        script = SHARE / "fish/vendor_completions.d/kelpa.fish"

        def complete(line):
            lines = output("fish", "--no-config", "--command", "source $argv[1]; complete --do-complete $argv[2]",
                           script, line).splitlines()
            return {each.split("\t")[0] for each in lines}

        self.check_completion(complete)

    def test_zsh_completes_them(self):
        shell = Zsh(SHARE / "zsh/vendor-completions")
        self.addCleanup(shell.close)
        self.check_completion(shell.complete)


class Zsh:
    """A zsh that is typed into: its completion works nowhere else."""
    SETUP = """fpath=({folder} $fpath); autoload -Uz compinit; compinit -D -u
zstyle ':completion:*' verbose no; zstyle ':completion:*' format ''; LISTMAX=1000; unsetopt beep list_beep list_types
show() {{ zle list-choices; zle -R; zle -I; print lis''ted; zle kill-whole-line }}
zle -N show; bindkey -e; bindkey '^X' show; PROMPT='<>'
print rea''dy
"""

    def __init__(self, folder):
        self.child, self.terminal = pty.fork()
        if self.child == 0:
            os.environ.update(TERM="dumb", COLUMNS="80", LINES="100", LC_ALL="C.UTF-8")
            os.execvp("zsh", ["zsh", "-f", "-i"])
        self.type(self.SETUP.format(folder=folder))
        self.read_until("\nready\n")

    def type(self, text):
        os.write(self.terminal, text.encode())

    def read_until(self, text, seconds=20):
        heard, end = "", time.monotonic() + seconds
        while text not in heard:
            if not select.select([self.terminal], [], [], max(0, end - time.monotonic()))[0]:
                raise TimeoutError(f"zsh did not say {text!r} but {heard!r}")
            heard += os.read(self.terminal, 65536).decode(errors="replace").replace("\r", "")
        return heard

    def complete(self, line):
        """The words that are listed below the line."""
        self.type(f"{line}\x18")
        heard = self.read_until("\nlisted\n")
        # Between the line as it is typed and its repetition behind the prompt.
        return {word for each in heard.split("\n")[1:] if "<>" not in each for word in each.split()} - {"listed"}

    def close(self):
        os.close(self.terminal)
        os.waitpid(self.child, 0)


class Contents(unittest.TestCase):
    def test_every_qml_module_comes_with_the_dependencies(self):
        """Modules are loaded by name, so nothing but a look into the sources tells which are needed."""
        modules = json.loads(output("/usr/lib/qt6/libexec/qmlimportscanner", "-rootPath",
                                    PROJECT / "platform/linux/view/qml", "-importPath", qml_folder()))
        folders = [module["path"] for module in modules if module.get("path", "").startswith(str(qml_folder()))]
        self.assertIn("QtQuick", {module["name"] for module in modules})
        needed = {line.split(":")[0] for line in output("dpkg", "-S", *(f"{each}/qmldir" for each in folders)).splitlines()}
        self.assertEqual(needed - dependencies(), set())

    def test_the_languages_of_the_catalogues_are_in_menus_and_software_centres(self):
        languages = {path.stem for path in (PROJECT / "assets/locale").glob("*.po")} - {"en"}
        entry = (SHARE / "applications/app.orvane.Kelpa.desktop").read_text()
        metainfo = (SHARE / "metainfo/app.orvane.Kelpa.metainfo.xml").read_text()
        for language in languages:
            self.assertTrue((SHARE / f"locale/{language}/LC_MESSAGES/kelpa.mo").exists(), language)
            for key in ("GenericName", "Comment", "Keywords"):
                self.assertIn(f"\n{key}[{language}]=", entry)
            self.assertIn(f'<summary xml:lang="{language}">', metainfo)

    def test_everybody_speaks_of_the_same_version(self):
        version = re.search(r"Kelpa ([\d.]+) ", output(ROOT / "usr/bin/kelpa", "--version"))[1]
        self.assertIn(f'"Kelpa {version}"', gzip.open(SHARE / "man/man1/kelpa.1.gz", "rt").readline())
        self.assertIn(f'<release version="{version}"', (SHARE / "metainfo/app.orvane.Kelpa.metainfo.xml").read_text())
        self.assertIn(f"\tpkgver = {version}\n", recipe_for_arch())


class OtherSystems(unittest.TestCase):
    def test_flatpaks_own_reader_keeps_all_of_the_manifest(self):
        """What the reader does not know, or finds of the wrong kind, it leaves out."""
        with tempfile.TemporaryDirectory() as folder:       # it makes itself at home where it runs
            read = subprocess.run(["flatpak-builder", "--show-manifest", MANIFEST], cwd=folder, capture_output=True,
                                  text=True, check=True)
        self.assertEqual(read.stderr, "")
        self.assertEqual(set(leaves(manifest())) - set(leaves(json.loads(read.stdout))), set())
        self.assertEqual((manifest()["id"], manifest()["command"]), ("app.orvane.Kelpa", "kelpa"))

    def test_flatpaks_manifest_builds_the_libraries_that_no_runtime_has(self):
        modules = {"libplist3": "libplist", "libsodium23": "libsodium"}
        needed = {modules[name] for name in package_names(field("Depends")) if name in modules}
        self.assertIn("libplist", needed)
        self.assertEqual(needed - {module["name"] for module in manifest()["modules"]}, set())

    def test_arch_has_everything_that_the_package_is_linked_with(self):
        owners = {"libsystemd0": "systemd-libs", "libplist3": "libplist", "libxcb1": "libxcb", "libqt6gui6": "qt6-base",
                  "libqt6quick6": "qt6-declarative", "libqt6svg6": "qt6-svg", "libsodium23": "libsodium",
                  "libwayland-client0": "wayland"}
        needed = {owners[name] for name in package_names(field("Depends")) if name in owners}
        self.assertLessEqual({"libplist", "qt6-base"}, needed)
        self.assertEqual(needed - set(re.findall(r"^\tdepends = (\S+)", recipe_for_arch(), re.M)), set())


def manifest():
    return json.loads(MANIFEST.read_text())


def leaves(tree, path=()):
    """Every value of a JSON document with the keys that lead to it."""
    if isinstance(tree, (dict, list)):
        for key, value in tree.items() if isinstance(tree, dict) else enumerate(tree):
            yield from leaves(value, path + (key,))
    else:
        yield path, tree


def recipe_for_arch():
    """The PKGBUILD as Arch's own tool reads it, which will not run as root and wants the package manager to exist."""
    as_nobody = ["runuser", "-u", "nobody", "--"] if os.getuid() == 0 else []
    with tempfile.TemporaryDirectory() as folder:
        shutil.copy(PROJECT / "packaging/arch/PKGBUILD", folder)
        os.chmod(folder, 0o777)
        return output(*as_nobody, "makepkg", "--printsrcinfo", cwd=folder, env={**os.environ, "PACMAN": "true"})


def field(name):
    return output("dpkg-deb", "--field", PACKAGE, name)


def package_names(text):
    return re.findall(r"(?:^|, )([-+.a-z0-9]+)", text)


def qml_folder():
    return Path(output("qtpaths6", "--query", "QT_INSTALL_QML").strip())


def dependencies():
    """The packages that come with the package, as far as they are installed here."""
    fields = [line.split("\t") for line in
              output("dpkg-query", "--show", "--showformat", "${Package}\t${Depends}, ${Pre-Depends}\n").splitlines()]
    depends = {name: re.findall(r"(?:^|[,|] *)([a-z0-9][-+.a-z0-9]+)", text) for name, text in fields}
    found, left = set(), package_names(field("Depends"))
    while left:
        name = left.pop()
        if name not in found and name in depends:
            found.add(name)
            left += depends[name]
    return found


if __name__ == "__main__":
    unittest.main()
