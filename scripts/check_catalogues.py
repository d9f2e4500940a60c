#!/usr/bin/python3
"""Checks that every text the program shows is in every catalogue, and every catalogue is complete.

usage: check_catalogues.py [ROOT]      (default: the project this script belongs to)

It fails when
- a source, the desktop entry, the metainfo file or the macOS bundle looks up a text that is not in the template, or a
  source one that cannot be told: a text that reaches localized() by a detour is marked where it is written,
  translatable("...");
- QML or a face's C++ holds a text of its own, instead of showing what the core gives it;
- the template has a text that nothing looks up;
- a catalogue misses an entry of the template, has one of its own or one that is out of use;
- a translation is empty, marked as doubtful, or has other placeholders than the English text;
- a catalogue names another language than its file does, or its comments are not the template's.
"""
import re
import sys
import xml.etree.ElementTree as xml
from pathlib import Path

CODE = ("base", "logging", "prefs", "history", "panes", "timer", "water", "ui", "app", "platform")
DEFINITION = ("base/Text.h", "base/Text.cpp")     # where the operation itself is, with no text
LITERAL = r'"(?:[^"\\\n]|\\.)*"'
ADJACENT = re.compile(rf"{LITERAL}(?:\s*{LITERAL})*")
COMMENT_OR_LITERAL = re.compile(rf"//[^\n]*|/\*.*?\*/|({LITERAL})", re.S)
LOOK_UP = re.compile(r"\blocalized\(")
MARKED = re.compile(rf"\btranslatable\(\s*({LITERAL}(?:\s*{LITERAL})*)\s*\)")
TOOLKIT_LOOK_UP = re.compile(r"\b(?:qsTr|qsTrId|QT_TR_NOOP|tr|translate)\(\s*\"")
SHOWN_IN_QML = re.compile(rf"^\s*(?:property \w+ )?(?:text|title|tip|label|caption|placeholderText|\w+Text|Accessible\.\w+)"
                          rf"\s*:(?:[^\"\n]|\"(?:[^\"\n\w]|[\d_])*\")*?(\"[^\"\n]*[^\W\d_][^\"\n]*\")", re.M)
ESCAPE = re.compile(r"\\u[0-9a-fA-F]{4}|\\\\n|\\.")    # signs of the icon font and line ends are no text
PLACEHOLDER = re.compile(r"%(?:\d+\$)?[-+#0]*\d*(?:\.\d+)?(?:hh|ll|[hlqjzt])?[diouxXeEfgGcs@]|%%|%\d+|\{\d*\}")


def unquote(text):
    """The text that one or more adjacent quoted strings stand for."""
    joined = "".join(part[1:-1] for part in re.findall(LITERAL, text))
    return re.sub(r"\\(.)", lambda found: {"n": "\n", "t": "\t"}.get(found[1], found[1]), joined)


# Sources

def without_comments(source):
    """The source with its comments blanked out, line for line."""
    return COMMENT_OR_LITERAL.sub(lambda found: found[1] or re.sub(r"[^\n]", " ", found[0]), source)


def argument(source, start):
    """What stands between the parenthesis before `start` and the one that closes it."""
    depth, position = 1, start
    for found in re.finditer(rf"{LITERAL}|[()]", source[start:]):
        depth += {"(": 1, ")": -1}.get(found[0], 0)
        position = start + found.start()
        if depth == 0:
            break
    return source[start:position]


def line_of(source, position):
    return source.count("\n", 0, position) + 1


def sources(root, *suffixes):
    for folder in CODE:
        for path in sorted((root / folder).glob("**/*")):
            if path.suffix in suffixes and str(path.relative_to(root)) not in DEFINITION:
                yield path.relative_to(root), path.read_text(encoding="utf-8")


def looked_up(root):
    """Every key that the code looks up, with the first place that does, and what cannot be told from the code."""
    keys, unknown = {}, []
    for path, text in sources(root, ".h", ".cpp", ".mm"):
        code = without_comments(text)
        marked = MARKED.findall(code)
        for call in LOOK_UP.finditer(code):
            place = f"{path}:{line_of(code, call.start())}"
            literals = ADJACENT.findall(argument(code, call.end()))
            for literal in literals:
                keys.setdefault(unquote(literal), place)
            if not literals and not marked:
                unknown.append(f"{place}: which texts are looked up here? Mark them with translatable()")
        for literal in marked:
            keys.setdefault(unquote(literal), str(path))
    return keys, unknown


