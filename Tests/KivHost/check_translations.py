#!/usr/bin/env python3
"""Checks that the translations are complete and can stand where the English texts stand.

    check_translations.py LUPDATE

Texts that the sources have and a .ts file lacks are found by lupdate, in a copy.
"""

import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree
from pathlib import Path

TREE = Path(__file__).resolve().parents[2]
LANGUAGES = ("de", "fr")
FIELDS = "TextProcessorImpl"  # the names of a report's fields, which the dialog tells apart
CONTINUE = "Continue"


def messages(path):
    """The messages of a .ts file that are in use: (context, source) to (type, translation)."""
    found = {}
    for context in ElementTree.parse(path).getroot().iter("context"):
        for message in context.iter("message"):
            translation = message.find("translation")
            key = (context.findtext("name"), message.findtext("source"))
            assert key not in found, f"{path}: {key} stands there twice"
            found[key] = (translation.get("type"), translation.text or "")
    return found


def blanks(text):
    return re.match(r"\s*", text).group(), re.search(r"\s*$", text).group()


def same_form(source, translation):
    """What code relies on: place markers, file patterns, blanks around, line breaks."""
    def form(text):
        return (sorted(re.findall(r"%\d", text)), re.findall(r"\*\.[\w*]+", text), blanks(text),
                text.count("\n"), text.count("\t"))
    return form(source) == form(translation)


def faults(language, translations):
    for (context, source), (kind, text) in translations.items():
        if kind is not None or not text.strip():
            yield f"{context}: \"{source}\" is {kind or 'empty'}"
        elif not same_form(source, text):
            yield f"{context}: \"{source}\" has another form than \"{text}\""
        elif CONTINUE in source and translations["QCoreApplication", CONTINUE][1] not in text:
            yield f"{context}: \"{text}\" does not name the button as the button does"
    names = [text for (context, _), (_, text) in translations.items() if context == FIELDS]
    for name in {name for name in names if names.count(name) > 1}:
        yield f"{FIELDS}: two fields are called \"{name}\""
    if len(names) < 22:
        yield f"{FIELDS}: has {len(names)} names"


def missing(lupdate, path):
    """Texts of the sources that the file lacks."""
    with tempfile.TemporaryDirectory() as folder:
        copy = Path(folder, path.name)
        shutil.copy(path, copy)
        subprocess.run([lupdate, "-silent", "-locations", "none", "Source", "Common/Include",
                        "-ts", copy], cwd=TREE, check=True)
        before = messages(path)
        for key in messages(copy):
            if key not in before:
                yield f"{key[0]}: \"{key[1]}\" is missing; build update-translations"


def main():
    files = {language: TREE / "Translations" / f"kiv_{language}.ts" for language in LANGUAGES}
    found = []
    for language, path in files.items():
        for fault in (*faults(language, messages(path)), *missing(sys.argv[1], path)):
            found.append(f"{path.name}: {fault}")
    only_one = messages(files["de"]).keys() ^ messages(files["fr"]).keys()
    found += [f"only one language has {key}" for key in only_one]
    print("\n".join(found))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
