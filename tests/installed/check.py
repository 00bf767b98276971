#!/usr/bin/env python3
"""Checks the files that are installed beside the program: templates, help, desktop entry, metadata, icons.

Usage: check.py SOURCE_FOLDER VERSION
"""
import configparser
import pathlib
import re
import sys
import xml.etree.ElementTree as xml
from html.parser import HTMLParser

MARKER = b"\xbd" * 5
VOID = {"area", "base", "br", "col", "hr", "img", "input", "link", "meta", "source", "wbr"}
faults = []


def fault(path, text):
    faults.append(f"{path.name}: {text}")


def entries(path, tag, version):
    """The entries of a data file, each a list of its lines."""
    content = path.read_bytes()
    if not content.endswith(b"\r\n"):
        fault(path, "the last line has no end")
    if re.search(rb"\r(?!\n)", content):
        fault(path, "a carriage return stands alone")
    lines = content.removesuffix(b"\r\n").split(b"\r\n")
    major_minor = ".".join(version.split(".")[:2]).encode()
    if lines[0] != b"%b [%b ENTRY FILE %b, DO NOT EDIT] %b" % (MARKER, tag, major_minor, MARKER):
        fault(path, "wrong first line")
    if lines[-1] != b"%b [%b ENTRY FILE END] %b" % (MARKER, tag, MARKER):
        fault(path, "wrong last line")
    found = []
    for line in lines[1:-1]:
        if line == b"%b [%b ENTRY %d] %b" % (MARKER, tag, len(found), MARKER):
            found.append([])
        elif MARKER in line or not found:
            fault(path, f"unexpected line {line!r}")
        else:
            found[-1].append(line.decode("cp1252"))
    # A file of 90 bytes or less counts as empty, and 50 entries are read by default.
    if len(content) <= 90 or not 1 <= len(found) <= 50:
        fault(path, f"{len(found)} entries in {len(content)} bytes")
    return found


def check_templates(folder, version):
    pad = entries(folder / "PadData.qbx", b"PAD", version)
    clip = entries(folder / "ClipData.qbx", b"CLIP", version)
    todo = entries(folder / "ToDoData.qbx", b"TODO", version)
    if any(len(entry) < 2 or not entry[0] for entry in pad):
        fault(folder, "a Pad entry without a name or a text")
    if len({entry[0] for entry in pad}) != len(pad) or len({tuple(entry[1:]) for entry in pad}) != len(pad):
        fault(folder, "a Pad entry stands twice")
    # The first clip goes to the clipboard at a first start.
    if len(clip[0]) != 1 or "\n" in clip[0][0] or not 0 < len(clip[0][0]) <= 40:
        fault(folder, "the first Clip entry is no short line")
    for entry in todo:
        if len(entry) != 2 or entry[0] not in ("True", "False") or "\n" in entry[1] or not entry[1]:
            fault(folder, f"bad ToDo entry {entry}")


class Page(HTMLParser):
    """Collects a page's links and anchors, and checks that its elements are closed in order."""

    def __init__(self, path):
        super().__init__()
        self.path, self.open, self.links, self.ids, self.title = path, [], [], set(), ""
        self.feed(path.read_text(encoding="utf-8"))
        if self.open:
            fault(path, f"not closed: {self.open}")

    def handle_starttag(self, tag, attributes):
        values = dict(attributes)
        self.links += [values[name] for name in ("href", "src") if name in values]
        if "id" in values:
            if values["id"] in self.ids:
                fault(self.path, f"id {values['id']} stands twice")
            self.ids.add(values["id"])
        if tag not in VOID:
            self.open.append(tag)

    def handle_endtag(self, tag):
        if not self.open or self.open.pop() != tag:
            fault(self.path, f"</{tag}> at line {self.getpos()[0]} closes nothing")

    def handle_data(self, data):
        if self.open and self.open[-1] == "title":
            self.title += data


def check_help(folder):
    pages = {path.name: Page(path) for path in folder.glob("*.html")}
    if "index.html" not in pages:
        fault(folder, "no index.html")
        return
    reached, waiting = set(), ["index.html"]
    while waiting:
        name = waiting.pop()
        if name in reached:
            continue
        reached.add(name)
        for link in pages[name].links:
            target, _, anchor = link.partition("#")
            target = target or name
            if "://" in link or not (folder / target).is_file():
                fault(pages[name].path, f"link to {link} leads nowhere")
            elif target in pages:
                waiting.append(target)
                if anchor and anchor not in pages[target].ids:
                    fault(pages[name].path, f"no anchor {link}")
    for name, page in pages.items():
        if name not in reached:
            fault(page.path, "cannot be reached from index.html")
        if "Quillbox" not in page.title:
            fault(page.path, "no title")


def check_packaging(folder, version):
    entry = configparser.ConfigParser(interpolation=None, delimiters="=")
    entry.optionxform = str
    entry.read(folder / "quillbox.desktop", encoding="utf-8")
    icon = entry["Desktop Entry"]["Icon"]
    metadata = xml.parse(folder / "quillbox.metainfo.xml").getroot()
    if metadata.findtext("launchable") != "quillbox.desktop" or metadata.findtext("icon") != icon:
        fault(folder, "desktop entry and metadata differ")
    if metadata.findtext("provides/binary") != entry["Desktop Entry"]["Exec"]:
        fault(folder, "program name of desktop entry and metadata differ")
    if metadata.find("releases/release").get("version") != version:
        fault(folder, "the newest release in the metadata is not this version")
    for path in folder.glob("icons/**/*.svg"):
        root = xml.parse(path).getroot()
        _, _, width, height = map(float, root.get("viewBox").split())
        if width != height:
            fault(path, "not square")
    if not (folder / "icons" / f"{icon}.svg").is_file():
        fault(folder, f"no drawing of the icon {icon}")


source, version = pathlib.Path(sys.argv[1]), sys.argv[2]
check_templates(source / "templates", version)
check_help(source / "help")
check_packaging(source / "packaging", version)
print("\n".join(faults) if faults else "all well")
sys.exit(1 if faults else 0)
