#!/usr/bin/env python3
"""Checks what a desktop and a shell are told of kivhost against what the program itself says.

    check_packaging.py KIVHOST
"""

import configparser
import json
import re
import shlex
import shutil
import struct
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree
from pathlib import Path

TREE = Path(__file__).resolve().parents[2]
DESKTOP = TREE / "Desktop"
GENERAL = {"-h", "--help", "--version", "--plugins"}
OPTION = re.compile(r"(?<![\w-])-{1,2}[a-z][a-z-]*")
MIME = "{http://www.freedesktop.org/standards/shared-mime-info}"


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def verbs_of(program):
    """What the program does: each verb with the options of its own."""
    listed = output(program, "--help").split("Subcommands:\n")[1].split("\n\n")[0]
    verbs = {}
    for verb in re.findall(r"^  (\w+)", listed, re.MULTILINE):
        options = output(program, verb, "--help").split("Options:\n")[1].split("\n\n")[0]
        names = re.findall(r"^  (-\S+)", options, re.MULTILINE)
        verbs[verb] = {name for group in names for name in group.split(",")} - GENERAL
    assert len(verbs) >= 6 and all(verbs.values()), f"the help is not understood: {verbs}"
    return verbs


def check_same(what, found, expected):
    assert found == expected, (
        f"{what}: lacks {sorted(expected - found)}, has too much {sorted(found - expected)}")


def check_man_page(verbs):
    page = DESKTOP / "kivhost.1"
    text = page.read_text().replace("\\-", "-")
    sections = dict(re.findall(r"^\.SS (\w+)\n(.*?)(?=^\.S[SH])", text, re.DOTALL | re.MULTILINE))
    check_same("the man page", set(sections), set(verbs))
    for verb, section in sections.items():
        tags = re.findall(r"^\.TP\n(.*)", section, re.MULTILINE)
        check_same(f"the man page on {verb}", set(OPTION.findall("\n".join(tags))), verbs[verb])
    if shutil.which("groff"):
        run = subprocess.run(["groff", "-man", "-Tutf8", "-ww", "-z", page],
                             capture_output=True, text=True)
        assert run.returncode == 0 and not run.stderr, run.stderr


def check_manual(verbs):
    """The synopsis at the head of the manual."""
    synopsis = (TREE / "Docs" / "Kivhost.md").read_text().split("\n\n")[1]
    told = {}
    for part in re.split(r"^    kivhost ", synopsis, flags=re.MULTILINE)[1:]:
        verb = re.match(r"[a-z]*", part).group()
        told[verb] = set(OPTION.findall(part))
    told.pop("", None)  # the window
    check_same("the manual", set(told), set(verbs))
    for verb, options in verbs.items():
        short = {"-o", "--output"} if "-o" in told[verb] else set()
        check_same(f"the manual on {verb}", told[verb] | short, options)


def completions(program, lines):
    """What bash offers at the end of each line."""
    script = f"source {shlex.quote(str(DESKTOP / 'kivhost.bash'))}\n"
    for line in lines:
        # The shell of a user takes words apart at an equals sign, too.
        words = [part for word in line for part in (re.split("(=)", word) if word else [""])]
        words = [word for word in words if word or word is words[-1]]
        script += f"COMP_WORDS=(kivhost {shlex.join(words)}) COMP_CWORD={len(words)}\n"
        script += f"_kivhost {shlex.quote(program)}; (IFS=$'\\t'; echo \"${{COMPREPLY[*]}}\")\n"
    answers = output("bash", "--norc", "-c", script).splitlines()
    assert len(answers) == len(lines)
    return [{word.rstrip(" ") for word in answer.split("\t") if word} for answer in answers]


def check_bash(program, verbs):
    subprocess.run(["bash", "-n", DESKTOP / "kivhost.bash"], check=True)
    formats = json.loads(output(program, "formats", "--json"))
    settings = json.loads(output(program, "settings", "--json"))
    names = {setting["name"] for setting in settings}
    everywhere = {"-h", "--help", "--plugins"}
    cases = [([""], set(verbs)), (["export", "--set", ""], {name + "=" for name in names}),
             (["export", "--set", "unit="], {"cm", "mm", "in"}),
             (["export", "--set", "CutLabelM31=t"], {"true"}),
             (["export", "--set=unit=m"], {"mm"}),
             (["svg", "--for=e"], {"eastman"}),
             (["--plugins", "export", "info", "--c"], {"--cut"}),
             (["export", "--format", "cut_"],
              {item["tag"] for item in formats if item["tag"].startswith("cut_")}),
             (["export", "--format", "Text"], {"Text\\ File"}),
             (["info", f"{TREE}/Samples/t"], {f"{TREE}/Samples/{name}.mar"
                                              for name in ("tshirt", "trousers")})]
    cases += [([verb, "-"], options | everywhere) for verb, options in verbs.items()]
    offered = completions(program, [words for words, _ in cases])
    for (words, expected), found in zip(cases, offered):
        check_same(f"bash after {words}", found, expected)


