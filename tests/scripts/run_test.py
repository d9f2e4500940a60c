#!/usr/bin/python3
"""The scripts ./run and ./test as a stranger calls them, with stand-ins for the tools that would change the machine."""
import subprocess
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
COMMON = ("bash", "cat", "dirname", "readlink", "sed", "grep", "mktemp", "rm", "tail", "env", "nproc", "python3")


class Sandbox(unittest.TestCase):
    """A PATH of its own with stand-ins: nothing is installed and nothing is built."""

    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.bin = Path(self.folder.name) / "bin"
        self.bin.mkdir()
        for tool in COMMON:
            (self.bin / tool).symlink_to(f"/usr/bin/{tool}")
        self.calls = Path(self.folder.name) / "calls"

    def stand_in(self, name, body="exit 0"):
        tool = self.bin / name
        tool.write_text(f'#!/usr/bin/bash\necho "{name} $*" >>{self.calls}\n{body}\n')
        tool.chmod(0o755)

    def recorded(self):
        return self.calls.read_text() if self.calls.exists() else ""

    def sh(self, command, **environment):
        done = subprocess.run(["/usr/bin/bash", "-c", command], cwd=ROOT, capture_output=True, text=True, timeout=60,
                              stdin=subprocess.DEVNULL, env={"PATH": str(self.bin), **environment})
        return done.returncode, done.stdout, done.stderr

    def need(self, *packages, as_root=True):
        """Asks for packages; as another user than root through a stand-in for the shell's own variable."""
        script = "set -euo pipefail; . scripts/packages.sh; "
        if not as_root:
            script = script.replace("; . scripts", '; source <(sed "s/EUID != 0/1/" scripts') .replace(
                "packages.sh; ", "packages.sh); ")
        return self.sh(script + "kelpa_need_packages " + " ".join(packages))

    def installed(self, *packages):
        lines = "\n".join(f"echo '{package} installed'" for package in packages)
        self.stand_in("dpkg-query", lines or "exit 1")


class Packages(Sandbox):
    def test_nothing_happens_when_everything_is_there(self):
        self.installed("one", "two")
        self.stand_in("apt-get")
        self.assertEqual(self.need("one", "two"), (0, "", ""))
        self.assertNotIn("apt-get", self.recorded())

    def test_only_what_is_missing_or_but_half_there_is_installed_and_named(self):
        self.stand_in("dpkg-query", "echo 'one installed'; echo 'two config-files'")
        self.stand_in("apt-get")
        status, output, _ = self.need("one", "two", "three")
        self.assertEqual(status, 0)
        self.assertIn("two three", output)
        install = self.recorded().strip().splitlines()[-1]
        self.assertIn("install --yes", install)
        self.assertTrue(install.endswith(" two three"), install)

    def test_a_failing_installation_is_told_with_apts_own_words(self):
        self.installed()
        self.stand_in("apt-get", "echo 'E: no such network' >&2; exit 100")
        status, _, message = self.need("one")
        self.assertEqual(status, 1)
        self.assertIn("E: no such network", message)
        self.assertIn("Could not install the packages that are missing:\n  one", message)

    def test_sudo_is_used_where_the_user_is_not_root(self):
        self.installed()
        self.stand_in("apt-get")
        self.stand_in("sudo", '"$@"')
        self.assertEqual(self.need("one", as_root=False)[0], 0)
        self.assertIn("sudo env DEBIAN_FRONTEND=noninteractive apt-get", self.recorded())

    def test_without_root_and_sudo_the_packages_are_named(self):
        self.installed()
        self.stand_in("apt-get")
        status, _, message = self.need("one", "two", as_root=False)
        self.assertEqual(status, 1)
        self.assertIn("one two", message)
        self.assertNotIn("apt-get", self.recorded())

    def test_another_system_gets_the_names_of_tools_and_packages(self):
        status, _, message = self.need("one", "two")
        self.assertEqual(status, 1)
        self.assertIn("no apt-get", message)
        self.assertIn("cmake", message)
        self.assertIn("one two", message)


class Options(Sandbox):
    def setUp(self):
        super().setUp()
        self.stand_in("dpkg-query", 'for package in "${@:3}"; do echo "$package installed"; done')
        self.stand_in("apt-get")

    def test_help(self):
        for script in ("run", "test"):
            status, output, message = self.sh(f"./{script} --help")
            self.assertEqual((status, message), (0, ""))
            self.assertTrue(output.startswith(f"usage: ./{script}"))
        self.assertEqual(self.recorded(), "")

    def test_an_unknown_option_of_the_test_script(self):
        status, output, message = self.sh("./test --al")
        self.assertEqual((status, output), (2, ""))
        self.assertIn("unknown option '--al'", message)
        self.assertEqual(self.recorded(), "")

    def test_a_build_that_fails_ends_the_run(self):
        self.stand_in("cmake", "echo 'a wrong turn' >&2; exit 1")
        self.stand_in("ninja", "echo 'a lot to do'")
        status, _, message = self.sh("./run --version")
        self.assertNotEqual(status, 0)
        self.assertIn("a wrong turn", message)

    def test_the_demo_is_the_way_without_a_display(self):
        self.stand_in("cmake")
        self.stand_in("ninja", "echo 'ninja: no work to do.'")
        status, output, message = self.sh("./run --speed 99")
        self.assertIn("No display here", output)
        self.assertEqual(status, 2)
        self.assertIn("the speed is a number from 1 to 12", message)


if __name__ == "__main__":
    unittest.main()
