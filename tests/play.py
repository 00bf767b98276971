#!/usr/bin/env python3
"""Plays the rules of the program on one of its bodies, quillbox-console or quillbox-window:  play.py BODY FILE...

  # comment                       a whole line; a line that ends in ; goes on in the next
  def copy text: clip.set $text ; advance 250   a short form of steps; its last parameter takes all words that are left
  def time: Text16 Text17         a short form of what is looked at; `words`, beside the file, has those of all files
  == Title                        a case, in a world of its own; [console] at the title's end: on that body alone
  copy A ; ! click Command101     steps: requests of the console, with blanks; behind ! one that must be refused
  X Y = a b                       what is seen of X and Y, with a blank between, is "a b"
  for n  text: copy $n ; Text0 = $text
    1  one                        a table: its rows one after the other, two blanks between columns, - is an empty
    -  two                        cell; `anew` instead of `for`: each in a world of its own, behind the case's steps

"Quotes" hold words with blanks; \\n \\r \\t \\\\ \\" \\u0041 are escapes; <x*300> is repeated so often. A control
without a form is the main window's. A row, or a case, fails if it checks nothing, and if nobody looked at a box.
Steps beside the requests:
  clips ABC, pads abc, tasks abc  a person's entries, from the top: a letter each, or a word each if there are several;
                                  1..9 stands for nine words; a pad's text is its name in capitals
  store CLIP A _ B                a data file: _ is a blank text; PAD name=TEXT; TODO text, or text* if marked
  write PAD bytes                 a file as it is, each character a byte; also Templates/PAD, user2/PAD, any/name
  block PAD, unblock PAD          it can't be written from now on; it stands there as before
  press 12 + 5 =                  the calculator's keys by their captions, digits one by one
  during box/keys STEP            done while the next message box is open, or the next keys are sent
  seen                            whatever is looked at "since the last look" begins here
What can be looked at:
  Text0, frmAbout.Label2          text, value or rows; with a property behind it, that; mnuOnTop: caption, or (hidden)
  frmTray                         shown, hidden or unloaded; frmTray.Left: a property
  clips, pads, tasks              a page, rows | status | what else belongs to it: [ ] around the current row, * behind
                                  a selected or marked one, _ for a blank one, name(TEXT) for a pad whose text isn't
                                  its name in capitals; then ! and the title of each box
  clip, menu (names), icon, tip, running, globalkey, and since the last look: clip.writes, keys, sounds
  boxes, said, meanwhile          code and title of each box since the last look, their texts; answers of `during`
  tip:Label7:500, drag:List2      a control's tip with the mouse there: left, width, height, alignment, text; a drag
  file:CLIP, bytes:PAD            entries as in `store`, bytes; writes:CLIP since the last look; slots:PadEntries
  reg:Insert, reg:Extern.Name, reg:HKLM\\\\Key\\\\Name        a stored text, or (none)
  len:X, count:X                  how many characters, or values, X has
"""
import collections
import pathlib
import re
import shutil
import sys
import tempfile
import time

from body import Body, Failure, escape, unescape

sys.path.append(str(pathlib.Path(__file__).resolve().parent / "desktop"))
import datafiles  # noqa: E402

QUOTED = r'"(?:[^"\\]|\\.)*"'
WORD = re.compile(rf'(?:\\.|{QUOTED}|[^\s"\\])+')
CELL = re.compile(rf'(?:\\.|{QUOTED}|[^\s"\\]|(?<=\S) (?=\S))+')
ON_CONTROLS = set("combination click dblclick focus settext type key select dblrow check spin scroll choose tab drop "
                  "dropother drag tip settip get".split())
REQUESTS = {"running", "keys", "sounds", "globalkey", "drag"}  # whose answer is what can be looked at
OF_FORMS = {"Visible", "WindowState", "Left", "Top", "Topmost", "Loaded", "Caption"}
# What a control is looked at for, if it is no caption.
SHOWN = {"List": "List", "Text": "Text", "FindClip": "Text", "FindPad": "Text", "SSTab": "Tab", "Check": "Value",
         "Option": "Value", "VScroll": "Value"}
