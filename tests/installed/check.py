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


def fault(path, text):
    faults.append(f"{path.name}: {text}")


def check_templates(folder, version):
    lists = {}
    for name in "Pad", "Clip", "ToDo":
        path = folder / f"{name}Data.qbx"
        lists[name], content = datafiles.entries(path) or [], path.read_bytes()
        # A file of 90 bytes or less counts as empty, and 50 entries are read by default.
        if not 1 <= len(lists[name]) <= 50 or len(content) <= 90:
            fault(path, f"no whole file, or {len(lists[name])} entries in {len(content)} bytes")
        if f" {'.'.join(version.split('.')[:2])}, DO NOT EDIT".encode() not in content:
            fault(path, "of another version")
        if re.search(rb"\r(?!\n)", content) or any(datafiles.M in entry for entry in lists[name]):
            fault(path, "a carriage return or a mark within an entry")
    if faults:
        return
    pads = [entry.partition("\r\n")[::2] for entry in lists["Pad"]]
    if not all(name and text for name, text in pads) or any(len(set(column)) != len(pads) for column in zip(*pads)):
        fault(folder, "a Pad entry without a name or a text, or one that stands twice")
    # The first clip goes to the clipboard at a first start.
    if not re.fullmatch(r"[^\r\n]{1,40}", lists["Clip"][0]):
        fault(folder, "the first Clip entry is no short line")
    for entry in lists["ToDo"]:
        if not re.fullmatch(r"(True|False)\r\n[^\r\n]+", entry):
            fault(folder, f"bad ToDo entry {entry!r}")


def page_of(path):
    """A page's elements; its elements are closed in order."""
    text = NAMED.sub(lambda name: html.unescape(name[0]), VOID.sub(r"<\1/>", path.read_text("utf-8")))
    try:
        return [*xml.fromstring(text).iter()]
    except xml.ParseError as error:
        fault(path, error)
        return []


def check_help(folder):
    pages = {path.name: page_of(path) for path in folder.glob("*.html")}
    ids = {name: [element.get("id") for element in page if element.get("id")] for name, page in pages.items()}
    reached = ["index.html"]  # grows as it is read
    for name in reached:
        for element in pages[name]:
            for link in filter(None, map(element.get, ("href", "src"))):
                target, _, anchor = link.partition("#")
                target = target or name
                if "://" in link or not (folder / target).is_file() or (anchor and anchor not in ids[target]):
                    fault(folder / name, f"link to {link} leads nowhere")
                elif target in pages and target not in reached:
                    reached.append(target)
    for name, page in pages.items():
        if name not in reached:
            fault(folder / name, "cannot be reached from index.html")
        if len(set(ids[name])) != len(ids[name]):
            fault(folder / name, "an id stands twice")
        if not any(element.tag == "title" and "Quillbox" in element.text for element in page):
            fault(folder / name, "no title")


def check_packaging(folder, version):
    entry = configparser.ConfigParser(interpolation=None, delimiters="=")
    entry.read(folder / "quillbox.desktop", encoding="utf-8")
    entry = entry["Desktop Entry"]
    metadata = xml.parse(folder / "quillbox.metainfo.xml").getroot()
    told = [metadata.findtext(path) for path in ("launchable", "icon", "provides/binary")]
    if told != ["quillbox.desktop", entry["Icon"], entry["Exec"]]:
        fault(folder, "desktop entry and metadata differ")
    if metadata.find("releases/release").get("version") != version:
        fault(folder, "the newest release in the metadata is not this version")
    for path in folder.glob("icons/**/*.svg"):
        _, _, width, height = map(float, xml.parse(path).getroot().get("viewBox").split())
        if width != height:
            fault(path, "not square")
    if not (folder / "icons" / f"{entry['Icon']}.svg").is_file():
        fault(folder, f"no drawing of the icon {entry['Icon']}")


source, version = pathlib.Path(sys.argv[1]), sys.argv[2]
check_templates(source / "templates", version)
check_help(source / "help")
check_packaging(source / "packaging", version)
print("\n".join(faults) if faults else "all well")
sys.exit(1 if faults else 0)
