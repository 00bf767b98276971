#!/usr/bin/env python3
"""Plays the rules of the program on one of its bodies:  play.py BODY FILE... [-k WORD]

BODY is quillbox-console or quillbox-window; -k plays only the cases whose title holds WORD. The notation:

  # comment                       a whole line; a line that ends in ; goes on in the next
  use words                       the def and look lines of that file, beside this one
  def copy text: clip.set $text ; advance 250
                                  a short form; its last parameter takes all words that are left
  look time = Text16 Text17       one name for several things to look at
  == Title                        a case, in a world of its own; [console] at the title's end: on that body alone
  copy A ; key List2 Enter        steps: requests of the console, with blanks
  ! click Command101              a request that must be refused
  X Y = a b                       what is seen of X and Y, with a blank between, is "a b"
  for n  text: copy $n ; Text0 = $text
    1  one                        a table: its rows one after the other, two blanks between columns, - is an empty
    -  two                        cell; `anew` instead of `for`: each in a world of its own, behind the case's steps

"Quotes" hold words with blanks; \\n \\r \\t \\\\ \\" \\u0041 are escapes; <x*300> is repeated so often. A control without
a form is the main window's. A row, or a case without rows, fails if it checks nothing, and if nobody looked at a box.
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
  Text0, Command2.Enabled, frmAbout.Label2, frmTray.Left, mnuOnTop, mnuOnTop.Checked
                                  text, value or rows; a property; a form is shown, hidden, minimized, maximized or
                                  unloaded; a menu item is its caption, or (hidden)
  clips, pads, tasks              a page as a line, rows | status | what else belongs to it: [ ] around the current row,
                                  * behind a selected or marked one, _ for a blank one, name(TEXT) for a pad whose text
                                  isn't its name in capitals; then ! and the title of each box
  clip, menu (names), icon, tip, running, and since the last look: clip.writes, keys, sounds
  boxes, said, meanwhile          code and title of each box since the last look, their texts; answers of `during`
  tip:Label7:500, drag:List2      a control's tip with the mouse there: left, width, height, alignment, text; a drag
  file:CLIP, bytes:PAD, writes:CLIP, slots:PadEntries    entries as in `store`; bytes; writes since the last look; slots
  reg:Insert, reg:Extern.Name, reg:HKLM\\\\Key\\\\Name        a stored text, or (none)
  len:X, count:X                  how many characters, or values, X has
"""
import argparse
import os
import pathlib
import re
import select
import shutil
import subprocess
import sys
import tempfile
import time

sys.path.append(str(pathlib.Path(__file__).resolve().parent / "desktop"))
import datafiles  # noqa: E402

PATIENCE = 120  # seconds for one answer
QUOTED = r'"(?:[^"\\]|\\.)*"'
WORD = re.compile(rf'(?:\\.|{QUOTED}|[^\s"\\])+')
CELL = re.compile(rf'(?:\\.|{QUOTED}|[^\s"\\]|(?<=\S) (?=\S))+')
ON_CONTROLS = set("click dblclick focus settext type key select dblrow check spin scroll choose tab drop dropother "
                  "drag tip settip get".split())
OF_FORMS = set("Visible WindowState Left Top Topmost Loaded Caption".split())
FILES = {"PAD": "PadData.qbx", "CLIP": "ClipData.qbx", "TODO": "ToDoData.qbx"}
STORED = "Software\\Norvane\\Quillbox\\user\\"
KEYS = {caption: f"Command{number}" for number, caption in {
    7: "sin", 8: "cos", 9: "CE", **{10 + digit: str(digit) for digit in range(10)}, 20: ",", 21: "+/-", 22: "<", 23: "+",
    24: "-", 25: "x", 26: "÷", 27: "=", 28: "tan", 29: "asin", 30: "Sqrt", 31: "Pi", 32: "%", 33: "x^2", 34: "x^y",
    35: "M", 36: "e^x", 37: "ln", 38: "MR", 39: "MC", 40: "1/x", 41: "acos", 44: "atan", 49: "copy", 50: "paste",
    "u1": "cm>in", "u2": "in>cm", "u3": "g>oz", "u4": "oz>g", "u5": "kg>lb", "u6": "lb>kg"}.items()}
ESCAPES = {"\n": "n", "\r": "r", "\t": "t", "\\": "\\"}
ESCAPED = {letter: sign for sign, letter in ESCAPES.items()}


class Failure(Exception):
    pass