FILES = {"PAD": "PadData.qbx", "CLIP": "ClipData.qbx", "TODO": "ToDoData.qbx"}
STORED = "Software\\Norvane\\Quillbox\\user\\"
KEYS = {caption: f"Command{number}" for number, caption in {
    7: "sin", 8: "cos", 9: "CE", **{10 + digit: str(digit) for digit in range(10)}, 20: ",", 21: "+/-", 22: "<",
    23: "+", 24: "-", 25: "x", 26: "÷", 27: "=", 28: "tan", 29: "asin", 30: "Sqrt", 31: "Pi", 32: "%", 33: "x^2",
    34: "x^y", 35: "M", 36: "e^x", 37: "ln", 38: "MR", 39: "MC", 40: "1/x", 41: "acos", 44: "atan", 49: "copy",
    50: "paste", "u1": "cm>in", "u2": "in>cm", "u3": "g>oz", "u4": "oz>g", "u5": "kg>lb", "u6": "lb>kg"}.items()}
# What a person does for an entry, {0}, of which {1} is in capitals.
ENTRIES = {"clips": ("clip.set {0}", "advance 250"), "tasks": ("settext Text1 {0}", "click Command2"),
           "pads": ("settext Text3 {0}", "settext Text101 {1}", "click Command101")}

# A case's lines, each with its number: steps, or a table of a kind, `for` or `anew`, and its rows.
Item = collections.namedtuple("Item", "number kind columns template rows")


def unquote(word):
    """A word as it goes to the body: without quotes, but with its escapes."""
    word = re.sub(rf'(\\.)|{QUOTED}', lambda part: (part[1] or part[0][1:-1]).replace('\\"', '"'), word)
    return re.sub(r"<([^<>*]+)\*(\d+)>", lambda part: part[1] * int(part[2]), word)


def steps_of(text):
    """The words of each step of a line, as they are written."""
    steps = [[]]
    for word in WORD.findall(text):
        steps[-1].append(word) if word != ";" else steps.append([])
    return filter(None, steps)


def fill(template, values):
    return re.sub(r"\$([a-z]\w*)", lambda name: values[name[1]], template)


def whole(name):
    return name if name[:3] in ("frm", "mnu") else "frmTray." + name


def qualified(words):
    on_control = words[0] in ON_CONTROLS and len(words) > 1 and "." not in words[1]
    return [words[0], whole(words[1]), *words[2:]] if on_control else words


def numbered(words):
    """Each 1..9 as nine words."""
    for word in words:
        ends = re.match(r"(\d+)\.\.(\d+)$", word)
        yield from map(str, range(int(ends[1]), int(ends[2]) + 1)) if ends else [word]


