#!/usr/bin/python3
"""The check of the catalogues finds what it is there to find."""
import subprocess
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
HEADER = 'msgid ""\nmsgstr ""\n"Language: {}\\n"\n'
ENTRIES = (("Quit", "Q"), ('a \\"b\\"', "AB"), ("from %1$s to %2$s", "nach %2$s von %1$s"), ("unit.water", "ml"),
           ("%", "%"), ("%d of %s", "%d aus %s"))
SOURCE = r'''
// localized("in a comment")
auto a = localized("Quit"); /* translatable("this too") */ auto b = kelpa::localized("a "
    "\"b\"");
auto c = localized(often ? "from %1$s to %2$s" : "unit.water") + localized("%");
void show(const char* key) { paint(localized(key)); }
void all() { show(translatable("%d of %s")); }
'''


def catalogue(language, entries=ENTRIES):
    blocks = [f'#. Where it stands.\nmsgid "{key}"\nmsgstr "{text if language else ""}"\n' for key, text in entries]
    return "\n".join([HEADER.format(language)] + blocks)


TEMPLATE, COMPLETE = catalogue(""), catalogue("xx")
ENGLISH = catalogue("en", [(key, "water" if key == "unit.water" else key) for key, _ in ENTRIES])


class Check(unittest.TestCase):
    def check(self, template=TEMPLATE, other=COMPLETE, english=ENGLISH, source=SOURCE, file="ui/a.cpp", more=None):
        with tempfile.TemporaryDirectory() as folder:
            root = Path(folder)
            files = {"assets/locale/kelpa.pot": template, "assets/locale/xx.po": other,
                     "assets/locale/en.po": english, file: source, **(more or {})}
            for name, text in files.items():
                (root / name).parent.mkdir(parents=True, exist_ok=True)
                (root / name).write_text(text)
            done = subprocess.run([ROOT / "scripts/check_catalogues.py", root], capture_output=True, text=True)
            return done.returncode, done.stderr

    def refuses(self, *complaints, **files):
        """Exactly these complaints, one a line, each as the end of its line."""
        status, message = self.check(**files)
        self.assertEqual(status, 1)
        lines = message.splitlines()
        self.assertEqual(len(lines), len(complaints), message)
        for line, complaint in zip(lines, complaints):
            self.assertTrue(line.endswith(complaint), line)

    def test_a_complete_tree_passes(self):
        self.assertEqual(self.check(), (0, ""))

    def test_a_text_without_an_entry(self):
        for call in ('f(localized("Water"), 1);', 'localized(on ? "Quit" : "Water");', 'localized(("Water"));',
                     'auto t = {translatable("Water")};'):
            status, message = self.check(source=SOURCE + call)
            self.assertEqual(status, 1, call)
            self.assertIn('"Water" is not in kelpa.pot', message)
        self.refuses('ui/a.cpp:8: "Water" is not in kelpa.pot', source=SOURCE + 'localized("Water");')
        entry = "[Desktop Entry]\nName=Quit\nComment=Water\nExec=kelpa\n"
        metainfo = "<component><name>Quit</name><description><ul><li>Water</li></ul></description></component>"
        for place, text in {"platform/linux/b.mm:1": 'localized("Water");', "packaging/k.desktop.in": entry,
                            "packaging/k.metainfo.xml.in": metainfo}.items():
            self.refuses(f'{place}: "Water" is not in kelpa.pot', more={place.split(":")[0]: text})

    def test_a_text_that_comes_by_a_detour_unmarked(self):
        self.refuses("ui/b.cpp:2: which texts are looked up here? Mark them with translatable()",
                     more={"ui/b.cpp": 'auto k = "Quit";\nauto a = localized(k);'})

    def test_a_text_that_nothing_looks_up(self):
        self.refuses('kelpa.pot: nothing looks up "Quit"', source=SOURCE.replace('localized("Quit")', '"Quit"'))
        status, message = self.check(source="int a;")
        self.assertEqual(status, 1)
        self.assertIn("this check would find nothing", message)

    def test_a_face_with_texts_of_its_own(self):
        own = "a text of its own; the core looks texts up and gives them"
        for line in ('text: "Quit"', "text: qsTr('x') + qsTr(\"y\")", 'Accessible.name: on ? "" : "Quit"',
                     'property string skipText: "Skip"'):
            status, message = self.check(more={"platform/linux/view/A.qml": "Item {\n    " + line + "\n}"})
            self.assertEqual((status, message.splitlines()[0][-len(own):]), (1, own), line)
        self.refuses("b.cpp:1: " + own, more={"platform/linux/b.cpp": 'label.setText(tr("Quit"));'})
        harmless = 'text: entry.text\n// text: "Quit"\ntext: "\\ue64b"\nvisible: text !== "Quit"\ntext: "12:34"\n'
        self.assertEqual(self.check(more={"platform/linux/view/A.qml": harmless}), (0, ""))

    def test_a_catalogue_that_is_incomplete_doubtful_or_another(self):
        stale = '\n#~ msgid "Old"\n#~ msgstr "O"\n'
        for right, wrong, *complaints in (
                ('"Quit"', '"Leave"', 'xx.po: "Quit" is missing', 'xx.po: "Leave" is not in kelpa.pot'),
                ('msgstr "Q"', 'msgstr ""', 'xx.po: "Quit" has no translation'),
                ('msgid "Quit"', '#, fuzzy\nmsgid "Quit"', 'xx.po: "Quit" has no translation'),
                (COMPLETE, COMPLETE + stale, "xx.po: has entries that are out of use (#~)"),
                ("#. Where it stands.\nmsgid \"Quit", "#. Elsewhere.\nmsgid \"Quit",
                 'the comment of "Quit" is not the template\'s; scripts/update_catalogues.sh mends that'),
                ("xx", "de", 'xx.po: its header does not say "Language: xx"')):
            with self.subTest(wrong=wrong):
                self.refuses(*complaints, other=COMPLETE.replace(right, wrong))

    def test_a_placeholder_missing_or_extra(self):
        for right, wrong in (("nach %2$s von %1$s", "nach %2$s"), ("nach %2$s von %1$s", "%1$s %2$s %3$s"),
                             ("nach %2$s von %1$s", "%1$s %1$s"), ("%d aus %s", "%s aus %d"), ("%d aus %s", "%d aus")):
            status, message = self.check(other=COMPLETE.replace(right, wrong))
            self.assertEqual(status, 1, wrong)
            self.assertIn("has the placeholders", message)
        self.refuses("""xx.po: "unit.water" has the placeholders ['%d'] instead of []""",
                     other=COMPLETE.replace('msgstr "ml"', 'msgstr "%d ml"'))
        self.refuses("""en.po: "from %1$s to %2$s" has the placeholders ['%1$s'] instead of ['%1$s', '%2$s']""",
                     english=ENGLISH.replace('msgstr "from %1$s to %2$s"', 'msgstr "from %1$s on"'))
        # A key that is only a name takes its placeholders from what is shown in English.
        self.refuses("""xx.po: "unit.water" has the placeholders [] instead of ['%s']""",
                     english=ENGLISH.replace('msgstr "water"', 'msgstr "%s water"'))


if __name__ == "__main__":
    unittest.main()
