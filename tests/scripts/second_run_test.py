#!/usr/bin/python3
"""Which tests may fail once: those of real desktops, and nobody overlooks that."""
import subprocess
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
# Fails as long as its file is not there, which it makes.
ONCE = "test -e {0} || {{ touch {0}; false; }}"


class SecondRun(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.build = Path(folder.name)
        self.note = self.build / "note"

    def run_tests(self, *options, **tests):
        """Runs tests that are given as a label and a command; gives the status and what was printed."""
        lines = []
        for name, (label, command) in tests.items():
            lines += [f'add_test({name}.v1+ sh -c [[{command.format(self.build / name)}]])',
                      f'set_tests_properties({name}.v1+ PROPERTIES LABELS "{label}")']
        (self.build / "CTestTestfile.cmake").write_text("\n".join(lines))
        done = subprocess.run([ROOT / "scripts/run_tests.sh", self.build, *options], capture_output=True, text=True, timeout=60,
                              env={"PATH": "/usr/bin:/bin", "KELPA_SECOND_RUNS": str(self.note)})
        return done.returncode, done.stdout + done.stderr

    def noted(self):
        return self.note.read_text().split() if self.note.exists() else []

    def test_only_desktops_have_one(self):
        status, said = self.run_tests(view=("desktop", ONCE), panel=("wayland", ONCE), core=("", "true"))
        self.assertEqual(status, 0, said)
        self.assertIn("Passed only in a second run: panel.v1+ view.v1+", said)
        self.assertEqual(self.noted(), ["panel.v1+", "view.v1+"])

    def test_a_race_elsewhere_is_a_failure_at_once(self):
        status, said = self.run_tests(core=("", ONCE), fetch=("https", ONCE), view=("desktop", ONCE))
        self.assertEqual(status, 1, said)
        self.assertEqual(self.noted(), ["view.v1+"])
        self.assertEqual(self.run_tests(core=("", ONCE), fetch=("https", ONCE))[0], 0)

    def test_what_fails_twice_fails(self):
        self.assertEqual(self.run_tests(view=("desktop", "false"), panel=("desktop", "true"))[0], 1)

    def test_nothing_is_said_where_all_pass_and_nothing_passes_where_there_are_none(self):
        status, said = self.run_tests(view=("desktop", "true"))
        self.assertEqual((status, "second run" in said, self.noted()), (0, False, []))
        self.assertEqual(self.run_tests("--label-regex", "wayland", view=("desktop", "true"))[0] == 0, False)


if __name__ == "__main__":
    unittest.main()