class World:
    """What a case plays in: the body, with a folder of its own; steps that no request is for; what is seen."""

    STEPS = ("clips", "pads", "tasks", "seen", "store", "write", "block", "unblock", "press")

    def __init__(self, program):
        self.program, self.body, self.number = program, None, 0
        self.scratch = pathlib.Path(tempfile.mkdtemp(prefix="quillbox-play-"))

    def begin(self):
        if not self.body or self.body.has_ended():
            self.body = Body(self.program)
        shutil.rmtree(self.scratch / str(self.number), ignore_errors=True)
        self.number += 1
        self.folder, self.counts, self.texts = self.scratch / str(self.number), {}, []
        self.folder.mkdir()
        self.do("anew")
        self.do("folder", str(self.folder))

    def answer(self, *words):
        """Whether the answer to a request of escaped words is ok, and its values."""
        line, = self.body.ask("\t".join(qualified(words)).encode())
        answer, *values = map(unescape, line.decode().split("\t"))
        if answer == "error" and values[0] == "mirror":
            raise Failure(f"{' '.join(words)}: the view differs, {values[1:]}")
        return answer == "ok", values

    def do(self, *words):
        ok, values = self.answer(*words)
        if not ok:
            raise Failure(f"{' '.join(words)}: {' '.join(values)}")
        return values

    def get(self, control, name):
        return self.do("get", control, name)

    def path(self, name):
        folder, _, file = name.rpartition("/")
        return self.folder / (folder or "user") / FILES.get(file, file)

    def step(self, name, *words):
        if name not in ENTRIES:
            return getattr(self, name)(*words)
        words = list(numbered(words))
        entries = words if len(words) != 1 else words[0]
        for entry in entries if name == "tasks" else reversed(entries):
            for request in ENTRIES[name]:
                self.do(*(word.format(entry, entry.upper()) for word in request.split()))

    def seen(self):
        for what in ("writes:PAD", "writes:CLIP", "writes:TODO", "clip.writes", "boxes", "keys", "sounds"):
            self.see(what)

    def store(self, name, *entries):
        kind, texts = name.rpartition("/")[2], [unescape("" if entry == "_" else entry) for entry in numbered(entries)]
        if kind == "PAD":
            texts = [text.replace("=", "\r\n", 1) for text in texts]
        elif kind == "TODO":
            texts = [f"{text.endswith('*')}\r\n{text.rstrip('*')}" for text in texts]
        datafiles.write(self.path(name), texts)

    def write(self, name, content):
        self.path(name).parent.mkdir(exist_ok=True)
        self.path(name).write_bytes(unescape(content).encode("latin-1"))

    def block(self, name):
        path = self.path(name)
        path.rename(path.with_suffix(".before"))
        (path / "full").mkdir(parents=True)  # a folder that holds something can't be replaced by a file

    def unblock(self, name):
        shutil.rmtree(self.path(name))
        self.path(name).with_suffix(".before").rename(self.path(name))

    def press(self, *keys):
        for key in keys:
            for each in [key] if key in KEYS else key:
                self.do("click", KEYS[each])

    def page(self, items, label, shown, *rest):
        rows, marks = self.get(items, "List"), self.get(items, "Selected")
        current, visible = self.get(items, "ListIndex"), self.get(label, "Visible")
        shown = [shown(row, text) + "*" * int(marks[row]) for row, text in enumerate(rows)]
        shown = [f"[{text}]" if [str(row)] == current else text for row, text in enumerate(shown)]
        status = self.get(label, "Caption")[0] if visible == ["1"] else "hidden"
        parts = ["".join(shown) if all(len(row) < 2 for row in rows) else " ".join(shown), status, *rest]
        line = "(hidden) " * (self.form("frmTray") == "hidden") + " | ".join(part or "-" for part in parts)
        return [line + "".join(f" ! {title}" for _, title, _ in self.boxes())]

    def clips(self):
        rows, slots, field = self.get("List2", "List"), self.do("slots", "ClipEntries"), self.get("Text0", "Text")
        if slots != rows + [""] * (101 - len(rows)) or rows and rows[:1] != field:
            raise Failure(f"rows {rows}, slots {slots[:len(rows) + 1]} and field {field} differ")
        return self.page("List2", "Label7", lambda _, text: text or "_", *self.do("clip.get"))

    def pads(self):
        slots, clip = self.do("slots", "PadEntries"), self.do("clip.get")
        (name,), (text,), (button,) = map(self.named, ("Text3", "Text101", "Command101"))
        if any(slots[int(self.get("List1", "ListCount")[0]):]):
            raise Failure("there are slots without a row")
        return self.page("List1", "Label13", lambda row, name: name + f"({slots[row]})" * (slots[row] != name.upper()),
                         f"{name}={text} {button}", *filter(None, clip))

    def tasks(self):
        return self.page("List3", "Label12", lambda _, text: text,
                         *self.named("Command2"), *self.named("Text1"))

    def form(self, name):
        if self.get(name, "Loaded") == ["0"]:
            return "unloaded"
        return "shown" if self.get(name, "Visible") == ["1"] else "hidden"

    def boxes(self):
        values = self.do("boxes")
        self.texts = values[2::3] or self.texts
        return list(zip(values[0::3], values[1::3], values[2::3]))

    def file(self, name):
        found, kind = datafiles.entries(self.path(name)), name.rpartition("/")[2]
        if found is None:
            raise Failure(f"{name} is not whole")
        pairs = [text.partition("\r\n")[::2] for text in found]
        return {"CLIP": [text or "_" for text in found], "PAD": ["=".join(pair) for pair in pairs],
                "TODO": [text + {"True": "*", "False": ""}.get(mark, f"({mark})") for mark, text in pairs]}[kind]

    def bytes(self, name):
        path = self.path(name)
        return [path.read_bytes().decode("latin-1") if path.is_file() else "(missing)"]

    def reg(self, name):
        hive, *keys = name.split("\\")
        section, _, value = name.rpartition(".")
        where = [hive, "\\".join(keys[:-1]), keys[-1]] if keys else ["HKCU", STORED + (section or "Intern"), value]
        return self.do("reg.get", *map(escape, where))[1:] or ["(none)"]

    def since(self, what, count):
        before, self.counts[what] = self.counts.get(what, 0), int(count)
        return [str(int(count) - before)]

    def named(self, what):
        """A form, a menu item or a control, or a property of it."""
        name = whole(what)
        holder, _, last = name.rpartition(".")
        if name[:3] == "mnu":
            hidden = not holder and self.get(name, "Visible") == ["0"]
            return ["(hidden)"] if hidden else self.get(holder or name, last if holder else "Caption")
        if not holder:
            return [self.form(name)]
        if "." in holder or last in OF_FORMS:
            return self.get(holder, last)
        return self.get(name, SHOWN.get(re.match("[A-Za-z]+", last)[0], "Caption"))

    def see(self, what):
        head, _, rest = what.partition(":")
        if head in REQUESTS:
            return self.do(*what.split(":"))
        plain = {"clips": self.clips, "pads": self.pads, "tasks": self.tasks, "said": lambda: self.texts,
                 "boxes": lambda: [part for box in self.boxes() for part in box[:2]],
                 "meanwhile": lambda: [line.replace("ok\t", "").replace("\t", " ") for line in self.do("during")],
                 "icon": lambda: [self.do("tray")[1] if self.do("tray")[0] == "1" else "none"],
                 "tip": lambda: self.do("tray")[2:], "menu": lambda: self.do("menu")[0::3],
                 "clip": lambda: self.do("clip.get"), "clip.writes": lambda: self.since(what, *self.do(what))}
        of = {"file": self.file, "bytes": self.bytes, "reg": self.reg, "tip": lambda _: self.do(*what.split(":")),
              "len": lambda of: [str(len("".join(self.see(of))))], "count": lambda of: [str(len(self.see(of)))],
              "writes": lambda of: self.since(what, *self.do("writes", self.path(of).name)),
              "slots": lambda of: "\0".join(self.do("slots", of)).rstrip("\0").split("\0")}
        return of[head](rest) if rest else plain[head]() if head in plain else self.named(head)


