#!/usr/bin/env python3
"""Checks the files that are installed beside the program: templates, help, desktop entry, metadata, icons.

Usage: check.py SOURCE_FOLDER VERSION
"""
import configparser
import html
import pathlib
import re
import sys
import xml.etree.ElementTree as xml

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "desktop"))
import datafiles  # noqa: E402

VOID = re.compile(r"<((?:area|base|br|col|hr|img|input|link|meta|source|wbr)\b[^>]*)>")
NAMED = re.compile(r"&(?!amp;|lt;|gt;)\w+;")  # characters that only HTML has a name for
faults = []


def expect(is_so, path, fault):
    if not is_so:
        faults.append(f"{path.name}: {fault}")


def check_templates(folder, version):
    lists = {}
    for name in "Pad", "Clip", "ToDo":
        path = folder / f"{name}Data.qbx"
        lists[name], content = datafiles.entries(path) or [""], path.read_bytes()
        # A file of 90 bytes or less counts as empty, and 50 entries are read by default.
        expect(all(lists[name]) and len(lists[name]) <= 50 and len(content) > 90, path, "empty, broken or too long")
        expect(f" {'.'.join(version.split('.')[:2])}, DO NOT EDIT".encode() in content, path, "of another version")
        expect(not re.search(rb"\r(?!\n)", content) and not any(datafiles.M in entry for entry in lists[name]), path,
               "a carriage return or a mark within an entry")
    pads = [entry.partition("\r\n")[::2] for entry in lists["Pad"]]
    expect(all(name and text for name, text in pads) and all(len(set(column)) == len(pads) for column in zip(*pads)),
           folder, "a Pad entry without a name or a text, or one that stands twice")
    # The first clip goes to the clipboard at a first start.
    expect(re.fullmatch(r"[^\r\n]{1,40}", lists["Clip"][0]), folder, "the first Clip entry is no short line")
    for entry in lists["ToDo"]:
        expect(re.fullmatch(r"(True|False)\r\n[^\r\n]+", entry), folder, f"bad ToDo entry {entry!r}")


def elements_of(path):
    """Of a page, which are closed in order."""
    text = NAMED.sub(lambda name: html.unescape(name[0]), VOID.sub(r"<\1/>", path.read_text("utf-8")))
    return [*xml.fromstring(text).iter()]


def check_help(folder):
    pages = {path.name: elements_of(path) for path in folder.glob("*.html")}
    ids = {name: [element.get("id") for element in page if element.get("id")] for name, page in pages.items()}
    reached = ["index.html"]  # grows as it is read
    for name in reached:
        for link in (element.get(kind) for element in pages[name] for kind in ("href", "src") if element.get(kind)):
            target, _, anchor = link.partition("#")
            target = target or name
            expect((folder / target).is_file() and (not anchor or anchor in ids[target]), folder / name,
                   f"link to {link} leads nowhere")
            if target in pages and target not in reached:
                reached.append(target)
    for name, page in pages.items():
        expect(name in reached, folder / name, "cannot be reached from index.html")
        expect(len(set(ids[name])) == len(ids[name]), folder / name, "an id stands twice")
        titles = [element.text for element in page if element.tag == "title"]
        expect(any("Quillbox" in title for title in titles), folder / name, "no title")


def check_packaging(folder, version):
    parser = configparser.ConfigParser(interpolation=None, delimiters="=")
    parser.read(folder / "quillbox.desktop", encoding="utf-8")
    entry, metadata = parser["Desktop Entry"], xml.parse(folder / "quillbox.metainfo.xml").getroot()
    told = [metadata.findtext(path) for path in ("launchable", "icon", "provides/binary")]
    expect(told == ["@QUILLBOX_APP_ID@.desktop", entry["Icon"], entry["Exec"]], folder, "desktop entry and metadata differ")
    expect(metadata.find("releases/release").get("version") == version, folder, "the newest release is another version")
    for path in folder.glob("icons/**/*.svg"):
        _, _, width, height = xml.parse(path).getroot().get("viewBox").split()
        expect(float(width) == float(height), path, "not square")
    expect((folder / "icons" / f"{entry['Icon']}.svg").is_file(), folder, "no drawing of the icon")


source, version = pathlib.Path(sys.argv[1]), sys.argv[2]
check_templates(source / "templates", version)
check_help(source / "help")
check_packaging(source / "packaging", version)
print("\n".join(faults) if faults else "all well")
sys.exit(1 if faults else 0)