def in_packages(root):
    """Every text of the desktop entry, the metainfo file and the bundle's information, with its file."""
    for path in sorted((root / "packaging").glob("*.desktop.in")):
        for text in re.findall(r"^(?:Name|GenericName|Comment|Keywords)=(.*)$", path.read_text(encoding="utf-8"), re.M):
            yield text, path.relative_to(root)
    for path in sorted((root / "packaging").glob("*.metainfo.xml.in")):
        component = xml.parse(path).getroot()
        for where in ("name", "summary", "description//p", "description//li", "screenshots//caption"):
            for element in component.findall(where):
                yield element.text, path.relative_to(root)
    for path in sorted((root / "platform/macos/bundle").glob("*.py")):
        for information in re.findall(r"^INFO = \{\n(.*?)^\}", path.read_text(encoding="utf-8"), re.M | re.S):
            for text in re.findall(r'^ +"\w+": "(.*)",$', information, re.M):
                yield text, path.relative_to(root)


def own_texts(root):
    """Texts that a face shows without the core."""
    for path, text in sources(root, ".qml", ".h", ".cpp", ".mm"):
        code = without_comments(text)
        found = list(TOOLKIT_LOOK_UP.finditer(code))
        if path.suffix == ".qml":
            found += SHOWN_IN_QML.finditer(ESCAPE.sub(lambda sign: " " * len(sign[0]), code))
        for match in found:
            yield f"{path}:{line_of(code, match.end())}: a text of its own; the core looks texts up and gives them"


# Catalogues

class Entry:
    def __init__(self, block):
        parts = {kind: unquote(text)
                 for kind, text in re.findall(rf"^(msgid|msgstr)\s+({LITERAL}(?:\n{LITERAL})*)", block, re.M)}
        self.key, self.text = parts.get("msgid"), parts.get("msgstr", "")
        self.doubtful = bool(re.search(r"^#,.*\bfuzzy\b", block, re.M))
        self.obsolete = "\n#~" in "\n" + block
        self.comments = re.findall(r"^#\.\s*(.*)$", block, re.M)


class Catalogue:
    def __init__(self, path):
        blocks = [Entry(block) for block in re.split(r"\n\s*\n", path.read_text(encoding="utf-8"))]
        self.name, self.language = path.name, path.stem
        self.header = next((entry.text for entry in blocks if entry.key == ""), "")
        self.entries = {entry.key: entry for entry in blocks if entry.key and not entry.obsolete}
        self.obsolete = any(entry.obsolete for entry in blocks)


def placeholders(text):
    """What is filled in. Numbered ones may stand in any order."""
    found = PLACEHOLDER.findall(text)
    return sorted(found) if all("$" in each for each in found) else found


def wrong_in_catalogue(catalogue, template, english):
    if f"Language: {catalogue.language}\n" not in catalogue.header:
        yield f'its header does not say "Language: {catalogue.language}"'
    if catalogue.obsolete:
        yield "has entries that are out of use (#~)"
    for key in template.entries.keys() - catalogue.entries.keys():
        yield f'"{key}" is missing'
    for key, entry in catalogue.entries.items():
        if key not in template.entries:
            yield f'"{key}" is not in kelpa.pot'
        elif entry.doubtful or not entry.text:
            yield f'"{key}" has no translation'
        else:
            if entry.comments != template.entries[key].comments:
                yield f'the comment of "{key}" is not the template\'s; scripts/update_catalogues.sh mends that'
            if placeholders(entry.text) != (wanted := placeholders(english(key))):
                yield f'"{key}" has the placeholders {placeholders(entry.text)} instead of {wanted}'


def wrong_catalogues(root):
    folder = root / "assets/locale"
    template = Catalogue(folder / "kelpa.pot")
    catalogues = [Catalogue(path) for path in sorted(folder.glob("*.po"))]
    shown = {each.key: each.text for catalogue in catalogues if catalogue.language == "en"
             for each in catalogue.entries.values()}

    def english(key):
        # Some keys are names, and only the English catalogue has what is shown.
        return key if placeholders(key) else shown.get(key, key)

    if not catalogues:
        yield f"no catalogue in {folder}"
    for catalogue in catalogues:
        for wrong in wrong_in_catalogue(catalogue, template, english):
            yield f"{catalogue.name}: {wrong}"


def complaints(root):
    template = Catalogue(root / "assets/locale/kelpa.pot")
    used, unknown = looked_up(root)
    if not used:
        yield "no source looks up any text; this check would find nothing"
    yield from unknown
    for key, place in in_packages(root):
        used.setdefault(key, place)
    for key, place in used.items():
        if key not in template.entries:
            yield f'{place}: "{key}" is not in kelpa.pot'
    for key in template.entries.keys() - used.keys():
        yield f'kelpa.pot: nothing looks up "{key}"'
    yield from own_texts(root)
    yield from wrong_catalogues(root)


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
