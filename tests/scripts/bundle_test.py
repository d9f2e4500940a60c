#!/usr/bin/python3
"""The application bundle for macOS, as far as any system can make and read it."""
import json
import plistlib
import re
import struct
import subprocess
import tempfile
import unittest
from pathlib import Path

import yaml

ROOT = Path(__file__).resolve().parent.parent.parent
BUNDLE = ROOT / "platform/macos/bundle"
CATALOGUES = sorted((ROOT / "assets/locale").glob("*.po"))


def run(*command):
    return subprocess.run([str(part) for part in command], capture_output=True, text=True, check=False)


def read_strings(text):
    """The pairs of a string table. Whatever is not exactly one fails."""
    literal = r'"((?:[^"\\]|\\["\\ntr])*)"'
    pairs, rest = {}, text
    while rest:
        found = re.match(rf"{literal} = {literal};\n", rest)
        if not found:
            raise ValueError(f"no pair at {rest[:60]!r}")
        key, value = (re.sub(r"\\(.)", lambda each: {"n": "\n", "t": "\t", "r": "\r"}.get(each[1], each[1]), part)
                      for part in found.groups())
        if key in pairs:
            raise ValueError(f"{key!r} stands twice")
        pairs[key] = value
        rest = rest[found.end():]
    return pairs


def texts_of(catalogue):
    """Key to translation, by gettext's own reading of the catalogue."""
    with tempfile.TemporaryDirectory() as folder:
        made = run("msgfmt", "--output-file", f"{folder}/c.mo", catalogue)
        if made.returncode:
            raise RuntimeError(made.stderr)
        data = Path(folder, "c.mo").read_bytes()
    _, _, count, keys, values = struct.unpack("<5I", data[:20])

    def text(table, index):
        length, start = struct.unpack("<2I", data[table + 8 * index:table + 8 * index + 8])
        return data[start:start + length].decode()
    return {text(keys, i): text(values, i) for i in range(count) if text(keys, i)}


class InfoPlist(unittest.TestCase):
    def made(self, **values):
        with tempfile.TemporaryDirectory() as folder:
            done = run("cmake", "-D", "VERSION=1.2.3", "-D", f"OUTPUT={folder}",
                       *(f"-DKELPA_{name}={value}" for name, value in values.items()), "-P", BUNDLE / "InfoPlist.cmake")
            self.assertEqual(done.returncode, 0, done.stderr)
            return [plistlib.loads(Path(folder, name).read_bytes()) for name in ("Info.plist", "LoginItem-Info.plist")]

    def test_the_application_lives_in_the_menu_bar_alone_and_says_who_it_is(self):
        info, _ = self.made(BUILD_NUMBER="7")
        self.assertIs(info["LSUIElement"], True)
        self.assertEqual(info["CFBundleIdentifier"], "app.orvane.Kelpa")
        self.assertEqual((info["CFBundleShortVersionString"], info["CFBundleVersion"]), ("1.2.3", "7"))
        self.assertEqual(info["LSMinimumSystemVersion"], "12.0")
        self.assertEqual(info["CFBundleDisplayName"], "Kelpa")

    def test_every_value_is_filled_in(self):
        for info in self.made():
            for key, value in info.items():
                self.assertNotIn("@", str(value), key)
                self.assertNotEqual(value, "", key)

    def test_the_helper_has_the_identifier_that_the_program_registers(self):
        info, helper = self.made()
        distribution = (ROOT / "cmake/Distribution.cmake").read_text()
        self.assertEqual(helper["CFBundleIdentifier"], re.search(r'LOGIN_ITEM_IDENTIFIER "(.*)"', distribution)[1])
        self.assertTrue(helper["CFBundleIdentifier"].startswith(info["CFBundleIdentifier"] + "."))
        self.assertIs(helper["LSBackgroundOnly"], True)

    def test_updates_are_there_with_their_feed_only(self):
        self.assertFalse([key for key in self.made()[0] if key.startswith("SU")])
        key = "A" * 43 + "="
        info, _ = self.made(FEED_URL="https://kelpa.example/feed?a=1&b=2", UPDATE_PUBLIC_KEY=key)
        self.assertEqual(info["SUFeedURL"], "https://kelpa.example/feed?a=1&b=2")
        self.assertEqual(info["SUPublicEDKey"], key)

    def test_signs_of_xml_in_a_value_are_no_xml(self):
        info, _ = self.made(COPYRIGHT_HOLDER="Smith & <Sons>")
        self.assertEqual(info["NSHumanReadableCopyright"], "© Smith & <Sons>")

    def test_what_it_may_do_is_what_it_explains(self):
        rights = plistlib.loads((BUNDLE / "Kelpa.entitlements").read_bytes())
        self.assertEqual(rights, {"com.apple.security.automation.apple-events": True})
        self.assertIn("NSAppleEventsUsageDescription", self.made()[0])