class Rules:
    """The cases of a file, played one after the other."""

    def __init__(self, path, world):
        self.path, self.world, self.defs = path, world, {}
        self.cases = self.checks = self.failures = 0
        self.read(path.with_name("words"))

    @staticmethod
    def lines(path):
        """The lines with their numbers: a comment is none, and those that belong together are one."""
        held = ""
        for number, line in enumerate(path.read_text("utf-8").splitlines(), 1):
            if line.strip() and not line.lstrip().startswith("#"):
                first, held = (first, f"{held} {line.strip()}") if held else (number, line)
                if held[0] == " " or not held.endswith(" ;"):
                    yield first, held
                    held = ""

    def read(self, path):
        """Cases as (line, title, items)."""
        cases = []
        for number, line in self.lines(path):
            word, _, rest = line.partition(" ")
            names, _, template = rest.partition(":")
            if word == "def":
                name, *parameters = names.split()
                self.defs[name] = parameters, template
            elif word == "==":
                cases.append((number, rest, []))
            elif word == "":
                cases[-1][2][-1].rows.append((number, CELL.findall(line)))
            else:
                table = (word, names.split(), template) if word in ("for", "anew") else ("steps", [], line)
                cases[-1][2].append(Item(number, *table, []))
        return cases

    def expanded(self, words):
        """A step as the steps that it stands for."""
        if words[0] not in self.defs or "=" in words and not self.defs[words[0]][0]:
            return [words]  # of what is seen, each name is expanded alone
        names, template = self.defs[words[0]]
        if len(words) < len(names) or len(words) > 1 and not names:
            raise Failure(f"{words[0]} wants {len(names)} words")
        given = words[1:len(names)] + [" ".join(words[max(len(names), 1):])]
        return [each for step in steps_of(fill(template, dict(zip(names, given)))) for each in self.expanded(step)]

    def look(self, names, wanted):
        names = [each for name in names for words in self.expanded([name]) for each in words]
        seen = " ".join(value for name in names for value in self.world.see(unescape(unquote(name))))
        wanted = unescape(" ".join(map(unquote, wanted)))
        self.checks += 1
        if seen != wanted:
            raise Failure(f'{" ".join(names)} is "{escape(seen)}", wanted "{escape(wanted)}"')

    def step(self, words):
        refused, words = words[0] == "!", words[words[0] == "!":]
        if words[0] != "press" and "=" in words:
            return self.look(words[:words.index("=")], words[words.index("=") + 1:])
        if words[0] == "during" and len(words) > 2 and not refused:
            for step in self.expanded(words[2:]):
                self.world.do(*map(unquote, words[:2] + qualified(step)))
            return None
        words = list(map(unquote, words))
        if words[0] in World.STEPS:
            return self.world.step(*words)
        ok, values = self.world.answer(*words)
        self.checks += refused
        if ok == refused:
            raise Failure(f"{' '.join(words)}: {'not refused' if ok else ' '.join(values)}")
        return None

    def run(self, number, template, values):
        """The steps of a line, up to one that fails."""
        try:
            for step in steps_of(fill(template, values)):
                for words in self.expanded(step):
                    self.step(words)
        except KeyError as name:
            raise Failure(f"{number}: there is no {name}") from None
        except (Failure, OSError, TypeError) as failure:
            raise Failure(f"{number}: {failure}") from None

    def attempt(self, number, play, *arguments):
        """Plays a case or a row, which must look at something, and at each box."""
        before, boxes = self.checks, None
        try:
            play(*arguments)
            boxes = self.world.boxes()
            if boxes or self.checks == before:
                raise Failure(f"{number}: checks nothing" if not boxes else f"{number}: nobody looked at {boxes}")
        except Failure as failure:
            self.failures += 1
            print(f"{self.path}:{failure}")
            if boxes is None and not self.world.body.has_ended():
                self.world.boxes()

    def begin(self, lines):
        self.world.begin()
        for line in lines:
            self.run(line.number, line.template, {})

    def row(self, item, number, cells, lines):
        self.cases += 1
        if len(cells) != len(item.columns):
            raise Failure(f"{number}: {len(cells)} cells in {len(item.columns)} columns")
        if item.kind == "anew":
            self.begin(lines)
        self.run(number, item.template, dict(zip(item.columns, ("" if cell == "-" else cell for cell in cells))))

    def case(self, items):
        lines, standing = [], False
        for item in items:
            if item.kind != "anew" and not standing:
                self.begin(lines)
            standing = item.kind != "anew"
            if item.kind == "steps":
                lines.append(item)
                self.run(item.number, item.template, {})
            for number, cells in item.rows:
                self.attempt(number, self.row, item, number, cells, lines)
        self.cases += not any(item.rows for item in items)

    def play(self):
        for number, title, items in self.read(self.path):
            only = re.search(r"\[(\w+)\]$", title)
            if not only or only[1] in pathlib.Path(self.world.program).name:
                self.attempt(number, self.case, items)


def main():
    began, world, played = time.monotonic(), World(sys.argv[1]), []
    try:
        for path in sys.argv[2:]:
            played.append(Rules(pathlib.Path(path), world))
            played[-1].play()
    finally:
        ended = world.body.end() if world.body else 0
        shutil.rmtree(world.scratch, ignore_errors=True)
    cases, checks, failures = (sum(getattr(each, what) for each in played) for what in ("cases", "checks", "failures"))
    print(f"{cases} cases, {checks} looks, {failures} failures, {time.monotonic() - began:.1f} s")
    sys.exit(1 if failures or ended or not cases else 0)


if __name__ == "__main__":
    main()
