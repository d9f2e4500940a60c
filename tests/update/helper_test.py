#!/usr/bin/python3
"""kelpa-update against a real HTTPS server: what it finds, what it refuses, and what it leaves on the disk."""
import itertools
import os
import select
import shutil
import socket
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

from releases import (ENDING, Authority, Maker, ServedTest, Server, debian_package, feed, item, redirect, stalling,
                      stream)

HELPER = os.environ.get("KELPA_UPDATE", Path(__file__).resolve().parents[2] / "build/dev/kelpa-update")
PACKAGE = debian_package("0.2.0", 300_000)
MOST_MEMORY = 64
FLOOD = itertools.repeat(b"<item></item>" * 5000)


class Helper:
    """kelpa-update, and the program's end of the connection to it."""

    def __init__(self, certificates, **environment):
        self.connection, theirs = socket.socketpair()
        clean = {name: value for name, value in os.environ.items() if not name.lower().endswith("_proxy")}
        self.process = subprocess.Popen([HELPER], preexec_fn=lambda: os.dup2(theirs.fileno(), 3), pass_fds=(3,),
                                        env={**clean, "SSL_CERT_FILE": str(certificates), **environment})
        theirs.close()
        self.input = self.connection.makefile("r", encoding="utf-8", newline="\n")

    def tell(self, *fields):
        self.connection.sendall(("\t".join(map(str, fields)) + "\n").encode())

    def hears(self, seconds=60):
        """The next message, as the list of its fields; an empty one when the helper is gone."""
        self.connection.settimeout(seconds)
        line = self.input.readline()
        return line.rstrip("\n").split("\t") if line else []

    def outcome(self):
        """The next message that is no progress."""
        while (message := self.hears()) and message[0] == "progress":
            pass
        return message

    def memory(self, kind="VmHWM"):
        """In MB, the most it ever had or what kind is asked for; 0 when it is gone."""
        status = Path(f"/proc/{self.process.pid}/status").read_text()
        return int(status.split(f"{kind}:")[1].split()[0]) / 1024 if f"{kind}:" in status else 0

    def close(self):
        self.input.close()
        self.connection.close()
        return self.process.wait(10)