class Strings(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.folder.cleanup)
        done = run(BUNDLE / "make_strings.py", *CATALOGUES, cls.folder.name)
        if done.returncode:
            raise RuntimeError(done.stderr)

    def table(self, language, name):
        return read_strings(Path(self.folder.name, f"{language}.lproj", f"{name}.strings").read_text(encoding="utf-8"))

    def test_every_catalogue_becomes_a_table_with_the_same_texts(self):
        self.assertGreaterEqual(len(CATALOGUES), 2)
        for catalogue in CATALOGUES:
            language = {"zh_CN": "zh-Hans"}.get(catalogue.stem, catalogue.stem.replace("_", "-"))
            table = self.table(language, "Localizable")
            self.assertEqual({key: table[key] for key in texts_of(catalogue)}, texts_of(catalogue), language)

    def test_a_text_without_translation_is_in_english(self):
        with tempfile.TemporaryDirectory() as folder:
            half = Path(folder, "xx.po")
            half.write_text('msgid "Skip"\nmsgstr "\\"Nö\\"\\nnö\\\\"\n\nmsgid "water.interval"\nmsgstr ""\n\n'
                            '#, fuzzy\nmsgid "Done"\nmsgstr "Doubtful"\n', encoding="utf-8")
            done = run(BUNDLE / "make_strings.py", half, ROOT / "assets/locale/en.po", folder)
            self.assertEqual(done.returncode, 0, done.stderr)
            table = read_strings(Path(folder, "xx.lproj/Localizable.strings").read_text(encoding="utf-8"))
        english = texts_of(ROOT / "assets/locale/en.po")
        self.assertEqual(table["Skip"], '"Nö"\nnö\\')
        self.assertEqual(table["water.interval"], english["water.interval"])
        self.assertEqual(table["Done"], english["Done"])

    def test_the_system_has_name_and_reason_in_every_language(self):
        template = plistlib.loads(re.sub(r"@\w+@", "", (BUNDLE / "Info.plist.in").read_text()).encode())
        for folder in Path(self.folder.name).glob("*.lproj"):
            table = read_strings((folder / "InfoPlist.strings").read_text(encoding="utf-8"))
            self.assertLessEqual(set(table), set(template), folder.name)
            self.assertTrue(all(table.values()), folder.name)
        reasons = {self.table(language, "InfoPlist")["NSAppleEventsUsageDescription"] for language in ("en", "zh-Hans")}
        self.assertEqual(len(reasons), 2)
        with tempfile.TemporaryDirectory() as folder:
            run("cmake", "-D", "VERSION=1", "-D", f"OUTPUT={folder}", "-P", BUNDLE / "InfoPlist.cmake")
            info = plistlib.loads(Path(folder, "Info.plist").read_bytes())
        self.assertIn(info["NSAppleEventsUsageDescription"], texts_of(ROOT / "assets/locale/en.po"))

    def test_a_damaged_catalogue_is_refused_with_its_name(self):
        with tempfile.TemporaryDirectory() as folder:
            bad = Path(folder, "xx.po")
            bad.write_text("nothing of the kind\n", encoding="utf-8")
            done = run(BUNDLE / "make_strings.py", bad, folder)
        self.assertEqual(done.returncode, 1)
        self.assertIn("xx.po", done.stderr)


class Workflow(unittest.TestCase):
    def test_it_runs_presets_that_there_are_and_keeps_what_they_make(self):
        workflow = yaml.safe_load((ROOT / ".github/workflows/macos.yml").read_text())
        steps = [step for job in workflow["jobs"].values() for step in job["steps"]]
        for step in steps:
            self.assertEqual(len({"uses", "run"} & step.keys()), 1, step)
        asked = re.findall(r"--preset (\S+)", " ".join(step.get("run", "") for step in steps))
        presets = json.loads((ROOT / "CMakePresets.json").read_text())
        there = {each["name"]: [step["type"] for step in each["steps"]] for each in presets["workflowPresets"]}
        self.assertLessEqual(set(asked), set(there))
        self.assertIn("test", [kind for name in asked for kind in there[name]])
        self.assertIn("package", [kind for name in asked for kind in there[name]])
        for job in workflow["jobs"].values():
            self.assertTrue(job["runs-on"].startswith("macos-"))


class Icons(unittest.TestCase):
    def test_the_icon_set_has_every_size_that_the_system_asks_for(self):
        icons = ROOT / "assets/icons/hicolor"
        with tempfile.TemporaryDirectory() as folder:
            done = run(BUNDLE / "make_icons.py", icons / "scalable/apps/app.orvane.Kelpa.svg",
                       icons / "symbolic/apps/app.orvane.Kelpa-symbolic.svg", folder)
            self.assertEqual(done.returncode, 0, done.stderr)
            sizes = {path.name: struct.unpack(">2I", path.read_bytes()[16:24]) for path in Path(folder).glob("**/*.png")}
        expected = {f"icon_{points}x{points}{suffix}.png": (points * scale,) * 2
                    for points in (16, 32, 128, 256, 512) for suffix, scale in (("", 1), ("@2x", 2))}
        expected |= {"kelpa.png": (18, 18), "kelpa@2x.png": (36, 36)}
        self.assertEqual(sizes, expected)


if __name__ == "__main__":
    unittest.main()