def defined(text):
    """Options that _arguments is given, not those that they exclude, describe or complete."""
    return set(OPTION.findall(
        re.sub(r"\([^()]*\)(?=[*{'-])|\[[^\]]*\](:[^']*)?|'\d:[^']*'", "", text)))


def check_zsh(verbs):
    script = DESKTOP / "kivhost.zsh"
    text = script.read_text()
    check_same("zsh", set(re.findall(r"'(\w+):[^']*'", text.split("verbs=(")[1].split(")")[0])),
               set(verbs))
    source = defined(text.split("source=(")[1].split("verbs=(")[0])
    for labels, body in re.findall(r"^    ([\w |]+)\)\n(.*?);;", text, re.DOTALL | re.MULTILINE):
        found = defined(body) | (source if "$source" in body else set())
        for verb in labels.split(" | "):
            check_same(f"zsh on {verb}", found, verbs[verb])
    if shutil.which("zsh"):
        subprocess.run(["zsh", "-n", script], check=True)


def check_desktop_file(mime_types):
    parser = configparser.ConfigParser(interpolation=None, delimiters="=", strict=True)
    parser.optionxform = str
    path = DESKTOP / "kivhost.desktop"
    parser.read(path, encoding="utf-8")
    assert parser.sections() == ["Desktop Entry"]
    entry = parser["Desktop Entry"]
    assert entry["Type"] == "Application" and entry["Name"]
    assert entry["Exec"] == "kivhost %F" and entry["TryExec"] == "kivhost"
    assert entry["Icon"] == "kivhost", "the icon is installed by the program's name"
    for key in ("Categories", "Keywords", "MimeType"):
        assert entry[key].endswith(";"), f"{key} is a list"
    check_same("the desktop file", set(entry["MimeType"].strip(";").split(";")), mime_types)
    if shutil.which("desktop-file-validate"):
        subprocess.run(["desktop-file-validate", path], check=True)


def matches(match, data):
    """Whether the data begin as a <match> and one of those in it tell."""
    value = match.get("value").encode()
    first, last = (match.get("offset") + ":" + match.get("offset")).split(":")[:2]
    inner = match.findall(MIME + "match")
    return (value in data[int(first):int(last) + len(value)]
            and (not inner or any(matches(child, data) for child in inner)))


def check_mime_types():
    path = DESKTOP / "kivhost-mime.xml"
    types = ElementTree.parse(path).getroot().findall(MIME + "mime-type")
    magic = [match for kind in types for match in kind.findall(f"{MIME}magic/{MIME}match")]
    samples = sorted((TREE / "Samples").glob("*.mar"))
    assert samples and magic
    for sample in samples:
        assert any(matches(match, sample.read_bytes()) for match in magic), f"{sample}: no marker"
    instance = b'{"name": "shirts", "items": [], "strip_height": 40}'
    assert not any(matches(match, instance) for match in magic), "JSON of others is no marker"
    assert [glob.get("pattern") for kind in types for glob in kind.findall(MIME + "glob")] == [
        "*.mar"]
    if shutil.which("update-mime-database"):
        with tempfile.TemporaryDirectory() as directory:
            packages = Path(directory) / "packages"
            packages.mkdir()
            shutil.copy(path, packages / "kivhost.xml")
            run = subprocess.run(["update-mime-database", directory],
                                 capture_output=True, text=True)
            assert run.returncode == 0 and "kivhost.xml" not in run.stderr, run.stderr
            globs = (Path(directory) / "globs2").read_text()
            assert "application/x-kiv-marker+json:*.mar" in globs
    return {kind.get("type") for kind in types}


def check_icons():
    assert ElementTree.parse(DESKTOP / "kivhost.svg").getroot().tag.endswith("svg")
    installed = (TREE / "cmake" / "KivPackage.cmake").read_text()
    sizes = re.search(r"foreach\(size ([\d ]+)\)", installed).group(1).split()
    check_same("the icons", {path.stem for path in (DESKTOP / "icons").glob("*.png")}, set(sizes))
    for size in sizes:
        data = (DESKTOP / "icons" / f"{size}.png").read_bytes()
        assert data[:8] == b"\x89PNG\r\n\x1a\n"
        assert struct.unpack(">II", data[16:24]) == (int(size), int(size)), f"{size}.png"


def main():
    program = sys.argv[1]
    verbs = verbs_of(program)
    check_desktop_file(check_mime_types())
    check_icons()
    check_man_page(verbs)
    check_manual(verbs)
    check_bash(program, verbs)
    check_zsh(verbs)


main()