def escape(text):
    return re.sub(r"[\\\0-\x1f\x7f-\x9f\u2028\u2029\ud800-\udfff]",
                  lambda sign: "\\" + (ESCAPES.get(sign[0]) or f"u{ord(sign[0]):04x}"), text)


def unescape(text):
    if "\\" not in text:
        return text
    text = re.sub(r"\\(?:u([0-9a-fA-F]{4})|(.))", lambda sign: chr(int(sign[1], 16)) if sign[1] else
                  ESCAPED.get(sign[2], sign[2]), text)
    return text.encode("utf-16", "surrogatepass").decode("utf-16", "surrogatepass")


def unquote(word):
    """A word as it goes to the body: without quotes, but with its escapes."""
    if '"' in word:
        word = re.sub(rf'\\.|{QUOTED}', lambda part: part[0][1:-1].replace('\\"', '"') if part[0][0] == '"' else
                      '"' if part[0] == '\\"' else part[0], word)
    return re.sub(r"<([^<>*]+)\*(\d+)>", lambda part: part[1] * int(part[2]), word)


def steps_of(text):
    """The words of each step of a line, as they are written."""
    steps = [[]]
    for word in WORD.findall(text):
        if word == ";":
            steps.append([])
        else:
            steps[-1].append(word)
    return [step for step in steps if step]


def fill(template, values):
    missing = [name for name in re.findall(r"\$([a-z]\w*)", template) if name not in values]
    if missing:
        raise Failure(f"no column or parameter {missing}")
    return re.sub(r"\$([a-z]\w*)", lambda name: values[name[1]], template)


def qualified(words):
    """The words of a request; a control without a form is the main window's."""
    if words[0] in ON_CONTROLS and len(words) > 1 and "." not in words[1] and words[1][:3] not in ("frm", "mnu"):
        return [words[0], "frmTray." + words[1], *words[2:]]
    return words


def numbered(words):
    """Each 1..9 as nine words."""
    for word in words:
        ends = re.match(r"(\d+)\.\.(\d+)$", word)
        yield from map(str, range(int(ends[1]), int(ends[2]) + 1)) if ends else [word]