class UpdateTest(ServedTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.signature = cls.maker.sign(PACKAGE)

    def setUp(self):
        super().setUp()
        self.cache = Path(tempfile.mkdtemp(dir=self.folder)) / "update"
        self.package_url = self.server.base + "/kelpa" + ENDING
        self.server.paths["/kelpa" + ENDING] = PACKAGE

    def helper(self, feed_url=None, running="1", system="12.0.0", key=None, patience=(20, 20), certificates=None,
               **environment):
        self.latest = helper = Helper(certificates or self.authority.certificate, **environment)
        self.addCleanup(helper.close)
        helper.tell("source", feed_url or self.server.base + "/feed.xml", key or self.maker.key, ENDING)
        helper.tell("running", running, "0.1.0", system)
        helper.tell("folder", self.cache)
        helper.tell("patience", *patience)
        return helper

    def release(self, version="2", signature=None, length=len(PACKAGE), url=None, **more):
        return item(version, url or self.package_url, length, signature or self.signature, **more)

    def publish(self, *items):
        self.server.paths["/feed.xml"] = feed(*items)

    def check(self, *items, **how):
        """What a check of a feed with these releases says."""
        if items:
            self.publish(*items)
        helper = self.helper(**how)
        helper.tell("check")
        return helper.hears()

    def download(self, *items, **how):
        self.publish(*items or [self.release()])
        helper = self.helper(**how)
        helper.tell("check")
        self.assertEqual(helper.hears()[0], "found")
        helper.tell("download")
        return helper

    def left(self):
        return sorted(file.name for file in self.cache.iterdir()) if self.cache.exists() else []

    def refused(self, reason, message):
        self.assertEqual(message[:2], ["failed", reason], message)
        self.assertEqual(self.left(), [])


class Feed(UpdateTest):
    def test_the_newest_release_for_everybody_is_found(self):
        notes = "<sparkle:releaseNotesLink>notes/2.html</sparkle:releaseNotesLink>"
        found = self.check(self.release("2", name="0.2", more=notes), self.release("10", name="0.10", more=notes),
                           self.release("11", more="<sparkle:channel>beta</sparkle:channel>"), self.release("9"))
        self.assertEqual(found, ["found", "10", "0.10", self.server.base + "/notes/2.html", str(len(PACKAGE))])

    def test_other_systems_packages_are_passed_over(self):
        windows, linux = 'sparkle:os="windows"', 'sparkle:os="linux"'
        other = self.server.base + "/kelpa.dmg"
        self.assertEqual(self.check(self.release("3", attributes=windows), self.release("4", url=other),
                                    self.release("5", more="<sparkle:os>macos</sparkle:os>"),
                                    self.release("2", attributes=linux))[1], "2")

    def test_nothing_newer_and_never_an_older_one(self):
        self.assertEqual(self.check(self.release("7"), running="7"), ["latest"])
        self.assertEqual(self.check(self.release("6"), self.release("7b1"), running="7"), ["latest"])
        self.assertEqual(self.check(item(""), running="7"), ["latest"])

    def test_a_release_for_a_newer_system_is_told_of(self):
        newer = self.release("3", more="<sparkle:minimumSystemVersion>13</sparkle:minimumSystemVersion>")
        self.assertEqual(self.check(newer), ["outgrown"])
        self.assertEqual(self.check(newer, self.release("2"))[1], "2")
        self.assertEqual(self.check(newer, system="13.0.0")[1], "3")

    def test_the_profile_is_sent_when_there_is_one_and_nothing_else(self):
        self.publish(self.release())
        helper = self.helper(feed_url=self.server.base + "/feed.xml?a=b")
        helper.tell("check")
        helper.hears()
        helper.tell("profile", "lang", "zh_CN & more=1")
        helper.tell("check")
        helper.hears()
        (plain, headers), (told, _) = self.server.requests
        self.assertEqual(plain, "/feed.xml?a=b")
        self.assertEqual(told, "/feed.xml?a=b&lang=zh_CN%20%26%20more%3D1")
        self.assertEqual(set(headers), {"Host", "Accept-Encoding", "Accept-Language", "Cache-Control", "Connection", "Pragma",
                                        "User-Agent"})
        self.assertEqual((headers["User-Agent"], headers["Accept-Language"]), ("Kelpa/0.1.0", "en"))

    def test_a_link_to_notes_leads_to_a_secure_page_or_nowhere(self):
        for link in ("http://kelpa.example/", "file:///etc/passwd", "javascript:alert(1)", "ssh://kelpa.example",
                     "https://kelpa.example/" + "x" * 10000):
            notes = f"<sparkle:releaseNotesLink>{link}</sparkle:releaseNotesLink>"
            self.assertEqual(self.check(self.release(more=notes))[3], "", link)

    def test_a_version_that_cannot_be_shown_is_refused(self):
        for version in ("2" * 100000, "2 \u202e fdp.exe", "2\nand a line"):
            self.refused("malformed", self.check(self.release(version)))
            self.refused("malformed", self.check(self.release("2", name=version)))

    def test_what_is_no_feed_is_refused(self):
        deep = b"<a>" * 100000
        bomb = b'<!DOCTYPE rss [<!ENTITY a "aaaaaaaaaa">' + b"".join(
            b'<!ENTITY %c "&%c;&%c;&%c;&%c;&%c;&%c;&%c;&%c;">' % ((n,) + (n - 1,) * 8) for n in range(98, 120))
        bomb += b"]><rss><channel><title>&w;</title></channel></rss>"
        item_deep = b"<rss><channel><item>" + b"<b>" * 40 + b"</b>" * 40 + b"</item></channel></rss>"
        for bytes_ in (b"", b"<html></html>", b"not XML", feed(self.release())[:-8], deep, bomb, item_deep,
                       b"<rss><channel/></rss><rss/>", b"<rss><channel><!DOCTYPE rss></channel></rss>",
                       b"<rss><channel/></rss><!DOCTYPE rss>", b"<rss version='2.0'></rss>", b"\xff\xfe\x00",
                       b'<?xml version="1.0" encoding="utf-8"?><rss><channel>\xff</channel></rss>'):
            self.server.paths["/feed.xml"] = bytes_
            self.refused("malformed", self.check())

    def test_a_feed_that_takes_long_to_read_does_not_take_long(self):
        many = b" ".join(b'a%d=""' % number for number in range(90000))
        for bytes_ in (b"<rss><channel><item %s/></channel></rss>" % many,
                       b"<rss><channel>" + b"<item/>" * 140000 + b"</channel></rss>",
                       b"<rss><channel><item><title>" + b"&amp;" * 200000 + b"</title></item></channel></rss>"):
            self.server.paths["/feed.xml"] = bytes_
            start = time.monotonic()
            self.assertIn(self.check()[0], ("latest", "failed"))
            self.assertLess(time.monotonic() - start, 10)
            self.assertLess(self.latest.memory(), 2 * MOST_MEMORY)

    def test_a_huge_feed_is_refused_in_little_memory(self):
        for answer in (stream(FLOOD, 1 << 40), stream(itertools.chain([b"<rss><channel>"], FLOOD))):
            self.server.paths["/feed.xml"] = answer
            self.refused("tooLarge", self.check())
            self.assertLess(self.latest.memory(), MOST_MEMORY)

    def test_headers_without_end_are_refused_before_they_fill_the_memory(self):
        def endless_headers(request):
            request.wfile.write(b"HTTP/1.1 200 OK\r\n")
            while True:
                request.wfile.write(b"X-More: " + b"x" * 8000 + b"\r\n")
        self.server.paths["/feed.xml"] = endless_headers
        helper = self.helper()
        helper.tell("check")
        most = 0
        while not select.select([helper.connection], [], [], 0.05)[0]:
            most = max(most, helper.memory())
        self.refused("tooLarge", helper.hears())
        self.assertLess(most, 3 * MOST_MEMORY)

    def test_a_slow_server_is_not_waited_for(self):
        drops = iter(lambda: time.sleep(0.1) or b" ", None)
        for answer in (lambda _: self.server.ending.wait(30), stream(drops)):
            self.server.paths["/feed.xml"] = answer
            start = time.monotonic()
            self.refused("slow", self.check(patience=(1, 1)))
            self.assertLess(time.monotonic() - start, 10)


class Transport(UpdateTest):
    def test_nothing_but_https_is_ever_spoken(self):
        insecure = Server()
        self.addCleanup(insecure.stop)
        insecure.paths["/feed.xml"] = feed(self.release())
        insecure.paths["/kelpa" + ENDING] = PACKAGE
        self.refused("insecure", self.check(feed_url=insecure.base + "/feed.xml"))
        self.refused("insecure", self.check(self.release(url=insecure.base + "/kelpa" + ENDING)))
        self.server.paths["/feed.xml"] = redirect(insecure.base + "/feed.xml")
        self.refused("insecure", self.check())
        self.server.paths["/moved" + ENDING] = redirect(insecure.base + "/kelpa" + ENDING)
        helper = self.download(self.release(url=self.server.base + "/moved" + ENDING))
        self.refused("insecure", helper.outcome())
        self.assertEqual(insecure.requests, [])
        for url in ("file:///etc/passwd", "ftp://localhost/feed", "https://", "feed.xml", "https:///feed.xml"):
            self.refused("insecure", self.check(feed_url=url))

    def test_a_redirect_to_a_file_of_this_machine_is_refused(self):
        (self.folder / "local.xml").write_bytes(feed(self.release()))
        self.server.paths["/feed.xml"] = redirect((self.folder / "local.xml").as_uri())
        self.refused("insecure", self.check())

    def test_a_secure_redirect_is_followed_but_not_for_ever(self):
        self.publish(self.release())
        self.server.paths["/old.xml"] = redirect(self.server.base + "/feed.xml")
        self.assertEqual(self.check(feed_url=self.server.base + "/old.xml")[0], "found")
        self.server.paths["/round.xml"] = redirect(self.server.base + "/round.xml")
        self.refused("answer", self.check(feed_url=self.server.base + "/round.xml"))

    def test_a_server_that_nobody_vouches_for_is_refused(self):
        folder = Path(tempfile.mkdtemp(dir=self.folder))
        self.publish(self.release())
        self.refused("insecure", self.check(certificates=Authority(folder).certificate))
        self.refused("insecure", self.check(certificates=folder / "missing"))
        # The certificate is for the address of the other.
        elsewhere = Server(self.authority, host="127.0.0.2")
        self.addCleanup(elsewhere.stop)
        self.refused("insecure", self.check(feed_url=elsewhere.base + "/feed.xml"))
        self.assertEqual(self.server.requests + elsewhere.requests, [])

    def test_what_is_not_there_is_told(self):
        self.refused("answer", self.check(feed_url=self.server.base + "/missing.xml"))
        self.server.stop()
        self.refused("unreachable", self.check())


class Download(UpdateTest):
    def test_what_its_maker_signed_is_kept_under_a_tame_name(self):
        helper = self.download(self.release("2.0/../../x y"))
        said = []
        while not said or said[-1][0] == "progress":
            said.append(helper.hears())
        path = Path(said[-1][1])
        self.assertEqual(said[-1][0], "ready")
        self.assertEqual(path.read_bytes(), PACKAGE)
        self.assertEqual(self.left(), ["kelpa_2.0-..-..-x-y" + ENDING])
        self.assertEqual((path.stat().st_mode & 0o777, self.cache.stat().st_mode & 0o777), (0o600, 0o700))
        received = [int(message[1]) for message in said[:-1]]
        self.assertEqual(received, sorted(set(received)))
        self.assertEqual(received[-1], len(PACKAGE))
        self.assertLessEqual(len(received), 100)

    def test_what_is_left_of_another_download_goes_and_nothing_else(self):
        self.cache.mkdir(mode=0o755)
        elsewhere = self.cache.parent / "precious"
        elsewhere.write_text("precious")
        (self.cache / ("kelpa_link" + ENDING)).symlink_to(elsewhere)
        (self.cache / ("kelpa_folder" + ENDING)).mkdir()
        foreign = ["kelpa_folder" + ENDING, "kelpa_link" + ENDING, ".hidden", "kelpa_notes.txt", "letter" + ENDING]
        for name in ("unverified", "kelpa_1" + ENDING, *foreign[2:]):
            (self.cache / name).write_text("old")
        self.assertEqual(self.download().outcome()[0], "ready")
        self.assertEqual(self.left(), sorted(["kelpa_2" + ENDING, *foreign]))
        self.assertEqual(elsewhere.read_text(), "precious")
        self.assertEqual(self.cache.stat().st_mode & 0o777, 0o700)

    def test_a_link_leads_nowhere(self):
        """Neither the folder nor the one around it, which are the program's own, nor the file."""
        def refused(keeps):
            message = self.download().outcome()
            self.assertEqual(message[:2], ["failed", "disk"], message)
            self.assertEqual((keeps.read_text(), keeps.parent.stat().st_mode & 0o777), ("precious", 0o755))
        photos = self.cache.parent / "photos" / "update"
        photos.mkdir(parents=True)
        for name in ("photo", "unverified", "kelpa_1" + ENDING):
            (photos / name).write_text("precious")
        for folder in (photos, photos.parent):
            folder.chmod(0o755)
        self.cache.symlink_to(photos)
        refused(photos / ("kelpa_1" + ENDING))
        self.cache.unlink()
        own = self.cache.parent / "own"
        own.symlink_to(photos.parent)
        self.cache = own / "update"
        refused(photos / "unverified")
        self.assertEqual(len(self.left()), 3)
        self.cache = photos.parent / "real"
        self.cache.mkdir(mode=0o700)
        (self.cache / "unverified").symlink_to(photos / "photo")
        refused(photos / "photo")

    def test_a_name_that_is_taken_is_not_taken_away(self):
        (self.cache / ("kelpa_2" + ENDING)).mkdir(parents=True)
        message = self.download().outcome()
        self.assertEqual(message[:2], ["failed", "disk"], message)
        self.assertEqual(self.left(), ["kelpa_2" + ENDING])

    def test_what_nobody_or_somebody_else_signed_is_thrown_away(self):
        other = Maker(self.folder)
        self.refused("signature", self.download(key=other.key).outcome())
        self.refused("signature", self.download(self.release(signature=other.sign(PACKAGE))).outcome())
        self.refused("signature", self.download(self.release(signature="AAAA")).outcome())
        self.refused("signature", self.download(key="nonsense").outcome())
        self.refused("signature", self.check(item("2", self.package_url, len(PACKAGE))))

    def test_a_tampered_package_is_thrown_away(self):
        for tampered in (PACKAGE[:-1] + b"x", b"x" + PACKAGE[1:]):
            self.server.paths["/kelpa" + ENDING] = tampered
            self.refused("signature", self.download().outcome())

    def test_an_old_package_that_is_passed_off_as_a_new_one_is_thrown_away(self):
        for version, outcome in (("0.0.9-1", "older"), ("3:0.0.9", "older"), ("0.1.0~rc1", "older"), ("0.1.0-1", None),
                                 ("0.2.0", None)):
            package = debian_package(version)
            self.server.paths["/kelpa" + ENDING] = package
            release = self.release("9", signature=self.maker.sign(package), length=len(package))
            if outcome:
                self.refused(outcome, self.download(release).outcome())
            else:
                self.assertEqual(self.download(release).outcome()[0], "ready", version)
                shutil.rmtree(self.cache)

    def test_a_package_whose_version_cannot_be_told_is_thrown_away(self):
        self.refused("unversioned", self.download(PATH="/nonexistent").outcome())
        reader = self.cache.parent / "dpkg-deb"
        reader.write_text("#!/bin/sh\necho 9\nkill -9 $$\n")
        reader.chmod(0o755)
        self.refused("unversioned", self.download(PATH=f"{reader.parent}:{os.environ['PATH']}").outcome())
        for content in (b"signed, but no package", PACKAGE[:200]):
            self.server.paths["/kelpa" + ENDING] = content
            release = self.release(signature=self.maker.sign(content), length=len(content))
            self.refused("unversioned", self.download(release).outcome())

    def test_a_package_of_another_length_is_thrown_away(self):
        for length in (len(PACKAGE) - 1, len(PACKAGE) + 1, 1):
            self.refused("length", self.download(self.release(length=length)).outcome())
        for length in (0, -5, 1 << 40, "many"):
            self.refused("malformed", self.check(self.release(length=length)))

    def test_an_endless_package_takes_no_more_than_was_announced(self):
        self.server.paths["/kelpa" + ENDING] = stream(itertools.repeat(PACKAGE))
        helper = self.download(self.release(length=50_000_000))
        self.refused("length", helper.outcome())
        self.assertLess(helper.memory(), MOST_MEMORY)

    def test_a_large_package_needs_little_memory(self):
        large = debian_package("0.2.0", 30_000_000)
        self.server.paths["/kelpa" + ENDING] = large
        signature = self.maker.sign(large)
        helper = self.download(self.release(signature=signature, length=len(large)))
        self.assertEqual(helper.outcome()[0], "ready")
        # The signature is checked through the page cache, which counts as well while it is looked at.
        self.assertLess(helper.memory("RssAnon"), MOST_MEMORY)

    def test_a_package_that_stops_coming_is_given_up(self):
        self.server.paths["/kelpa" + ENDING] = stalling(PACKAGE[:1000], len(PACKAGE))
        self.refused("slow", self.download(patience=(20, 1)).outcome())
        self.server.paths["/kelpa" + ENDING] = stream([PACKAGE[:1000]], len(PACKAGE))
        self.assertEqual(self.download().outcome()[0], "failed")
        self.assertEqual(self.left(), [])

    def test_a_cancelled_download_leaves_nothing(self):
        self.server.paths["/kelpa" + ENDING] = stalling(PACKAGE[:len(PACKAGE) // 2], len(PACKAGE))
        helper = self.download()
        self.assertEqual(helper.hears()[0], "progress")
        self.assertEqual(self.left(), ["unverified"])
        self.assertEqual(helper.close(), 0)
        self.assertEqual(self.left(), [])

    def test_a_disk_that_takes_nothing_is_told(self):
        self.cache.parent.mkdir(exist_ok=True)
        self.cache.write_text("a file where the folder should be")
        message = self.download().outcome()
        self.assertEqual(message[:2], ["failed", "disk"], message)


if __name__ == "__main__":
    unittest.main()
