#!/usr/bin/python3
"""The check of the catalogues finds what it is there to find."""
import subprocess
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
TEMPLATE = 'msgid ""\nmsgstr "Language: \\n"\n\n#. A comment.\nmsgid "Quit"\nmsgstr ""\n\nmsgid "a \\"b\\""\nmsgstr ""\n'
COMPLETE = TEMPLATE.replace('msgid "Quit"\nmsgstr ""', 'msgid "Quit"\nmsgstr "Q"').replace(
    'b\\""\nmsgstr ""', 'b\\""\nmsgstr "AB"')
SOURCE = 'auto a = localized("Quit"); auto b = kelpa::localized("a "\n    "\\"b\\"");\n'


class Check(unittest.TestCase):
    def check(self, template=TEMPLATE, catalogue=COMPLETE, source=SOURCE):
        with tempfile.TemporaryDirectory() as folder:
            root = Path(folder)
            (root / "assets/locale").mkdir(parents=True)
            (root / "ui").mkdir()
            (root / "assets/locale/kelpa.pot").write_text(template)
            (root / "assets/locale/xx.po").write_text(catalogue)
            (root / "ui/a.cpp").write_text(source)
            done = subprocess.run([ROOT / "scripts/check_catalogues.py", root], capture_output=True, text=True)
            return done.returncode, done.stderr

    def refuses(self, words, **files):
        status, message = self.check(**files)
        self.assertEqual(status, 1)
        self.assertIn(words, message)

    def test_a_complete_tree_passes(self):
        self.assertEqual(self.check(), (0, ""))

    def test_a_text_without_an_entry(self):
        self.refuses('ui/a.cpp: "Water" is not in kelpa.pot', source=SOURCE + 'f(localized("Water"), 1);')

    def test_a_missing_entry(self):
        self.refuses('xx.po: "Quit" is missing', catalogue=COMPLETE.replace("Quit", "Leave"))

    def test_an_entry_too_many(self):
        self.refuses('xx.po: "Leave" is not in kelpa.pot', catalogue=COMPLETE + '\nmsgid "Leave"\nmsgstr "L"\n')

    def test_an_empty_or_doubtful_translation(self):
        self.refuses('"Quit" has no translation', catalogue=TEMPLATE)
        self.refuses('"Quit" has no translation', catalogue=COMPLETE.replace("#. A comment.", "#, fuzzy"))

    def test_a_core_that_looks_nothing_up(self):
        self.refuses("this check would find nothing", source="int a;")


if __name__ == "__main__":
    unittest.main()