class Body:
    """A process of the body, and its world."""

    def __init__(self, program):
        self.program, self.process, self.waiting, self.worlds = program, None, b"", 0
        self.kinds = {}
        self.scratch = pathlib.Path(tempfile.mkdtemp(prefix="quillbox-play-"))

    def end(self):
        """The body ends with its input, and takes its own scratch folder along; one that hangs is killed."""
        if self.process:
            try:
                self.process.communicate(timeout=PATIENCE / 10)
            except subprocess.TimeoutExpired:
                self.process.kill()
                self.process.communicate()
        self.process, self.waiting = None, b""

    def begin(self):
        """A fresh world, with a folder of ours."""
        if not self.process:
            self.process = subprocess.Popen([self.program], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        shutil.rmtree(self.scratch / str(self.worlds), ignore_errors=True)
        self.worlds += 1
        self.folder, self.counts, self.texts = self.scratch / str(self.worlds), {}, []
        self.folder.mkdir()
        self.do("anew")
        self.do("folder", str(self.folder))

    def answer(self, *words):
        """Whether the answer to a request of escaped words is ok, and its values."""
        if not self.process:
            raise Failure("there is no body any more")
        try:
            self.process.stdin.write("\t".join(words).encode() + b"\n")
            self.process.stdin.flush()
            while b"\n" not in self.waiting:
                ready = select.select([self.process.stdout], [], [], PATIENCE)[0]
                part = os.read(self.process.stdout.fileno(), 1 << 20) if ready else b""
                if not part:
                    raise BrokenPipeError
                self.waiting += part
        except BrokenPipeError:
            self.end()
            raise Failure(f"the body has ended, or hung for {PATIENCE} s") from None
        line, _, self.waiting = self.waiting.partition(b"\n")
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
        return self.do(*qualified(["get", control, name]))

    def path(self, name):
        folder, _, file = name.rpartition("/")
        return self.folder / (folder or "user") / FILES.get(file, file)

    # Steps that no request is for.

    def seen(self):
        for what in ("writes:PAD", "writes:CLIP", "writes:TODO", "clip.writes", "boxes", "keys", "sounds"):
            self.see(what)

    def store(self, name, *entries):
        kind, texts = name.rpartition("/")[2], [unescape("" if entry == "_" else entry) for entry in numbered(entries)]
        if kind == "PAD":
            texts = [text.replace("=", "\r\n", 1) for text in texts]
        elif kind == "TODO":
            texts = [("True\r\n" if text.endswith("*") else "False\r\n") + text.rstrip("*") for text in texts]
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

    def clips(self, *texts):
        for text in reversed(texts):
            self.do("clip.set", text)
            self.do("advance", "250")

    def pads(self, *names):
        for name in reversed(names):
            self.do("settext", "frmTray.Text3", name)
            self.do("settext", "frmTray.Text101", name.upper())
            self.do("click", "frmTray.Command101")

    def tasks(self, *texts):
        for text in texts:
            self.do("settext", "frmTray.Text1", text)
            self.do("click", "frmTray.Command2")

    def press(self, *keys):
        for key in keys:
            for each in [key] if key in KEYS else key:
                self.do("click", "frmTray." + KEYS.get(each, "no such key"))

    # What is seen: values.

    def page(self, items, label, lines, shown, rest):
        rows, marks = self.get(items, "List"), self.get(items, "Selected")
        current = int(self.get(items, "ListIndex")[0])
        shown = [shown(row, text) + ("*" if marks[row] == "1" else "") for row, text in enumerate(rows)]
        shown = [f"[{text}]" if row == current else text for row, text in enumerate(shown)]
        visible = self.get(label, "Visible")
        if any(self.get(line, "Visible") != visible for line in lines):
            raise Failure(f"{' and '.join(lines)} don't come and go with {label}")
        status = self.get(label, "Caption")[0] if visible == ["1"] else "hidden"
        parts = ["".join(shown) if all(len(row) < 2 for row in rows) else " ".join(shown), status, *rest]
        line = ("(hidden) " if self.form("frmTray") == "hidden" else "") + " | ".join(part or "-" for part in parts)
        return [line + "".join(f" ! {title}" for _, title, _ in self.boxes())]

    def see_clips(self):
        rows, slots, field = self.get("List2", "List"), self.do("slots", "ClipEntries"), self.get("Text0", "Text")
        if slots != rows + [""] * (101 - len(rows)) or rows and rows[:1] != field:
            raise Failure(f"rows {rows}, slots {slots[:len(rows) + 1]} and field {field} differ")
        return self.page("List2", "Label7", ["Line4", "Line5"], lambda _, text: text or "_", self.do("clip.get"))

    def see_pads(self):
        slots, clip = self.do("slots", "PadEntries"), self.do("clip.get")
        name, text, button = self.get("Text3", "Text")[0], self.get("Text101", "Text")[0], self.get("Command101", "Caption")
        if any(slots[int(self.get("List1", "ListCount")[0]):]):
            raise Failure("there are slots without a row")
        return self.page("List1", "Label13", ["Line6", "Line7"], lambda row, name: name if slots[row] == name.upper() else
                         f"{name}({slots[row]})", [f"{name}={text} {button[0]}", *filter(None, clip)])

    def see_tasks(self):
        return self.page("List3", "Label12", ["Line11", "Line12"], lambda _, text: text,
                         self.get("Command2", "Caption") + self.get("Text1", "Text"))

    def form(self, name):
        if self.get(name, "Loaded") == ["0"]:
            return "unloaded"
        state = ("shown", "minimized", "maximized")[int(self.get(name, "WindowState")[0])]
        return state if state != "shown" or self.get(name, "Visible") == ["1"] else "hidden"

    def boxes(self):
        values = self.do("boxes")
        self.texts = values[2::3] or self.texts
        return list(zip(values[0::3], values[1::3], values[2::3]))

    def entries(self, name):
        found, kind = datafiles.entries(self.path(name)), name.rpartition("/")[2]
        if found is None:
            return ["not whole:", self.content(name)]
        pairs = [text.partition("\r\n")[::2] for text in found]
        return {"CLIP": [text or "_" for text in found], "PAD": ["=".join(pair) for pair in pairs],
                "TODO": [text + {"True": "*", "False": ""}.get(mark, f"({mark})") for mark, text in pairs]}[kind]

    def content(self, name):
        path = self.path(name)
        return path.read_bytes().decode("latin-1") if path.is_file() else "(missing)"

    def registry(self, name):
        hive, *keys = name.split("\\")
        section, _, value = name.rpartition(".")
        where = [hive, "\\".join(keys[:-1]), keys[-1]] if keys else ["HKCU", STORED + (section or "Intern"), value]
        return self.do("reg.get", *map(escape, where))[1:] or ["(none)"]

    def since(self, what, count):
        before, self.counts[what] = self.counts.get(what, 0), int(count)
        return [str(int(count) - before)]

    def default(self, control):
        """A control by the property that it is looked at for."""
        if control not in self.kinds:
            found = [name for name in ("List", "Text", "Value", "Tab", "Caption", "Enabled")
                     if (name != "List" or ".List" in control) and self.answer("get", control, name)[0]]
            if not found:
                raise Failure(f"{control}: nothing to look at")
            self.kinds[control] = found[0]
        return self.do("get", control, self.kinds[control])

    def see_named(self, what):
        *before, name = what.split(".")
        if what.startswith("mnu"):
            hidden = not before and self.get(what, "Visible") == ["0"]
            return ["(hidden)"] if hidden else self.get(before[0] if before else what, name if before else "Caption")
        if what.startswith("frm"):
            if len(before) == 1:
                return self.get(before[0], name) if name in OF_FORMS else self.default(what)
            return self.get(".".join(before), name) if before else [self.form(what)]
        return self.get(before[0], name) if before else self.default("frmTray." + what)

    def see(self, what):
        head, _, rest = what.partition(":")
        plain = {"clips": self.see_clips, "pads": self.see_pads, "tasks": self.see_tasks, "said": lambda: self.texts,
                 "boxes": lambda: [part for box in self.boxes() for part in box[:2]],
                 "meanwhile": lambda: [line.replace("ok\t", "").replace("\t", " ") for line in self.do("during")],
                 "icon": lambda: [self.do("tray")[1] if self.do("tray")[0] == "1" else "none"],
                 "tip": lambda: self.do("tray")[2:], "clip": lambda: self.do("clip.get"),
                 "menu": lambda: self.do("menu")[0::3], "running": lambda: self.do("running"),
                 "clip.writes": lambda: self.since(what, *self.do(what)),
                 "keys": lambda: self.do("keys"), "sounds": lambda: self.do("sounds")}
        of = {"len": lambda: [str(len("".join(self.see(rest))))], "count": lambda: [str(len(self.see(rest)))],
              "tip": lambda: self.do(*qualified(["tip", *rest.split(":")])),
              "drag": lambda: self.do(*qualified(["drag", rest])), "file": lambda: self.entries(rest),
              "bytes": lambda: [self.content(rest)], "reg": lambda: self.registry(rest),
              "slots": lambda: "\0".join(self.do("slots", rest)).rstrip("\0").split("\0"),
              "writes": lambda: self.since(what, *self.do("writes", self.path(rest).name))}
        return (of if rest else plain).get(head, lambda: self.see_named(what))()


class Rules:
    """The cases of a file, played one after the other."""

    def __init__(self, path, body):
        self.path, self.body, self.defs, self.looks = path, body, {}, {}
        self.cases = self.checks = self.failures = 0

    def lines(self, path):
        """The logical lines, each with the number of its first one."""
        held = ""
        for number, line in enumerate(path.read_text("utf-8").splitlines(), 1):
            if line.strip() and not line.lstrip().startswith("#"):
                first, held = (first, f"{held} {line.strip()}") if held else (number, line.rstrip())
                if held.startswith(" ") or not re.search(r" ;$|^(def|for|anew)\b[^:]*:$", held):
                    yield first, held
                    held = ""

    def read(self, path):
        """Cases as (line, title, items); an item is (line, steps) or (line, kind, columns, template, rows)."""
        cases = []
        for number, line in self.lines(path):
            definition = re.match(r"def ([\w.]+)((?: +\w+)*) *: *(.*)", line)
            look = re.match(r"look (\w+) = (.+)", line)
            table = re.match(r"(for|anew)((?: +[a-z]\w*)+) *: *(.*)", line)
            if line.startswith("use "):
                self.read(path.parent / line[4:].strip())
            elif definition:
                self.defs[definition[1]] = definition[2].split(), definition[3]
            elif look:
                self.looks[look[1]] = WORD.findall(look[2])
            elif line.startswith("== "):
                cases.append((number, line[3:], []))
            elif not cases or line.startswith(" ") and len((cases[-1][2] or [""])[-1]) != 5:
                raise Failure(f"{path}:{number}: a line that belongs to nothing")
            elif table:
                cases[-1][2].append((number, table[1], table[2].split(), table[3], []))
            elif line.startswith(" "):
                cases[-1][2][-1][4].append((number, CELL.findall(line.strip())))
            else:
                cases[-1][2].append((number, line))
        return cases

    def expanded(self, words):
        """A step as the steps that it stands for."""
        if words[0] not in self.defs:
            return [words]
        names, template = self.defs[words[0]]
        if len(words) < len(names) or len(words) > 1 and not names:
            raise Failure(f"{words[0]} wants {len(names)} words")
        given = words[1:len(names)] + [" ".join(words[max(len(names), 1):])]
        return [each for step in steps_of(fill(template, dict(zip(names, given)))) for each in self.expanded(step)]

    def look(self, names, wanted):
        names = [each for name in names for each in self.looks.get(name, [name])]
        seen = " ".join(value for name in names for value in self.body.see(unescape(unquote(name))))
        wanted = unescape(" ".join(map(unquote, wanted)))
        self.checks += 1
        if seen != wanted:
            raise Failure(f'is "{escape(seen)}", wanted "{escape(wanted)}"')

    def step(self, words):
        if words[0] == "press":
            return self.body.press(*words[1:])
        if "=" in words:
            return self.look(words[:words.index("=")], words[words.index("=") + 1:])
        if words[0] == "during":
            for step in self.expanded(words[2:]):
                self.body.do(*map(unquote, words[:2] + qualified(step)))
            return None
        refused, words = words[0] == "!", list(map(unquote, words[words[0] == "!":]))
        if words[0] in ("clips", "pads", "tasks"):
            entries = list(numbered(words[1:]))
            return getattr(self.body, words[0])(*(entries if len(entries) != 1 else entries[0]))
        if words[0] in ("seen", "store", "write", "block", "unblock"):
            return getattr(self.body, words[0])(*words[1:])
        ok, values = self.body.answer(*qualified(words))
        self.checks += refused
        if ok == refused:
            raise Failure("not refused" if ok else " ".join(values))
        return None

    def fail(self, number, failure):
        self.failures += 1
        print(f"{self.path}:{number}: {failure}")

    def run(self, number, text):
        """The steps of a line, up to one that fails. Whether none did."""
        for step in steps_of(text):
            try:
                for words in self.expanded(step):
                    self.step(words)
            except (Failure, OSError, TypeError) as failure:
                self.fail(number, f"{' '.join(step)}: {failure}")
                return False
        return True

    def close(self, number, before):
        """The end of a row, or of a case without rows."""
        if self.checks == before:
            self.fail(number, "checks nothing")
        boxes = self.body.process and self.body.boxes()
        if boxes:
            self.fail(number, f"boxes that nobody looked at: {boxes}")

    def world(self, lines):
        self.body.begin()
        return all([self.run(*line) for line in lines])

    def case(self, number, items):
        lines, standing, rows, before = [], False, 0, self.checks
        for item in items:
            table = item[4] if len(item) == 5 else []
            if len(item) == 2 or item[1] == "for":
                standing = standing or self.world(lines)
                if not standing:
                    return
            if len(item) == 2:
                lines.append(item)
                if not self.run(*item):
                    return
            for line, cells in table:
                rows, checks = rows + 1, self.checks
                values = dict(zip(item[2], ("" if cell == "-" else cell for cell in cells)))
                if len(cells) != len(item[2]):
                    self.fail(line, f"{len(cells)} cells in {len(item[2])} columns")
                elif item[1] == "for" or self.world(lines):
                    if self.run(line, fill(item[3], values)):
                        self.close(line, checks)
                    elif self.body.process:
                        self.body.boxes()
                standing = item[1] == "for"
        self.cases += rows or 1
        if not rows or standing:
            self.close(number, before)

    def play(self, word):
        for number, title, items in self.read(self.path):
            only = re.search(r"\[(\w+)\]$", title)
            if word in title and (not only or only[1] in pathlib.Path(self.body.program).name):
                try:
                    self.case(number, items)
                except Failure as failure:
                    self.fail(number, failure)


def main():
    parser = argparse.ArgumentParser(description="Plays the rules of the program on one of its bodies.")
    parser.add_argument("body")
    parser.add_argument("files", nargs="+", type=pathlib.Path)
    parser.add_argument("-k", metavar="WORD", default="", help="only the cases whose title holds it")
    options = parser.parse_args()
    began, body, played = time.monotonic(), Body(options.body), []
    try:
        for path in options.files:
            played.append(Rules(path, body))
            played[-1].play(options.k)
    except Failure as failure:
        sys.exit(str(failure))
    finally:
        body.end()
        shutil.rmtree(body.scratch, ignore_errors=True)
    cases, checks, failures = (sum(getattr(each, what) for each in played) for what in ("cases", "checks", "failures"))
    print(f"{cases} cases, {checks} looks, {failures} failures, {time.monotonic() - began:.1f} s")
    sys.exit(1 if failures or not cases else 0)


if __name__ == "__main__":
    main()
