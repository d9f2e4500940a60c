#!/usr/bin/env python3
"""Writes the string tables of the application from the catalogues that all platforms share.

usage: make_strings.py CATALOGUE... FOLDER

For each catalogue, FOLDER/LANGUAGE.lproj gets Localizable.strings with every text, and InfoPlist.strings with those that
the system itself shows: the program's name and what it says when the system asks for a permission. English stands behind
every language: some keys are not what is shown.
"""
import ast
import re
import sys
from pathlib import Path

STRINGS = re.compile(r'^(msgid|msgstr)\s+((?:"(?:[^"\\]|\\.)*"\s*)+)', re.M)
# How the system names a language where it differs from the locale's name with a hyphen.
LPROJ = {"zh_CN": "zh-Hans", "zh_SG": "zh-Hans", "zh_TW": "zh-Hant", "zh_HK": "zh-Hant-HK"}
# The keys of the bundle's information, and the texts that stand there.
INFO = {
    "CFBundleDisplayName": "Kelpa",
    "CFBundleName": "Kelpa",
    "NSAppleEventsUsageDescription": "Kelpa hands messages to its makers over to your mail program.",
}


class BadCatalogue(Exception):
    pass


def unquoted(literals):
    """The text of one or more adjacent quoted strings. Their escapes are those of C, which Python shares."""
    return "".join(ast.literal_eval(part) for part in re.findall(r'"(?:[^"\\]|\\.)*"', literals))


def entries(path):
    """Key to translation; those without one, or with a doubtful one, are left out."""
    found = {}
    for block in re.split(r"\n\s*\n", path.read_text(encoding="utf-8")):
        parts = {kind: unquoted(text) for kind, text in STRINGS.findall(block)}
        doubtful = re.search(r"^#,.*\bfuzzy\b", block, re.M)
        if parts.get("msgid") and parts.get("msgstr") and not doubtful:
            found[parts["msgid"]] = parts["msgstr"]
    if not found:
        raise BadCatalogue(f"{path} has no translations")
    return found


def lproj(catalogue):
    return LPROJ.get(catalogue.stem, catalogue.stem.replace("_", "-")) + ".lproj"


def quoted(text):
    escapes = {"\\": "\\\\", '"': '\\"', "\n": "\\n", "\t": "\\t", "\r": "\\r"}
    return '"' + "".join(escapes.get(character, character) for character in text) + '"'


def table(texts):
    return "".join(f"{quoted(key)} = {quoted(text)};\n" for key, text in sorted(texts.items()))


def write(catalogue, english, folder):
    texts = {**english, **entries(catalogue)}
    place = folder / lproj(catalogue)
    place.mkdir(parents=True, exist_ok=True)
    (place / "Localizable.strings").write_text(table(texts), encoding="utf-8")
    info = {key: texts.get(text, text) for key, text in INFO.items()}
    (place / "InfoPlist.strings").write_text(table(info), encoding="utf-8")


def main(arguments):
    if len(arguments) < 2:
        print(__doc__.strip(), file=sys.stderr)
        return 2
    catalogues = [Path(each) for each in arguments[:-1]]
    try:
        english = next((entries(each) for each in catalogues if each.stem == "en"), {})
        for catalogue in catalogues:
            write(catalogue, english, Path(arguments[-1]))
    except (OSError, UnicodeError, SyntaxError, BadCatalogue) as error:
        print(f"make_strings: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
