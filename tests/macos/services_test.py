#!/usr/bin/python3
"""What the program asks of the system: login item, mail, About, updates, and texts in the user's language."""
import re

from macos_support import ON_MAC, PROGRAM, ROOT, MacTest, Program, anywhere, main


class LoginItem(MacTest):
    SWITCH = "Launch at login"

    def asked(self, on, **environment):
        program = self.launch({"launch_at_login": not on}, **environment)
        program.settings("General").find("switch", self.SWITCH).set(on)
        return program, program.notes("register", "unregister", "login item")

    def test_the_system_starts_the_program_itself(self):
        self.assertEqual(self.asked(True)[1], [{"what": "register"}])
        self.assertEqual(self.asked(False)[1], [{"what": "unregister"}])

    def test_a_helper_does_on_an_older_system(self):
        for on in (True, False):
            self.assertEqual(self.asked(on, KELPA_TEST_MACOS="12.6")[1],
                             [{"what": "login item", "identifier": "app.orvane.Kelpa.LoginItem", "enabled": on}])

    def test_a_refusal_is_said(self):
        program, _ = self.asked(True, KELPA_TEST_NO_LOGIN_ITEM="yes")
        self.assertIn("SMAppService error: ", program.said())


class LoginItemHelper(MacTest):
    executable = PROGRAM.parents[1] / "Whole.app/Contents/Library/LoginItems/KelpaLoginItem.app/KelpaLoginItem"

    def said(self, **environment):
        """What the helper says until it has ended by itself."""
        helper = Program(self.executable, self.make_home(), self.display, {}, environment=environment)
        self.addCleanup(helper.errors.close)
        self.addCleanup(helper.end)
        self.assertEqual(helper.process.wait(20), 0)
        return helper.said()

    def test_it_starts_the_application_that_it_lies_in(self):
        started = f"start {PROGRAM.parents[1] / 'Whole.app'}\n"
        self.assertIn(started, self.said())
        self.assertIn("Kelpa could not be started: ", self.said(KELPA_TEST_NO_LOGIN_ITEM="yes"))

    def test_it_leaves_one_alone_that_runs(self):
        self.assertNotIn("start ", self.said(KELPA_TEST_RUNS="app.orvane.Kelpa"))


class Mail(MacTest):
    def test_a_message_with_the_log(self):
        program = self.launch()
        program.choose("Feedback...")
        mail = program.notes("mail")[0]
        self.assertEqual((mail["sharingServiceNamed"], mail["subject"]), ("compose email", "Kelpa Feedback"))
        self.assertEqual(len(mail["recipients"]), 1)
        self.assertRegex(mail["recipients"][0], r"^\S+@\S+$")
        body, log = mail["items"]
        self.assertRegex(body, r"\nApp version: v0\.1\.0\(1\)\nDevice model: \S+\nSystem version: (\S+ )?14\.2\.1\n$")
        self.assertRegex(log["absoluteString"], r"^file://.*/app\.orvane\.Kelpa\.20260302\.log$")


class About(MacTest):
    def test_the_panel(self):
        program = self.launch()
        program.choose("About...")
        about = program.notes("about")[0]
        self.assertEqual((about["ApplicationName"], about["Copyright"]), ("Kelpa", "Copyright © 2026 The Kelpa Authors."))
        self.assertTrue(about["Credits"]["string"])
        self.assertRegex(about["Credits"]["description"], r"NSLink\W+https://")
        self.assertTrue(about["ApplicationIcon"])

    def test_the_year_and_the_logs_name_are_those_of_the_users_calendar(self):
        for locale, year in (("th_TH@calendar=buddhist", 2569), ("fa_IR@calendar=persian", 1404)):
            program = self.launch({"Locale": locale})
            program.choose("About...")
            self.assertEqual(program.notes("about")[0]["Copyright"], f"Copyright © {year} The Kelpa Authors.")
        self.assertEqual([log.name for log in program.home.rglob("*.log")], ["app.orvane.Kelpa.14041211.log"])


class Updates(MacTest):
    def test_a_build_without_them_says_so(self):
        program = self.launch()
        program.choose("Check for Updates...")
        window, = program.windows()
        program.choose("Check for Updates...")
        self.assertEqual([each.number for each in program.windows()], [window.number])
        self.assertTrue(any("update" in text for text in window.texts()), window)
        window.all("button")[-1].press()
        self.assertEqual(program.windows(), [])


class Languages(MacTest):
    @staticmethod
    def translations(language):
        """The key and text of each entry that has one."""
        text = (ROOT / f"assets/locale/{language}.po").read_text(encoding="utf-8")
        return dict(re.findall(r'^msgid "(.+)"\nmsgstr "(.+)"$', text, re.M))

    @anywhere
    def test_every_one(self):
        languages = sorted(file.stem for file in (ROOT / "assets/locale").glob("*.po"))
        self.assertGreater(len(languages), 5)
        for language in languages:
            texts = self.translations(language)
            name = {"zh_CN": "zh-Hans", "zh_TW": "zh-Hant"}.get(language, language.replace("_", "-"))
            program = self.launch({}, "-AppleLanguages" if ON_MAC else "-NSLanguages", f"({name})")
            titles = [line["title"] for line in program.menu()]
            self.assertIn(texts["Quit"], titles, language)
            program.choose(texts["Settings"] + "...")
            for pane in ("General", "Workflow", "Style", "About", "Water"):
                program.turn_to(texts[pane])
            shown = program.window(texts["Settings"]).texts()
            for key in ("Options", "Enable drink water reminder", "water.interval"):
                self.assertIn(texts[key], shown, language)
            self.assertEqual(program.end(), 0)


if __name__ == "__main__":
    main()
