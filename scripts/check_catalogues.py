#!/usr/bin/python3
"""Checks that every text the program looks up is in every catalogue, and every catalogue is complete.

usage: check_catalogues.py [ROOT]      (default: the project this script belongs to)

It fails when a source of the core looks up a text that is not in the template, when a catalogue misses an entry of
the template or has one of its own, and when a translation is empty or marked as doubtful.
"""
import re
import sys
from pathlib import Path

CORE = ("base", "logging", "prefs", "timer", "water", "ui", "app")
LITERAL = r'"(?:[^"\\]|\\.)*"'
# A look-up of a literal: localized("...") or localized("..." "..."), also with a namespace or an object before it.
LOOK_UP = re.compile(rf"\blocalized\(\s*({LITERAL}(?:\s*{LITERAL})*)\s*[,)]")


def unquote(text):
    """The text that one or more adjacent quoted strings stand for."""
    joined = "".join(part[1:-1] for part in re.findall(LITERAL, text))
    return re.sub(r"\\(.)", lambda found: {"n": "\n", "t": "\t"}.get(found[1], found[1]), joined)


def entries(path):
    """The entries of a catalogue: key to translation. Entries marked as doubtful count as empty."""
    found, doubtful = {}, False
    strings = re.compile(rf"^(msgid|msgstr)\s+({LITERAL}(?:\n{LITERAL})*)", re.M)
    for block in re.split(r"\n\s*\n", path.read_text(encoding="utf-8")):
        doubtful = re.search(r"^#,.*\bfuzzy\b", block, re.M)
        parts = {kind: unquote(text) for kind, text in strings.findall(block)}
        if parts.get("msgid"):
            found[parts["msgid"]] = "" if doubtful else parts.get("msgstr", "")
    return found


def looked_up(root):
    """Every literal key that the core looks up, with the first file that does."""
    keys = {}
    for folder in CORE:
        for source in sorted((root / folder).glob("**/*")):
            if source.suffix in (".cpp", ".h"):
                for text in LOOK_UP.findall(source.read_text(encoding="utf-8")):
                    keys.setdefault(unquote(text), source.relative_to(root))
    return keys


def complaints(root):
    folder = root / "assets/locale"
    template = entries(folder / "kelpa.pot")
    catalogues = sorted(folder.glob("*.po"))
    used = looked_up(root)
    if not used:
        yield "no source of the core looks up any text; this check would find nothing"
    if not catalogues:
        yield f"no catalogue in {folder}"
    for key, source in used.items():
        if key not in template:
            yield f'{source}: "{key}" is not in kelpa.pot'
    for catalogue in catalogues:
        have = entries(catalogue)
        for key in template.keys() - have.keys():
            yield f'{catalogue.name}: "{key}" is missing'
        for key in have.keys() - template.keys():
            yield f'{catalogue.name}: "{key}" is not in kelpa.pot'
        for key, translation in have.items():
            if not translation:
                yield f'{catalogue.name}: "{key}" has no translation'


def main(arguments):
    if len(arguments) > 1 or (arguments and arguments[0].startswith("-")):
        print(__doc__.strip(), file=sys.stderr)
        return 2
    root = Path(arguments[0]) if arguments else Path(__file__).resolve().parent.parent
    wrong = list(complaints(root))
    for text in wrong:
        print(f"check_catalogues: {text}", file=sys.stderr)
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
