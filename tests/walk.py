#!/usr/bin/env python3
"""A random hand on the program without a screen: walk.py BODY [--steps N] [--seed S]

The seed is printed; with it the same walk is made again. The hands:
  program   all pages, dialogs and the tray menu, other programs' copies, restarts, what comes in while a box or the
            typing of keys is under way, settings that no dialog stores, files and a registry that can't be written.
            Rows, slots, files and menu hold the same entries, and no step loses an entry that it has no right to.
            Find hides rows: these are neither selected nor current, no deletion takes one, none gets another name
  damage    data files cut off, changed or full of noise: what was closed before the damage stands
  lines     anything at all as a request: each line has its answer
"""
import argparse
import collections
import pathlib
import random
import re
import shutil
import sys
import tempfile

from body import Body, Failure, escape, unescape

sys.path.append(str(pathlib.Path(__file__).resolve().parent / "desktop"))
import datafiles  # noqa: E402

INTERN, EXTERN, ENTRY = (r"Software\Norvane\Quillbox\user" + "\\" + key for key in ("Intern", "Extern", "CalcEntry"))
SET = f"reg.set HKCU {INTERN}"
CLIP, PAD, TODO = LISTS = "frmTray.List2", "frmTray.List1", "frmTray.List3"
ALL, BELOW = "{%s|%s|%s}" % LISTS, "{%s|%s}" % LISTS[1:]
FIND = "{frmTray.FindClip|frmTray.FindPad}"
FILES = dict(zip(("PadData.qbx", "ClipData.qbx", "ToDoData.qbx"), ("PAD", "CLIP", "TODO")))
MAXIMA = ("PermEntriesMax", "ClipEntriesMax", "ToDoEntriesMax")
MARK = "½" * 5
ANY = 1000  # any number of entries
SEEN = 999  # any number of those that find doesn't hide


class Hand:
    """What all hands need: requests, which wait and go out together, so that a step costs some 100 us."""

    last = collections.deque(maxlen=60)

    def __init__(self, body, seed, folder):
        self.body, self.random, self.folder, self.waiting = body, random.Random(seed), folder / "user", []
        shutil.rmtree(folder, ignore_errors=True)
        self.folder.mkdir(parents=True)
        self.want("anew")
        self.want("folder", str(folder))
        self.do(f"{SET} StartHelp No")
        self.do(f"reg.set HKCU {EXTERN} QuillboxVMajor 4")

    def want(self, *request):
        self.waiting.append((True, request))

    def answers(self):
        """The values that all that waits is answered with."""
        waiting, self.waiting = self.waiting, []
        values, lines = [], ["\t".join(map(escape, request)).encode() for _, request in waiting]
        for (must, request), line in zip(waiting, self.send(*lines)):
            if line[:2] != b"ok" and (must or b"mirror" in line or b"no such" in line or line[:6] != b"error\t"):
                raise Failure(f"{request} is refused: {line.decode()}")
            values.append([unescape(word) for word in line.decode().split("\t")[1:]])
        return values

    def send(self, *lines):
        self.last.extend(lines)
        return self.body.ask(*lines) if lines else []

    def ask(self, requests):
        """What plain requests are answered with, behind all that waits."""
        self.do(requests)
        return self.answers()[-len(requests.split(" ; ")):]

    def chance(self, percent):
        return self.random.random() * 100 < percent

    def one(self, *of):
        return self.random.choice(of)

    def expand(self, pattern):
        """`{a|b}` is one of them, `#3` a number below 3, `#1-3` one of these, `@` any text; blanks between words."""
        pattern = re.sub(r"{([^}]*)}", lambda match: self.one(*match[1].split("|")), pattern)
        pattern = re.sub(r"#(\d+)-(\d+)", lambda match: str(self.random.randint(int(match[1]), int(match[2]))), pattern)
        pattern = re.sub(r"#(\d+)", lambda match: str(self.random.randrange(int(match[1]))), pattern)
        return [self.text() if word == "@" else word.replace("_", " ") for word in pattern.split(" ")]

    def do(self, patterns):
        for pattern in patterns.split(" ; "):
            self.want(*self.expand(pattern))

    def hand(self, *patterns):
        """One of them, unless what it touches can't be reached now. Its last request."""
        for pattern in self.one(*patterns).split(" ; "):
            self.waiting.append((False, self.expand(pattern)))
        return self.waiting[-1][1]

    def text(self):
        if self.chance(1):
            return "x" * self.one(300, 32001)
        return self.one(f"text {self.random.randrange(40)}", "one", "two", "three", "a&b", "line\r\nmore", "größer",
                        "{SCRIPT}abc", "{script}{", "tab\tand", " ", "<r>tip", "1,5e3",
                        f"{MARK} [CLIP ENTRY FILE END] {MARK}", "日本 \U0001F600")

    def wants(self, what, is_so, *more):
        if not is_so:
            raise Failure(" ".join(map(str, (what, *more))))

    def file(self, file):
        return (self.folder / file).read_bytes() if (self.folder / file).exists() else b""

    def holds(self, file, entries):
        """Whether a data file holds entries, each all its lines."""
        return self.file(file) == datafiles.content(FILES[file], map("\r\n".join, entries))


Lists = collections.namedtuple("Lists", "names pads clips tasks marks hidden")  # hidden: clips, pads with names

# Share; how many clips, pads and tasks may go, None where an entry is put on the clipboard; what is done.
DEEDS = (
    (18, (1, 0, 0), ("clip.clear", "clip.picture", "clip.secret", "clip.lock #2", "clip.set @",
                     *3 * ("clip.set @ ; advance #600",))),
    (12, None, ("pick mnuClip{|Sub}#1-10", "pick mnuPad{|Sub}#1-10", f"dblrow {CLIP} #10", f"dblrow {PAD} #10",
                f"key {{{CLIP}|{PAD}}} Enter", "click frmTray.Command102", f"key {FIND} Enter")),
    (8, (0, 0, 0), ("find frmTray", f"type {{{CLIP}|{PAD}}} {{t|E|6}}", f"settext {FIND} {{t|ex|NAME|grosse|o_e|6}}",
                    f"key {FIND} {{Home|End|Up|Down|PageUp|PageDown|Escape}}")),
    (5, (0, 0, 0), ("spin frmTray.UpDown{1|2} {up|down}",
                    f"key {BELOW} {{Home|End|Up|Down|Left|Right|PageUp|PageDown}} ctrl")),
    (5, None, (f"key {CLIP} {{Home|End|Up|Down|Left|Right|PageUp|PageDown}} {{|ctrl}}",
               f"key {BELOW} {{Home|End|Up|Down|PageUp|PageDown}} {{|shift}}")),
    (7, (0, 0, 0), (f"select {ALL} #10", f"select {ALL} #10 #10", f"select {ALL} #10 #10 #10", f"drag {ALL}")),
    (5, (1, 0, 0), ("settext frmTray.Text0 {one|edited|a&b|}", "settext frmTray.Text0 @", "type frmTray.Text0 {a|b}",
                    "dblclick frmTray.Label7")),
    (6, (0, 0, 0), ("settext frmTray.Text3 {name|[No_Name]|}", "dblclick frmTray.Label13",
                    "settext frmTray.Text101 {|one|two|fresh_#20}", "settext frmTray.Text101 @")),
    (7, (0, 1, 0), ("click frmTray.Command101", "click frmTray.Command101", "click frmTray.Command001",
                    f"drop {PAD} {{dropped|one|two}}")),
    (2, (0, 0, ANY), ("click frmTray.Command{103|104|6|4|5}",)),  # to the tray, which may drop the tasks that are done
    (1, (0, 0, 0), (f"{{drop|dropother}} {CLIP} dropped",)),
    (2, (1, 0, ANY), ("pick mnuClear", "click frmTray.Command000")),
    (2, (SEEN, SEEN, ANY), ("answer {6|7|7|7|7} ; click frmTray.Command{003|105|3}",
                          f"answer 6 {{6|7|7|7|7}} ; key {ALL} Delete")),
    # The text that was there before, and on Yes the oldest of a full list.
    (5, (0, 0, 2), ("settext frmTray.Text1 {|True|task_#20|größer} ; click frmTray.Command2",
                    f"key {{frmTray.Text1|{TODO}}} {{Enter|Space}}", f"drop {TODO} task_#20")),
    (3, (0, 0, 0), (f"check {TODO} #10 #2",)),
    (5, None, ("type frmTray.Text7 {1|7.5|+|=|x|-|F}", "click frmTray.Label{9|10|11}", "click frmTray.Commandu#1-6",
               "click frmTray.Command{7|8|9|49|50}", "click frmTray.Command#10-41")),
    (4, None, ("settext frmTray.Text{14|16|17} {|1|59|99|x|0}", "click frmTray.Option{1|2}", "settext frmTray.Text13 @",
               "click frmMessage.Command{1|2}", "closebox frmMessage", "click frmTray.Label{5|8}",
               "clock {2001-12-31_23:59:30|2024-02-28_23:59:58}", "click frmTray.Command{1|42|43|45|46}")),
    (15, (0, 0, ANY), ("closebox frmTray", "tray.mouse {513|515|516}", "pick {mnuShow|mnuOnTop|mnuInfo|mnuStartHelp}",
                       "click {frmAbout|frmStartHelp}.Command1", "closebox {frmAbout|frmStartHelp}",
                       *6 * ("pick mnuShow ; tab frmTray.SSTab1 #5",))),
    (2, (0, 0, 0), ("reg.deny {HKCU|HKLM} #2", "keys.fail #2")),
    (2, (1, 0, 0), ("advance #3000", "advance 90000")),
    # What comes in while the next box is open, or the next keys are being sent.
    (2, None, (f"during {{box|keys}} {each}" for each in (
        "clip.set @", "advance 250", "clip.lock #2", f"select {ALL} #3", "tray.mouse 516"))),
    # What no dialog would store, and what another version may have.
    (1, (0, 0, 0), (f"{SET} {{Insert|LastSort|Minimize|AskDelKey|AlwaysOnTop|Warning}} #1-2",
                    f"{SET} {{AutoRefresh|AutoRefresh2|ClicksToShow}} #1-2",
                    f"{SET} {{ClipEntriesMax|PermEntriesMax|ToDoEntriesMax}} #3-10",
                    f"{SET} MenuEntries{{Max|SubMax|Max2|SubMax2|Len|Len2}} {{|0|2|7|-3|2.6|1E400|30}}",
                    f"{SET} {{TrayTipMode|CutURL|ROT47}} {{|0|2|7|-3|abc|0.4|1E400|30}}",
                    f"reg.bytes HKCU {INTERN} {{Insert|Minimize|MenuEntriesMax}} {{1|3|4}} {{00|3100|FFFE80|313233}}")),
)
DEEDS = [(share, may, tuple(patterns)) for share, may, patterns in DEEDS]
SETTINGS = (
    "settext frmSettings.Text{1|2|3} {5|8||101|x|-4}", "settext frmSettings.Text{4|4a|5|5a|6|7|8} {0|3|10|26|1E400|}",
    "scroll frmSettings.VScroll{1|2|3|4|4a|5|5a|6|7} -#12", "choose frmSettings.Combo1 #3",
    "click frmSettings.{Check|Option}#1-4", "click frmSettings.Check#5-8", "click frmSettings.Command4")
LOOK = " ; ".join((f"get {PAD} List", "slots PadEntries", f"get {CLIP} List", "slots ClipEntries", f"get {TODO} List",
                   f"get {TODO} Selected", "during", "boxes", "keys", "get frmTray.Timer1 Enabled",
                   *(f"writes {file}" for file in FILES),
                   *(f"reg.get HKCU {INTERN} {key}" for key in (*MAXIMA, "CutURL", "AutoRefresh")),
                   *(f"get {each} {what}" for each in (CLIP, PAD) for what in ("Shown", "Selected", "ListIndex"))))


class Program(Hand):
    SHARE = 85

    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.obstructed, self.behind = set(), {}  # files that can't be written; that may hold something else by now
        self.leftovers = False  # a lowered maximum leaves old texts in the slots behind the last row
        self.armed = self.number = 0  # requests that wait for a box or for keys; steps
        largest = self.chance(10)
        for key in MAXIMA:
            self.do(f"{SET} {key} {99 if largest else 7}")
        self.do(f"{SET} ROT47 1")
        for file, entry in zip(FILES, ("name {0}\r\nPAD {0}", "CLIP {0}", "False\r\nTODO {0}")):
            if largest:
                datafiles.write(self.folder / file, [entry.format(number) for number in range(100)])
        self.do("clip.set CLIP_0 ; start" if largest else
                "start ; pick mnuShow ; pick mnuClear ; click frmTray.Command6")
        self.before = self.look()

    def look(self):
        got = self.ask(LOOK)
        names, pads, clips, slots, tasks, marks, came, _, _, polls = got[:10]
        self.writes = dict(zip(FILES, (int(value[0]) for value in got[10:13])))
        *limits, cut, self.refresh = (value[1] if value[0] == "1" and value[1] else None for value in got[13:18])
        self.armed -= len(came)
        self.came = len(came) > 0
        self.limits = dict(zip(FILES, (int(value or "49") + 1 for value in limits)))
        self.cuts = cut not in (None, "0")
        self.wants("the poll", polls == ["1"])
        self.wants("rows", max(len(names), len(clips), len(tasks) + 1) <= 101)
        self.wants("clip rows and slots", clips == slots[:len(clips)], clips, slots)
        rest = slots[len(clips):] + pads[len(names):]
        self.wants("a slot without a row", self.leftovers or not any(rest), slots, pads)
        hidden = []
        for rows, (shown, selected, (current,)) in zip((clips, list(zip(names, pads))), (got[18:21], got[21:])):
            hidden.append([row for row, seen in zip(rows, shown) if seen == "0"])
            self.wants("a hidden row", not any(seen == "0" and mark == "1" for seen, mark in zip(shown, selected)) and
                       (current == "-1" or shown[int(current)] == "1"), shown, selected, current)
        return Lists(names, pads[:len(names)], clips, tasks, [str(mark == "1") for mark in marks], hidden)

    def step(self):
        """Does something, and says what it may cost."""
        if self.chance(10):
            self.want("answer", self.one("6", "7"))
        deeds = [*DEEDS, (3, self.change_settings, ()), (2, self.break_files, ()), (1, self.restart, ())]
        _, may, patterns = self.random.choices(deeds, [deed[0] for deed in deeds])[0]
        if not patterns:
            return may()
        self.armed += self.hand(*patterns)[0] == "during"
        # A text comes in, into a list that may be beyond its limit, and it may be cut.
        return may or ((len(self.before.clips) > self.limits["ClipData.qbx"]) + self.cuts, 0, 0)

    def change_settings(self):
        self.hand("click frmTray.Command47")
        for _ in range(self.random.randrange(5)):
            self.hand("tab frmSettings.SSTab1 #3")
            self.hand(*SETTINGS)
        if self.hand("click frmSettings.Command1", "click frmSettings.Command1", "click frmSettings.Command2",
                     "closebox frmSettings") != ["click", "frmSettings.Command1"]:
            return (0, 0, 0)
        # Lists beyond their new maximum are cut; what isn't written yet lasts until the next save.
        self.fall_behind(FILES)
        self.leftovers = True
        return (ANY, ANY, ANY)

    def fall_behind(self, files):
        for file in files:
            self.behind[file] = int(self.ask(f"writes {file}")[0][0])

    def mend(self):
        self.answers()
        for file in sorted(self.obstructed):
            shutil.rmtree(self.folder / file)
            (self.folder / (file + ".before")).rename(self.folder / file)
        self.fall_behind(sorted(self.obstructed))
        self.obstructed.clear()
        self.do("reg.deny HKCU 0 ; reg.deny HKLM 0 ; keys.fail 0 ; clip.lock 0")

    def break_files(self):
        file = self.one(*FILES)
        if self.chance(40):
            self.mend()
        elif file not in self.obstructed and (self.folder / file).exists():
            self.answers()
            (self.folder / file).rename(self.folder / (file + ".before"))
            (self.folder / file / "full").mkdir(parents=True)  # a folder that holds something can't be replaced
            self.obstructed.add(file)
        return (0, 0, 0)

    def restart(self):
        self.mend()
        if self.chance(30):
            self.do("reg.deny {HKCU|HKLM} 1")
        drops, was, self.behind, self.leftovers = self.refresh == "1", self.before, {}, False
        self.wants("the end", self.ask("{end|shutdown}") == [["0"]])
        self.want("start")
        self.before = now = self.look()
        for file, column in zip((*FILES, "PadData.qbx", "ToDoData.qbx"), ("pads", "clips", "tasks", "names", "marks")):
            expected, limit = getattr(was, column), self.limits[file]
            if len(expected) > limit:  # what a lowered maximum leaves out stands in the file until the next save
                self.behind[file] = self.writes[file]
            if column == "clips":  # the clipboard may hold another text by now
                self.wants("clips after a restart", self.lost(expected[:limit], now.clips) <= 1, now, was)
            elif column[0] in "pn" or not drops:
                self.wants(f"{column} after a restart", getattr(now, column) == expected[:limit], now, was)
        return (ANY, ANY, ANY)

    @staticmethod
    def lost(before, after):
        return len(set(before) - set(after) - {""})

    def check(self, may, armed):
        now = self.look()
        for what, number in zip(("clips", "pads", "tasks"), (may[0] + armed, *may[1:])):
            gone = self.lost(getattr(self.before, what), getattr(now, what))
            self.wants(f"lost {what}", gone <= number, gone, "of", getattr(self.before, what), "left", now)
        for rows, number, left in zip(self.before.hidden, may, (now.clips, list(zip(now.names, now.pads)))):
            gone = self.lost(rows, left)
            self.wants("lost where nobody sees it", gone <= (number != SEEN) * number + armed,
                       gone, "of", rows, "left", left)
        same = sorted(self.before.pads) == sorted(now.pads)
        self.wants("a repeat has come or gone", may[1] or same, self.before, now)
        self.before = self.check_files(now)

    def check_files(self, now):
        left = False
        for file in FILES:
            if file in self.obstructed:
                self.behind[file] = self.writes[file]
            elif file in self.behind and self.writes[file] != self.behind[file]:
                del self.behind[file]
            if file not in self.behind and not self.is_saved(file, now):
                if not left and file != "PadData.qbx":  # what is edited or marked is saved when it is left
                    self.do(f"pick mnuShow ; tab frmTray.SSTab1 4 ; focus {TODO} ; tab frmTray.SSTab1 0 ; "
                            "focus frmTray.Text0 ; focus frmTray.Command6")
                    now, left = self.look(), True
                self.wants(file, self.is_saved(file, now), now, self.file(file)[:3000])
        return now

    def is_saved(self, file, now):
        columns = {"P": (now.names, now.pads), "C": (now.clips,), "T": (now.marks, now.tasks)}[file[0]]
        return self.holds(file, zip(*columns))

    def check_top(self):
        """With the clipboard free and a tick gone the top row is what stands on it."""
        self.do("clip.lock 0 ; advance 250")
        self.check((1, 0, 0), self.armed)
        if not self.came:  # behind what the tick has read
            (text,), (field,) = self.ask("clip.get ; get frmTray.Text0 Text")
            self.wants("the top row", [text[:32000]] == [field] == (self.before.clips or [""])[:1], repr((text, field)))

    def check_menu(self):
        """Plain texts stand in the menu as they are, one item each."""
        self.hand("tray.mouse 516")
        menu, = self.ask("menu")
        self.before = self.look()
        for name, caption in zip(menu[::3], menu[1::3]):
            item = re.fullmatch(r"mnu(Clip|Pad)(\d+)", name)
            rows = dict(enumerate(self.before.clips if name[3] == "C" else self.before.names, 1))
            text = rows.get(int(item[2]), None if self.leftovers else "") if item else None
            shown = caption.partition(":  ")[2]
            if text is not None and not re.search("[\r\n\t&]", text):
                is_right = text.startswith(shown[:-3]) if shown[-3:] == "..." else text == shown
                self.wants(name, is_right and int(item[2]) <= max(len(rows), 1), repr((text, caption)))

    def make_step(self):
        self.number, armed = self.number + 1, self.armed
        self.check(self.step(), armed)
        if self.number % 20 == 9:
            self.check_menu()
        elif self.number % 20 == 19:
            self.check_top()


class Damage(Hand):
    SHARE = 8
    NOISE = (b"\r\n", b"\r", b"\n", b"\0", b"True", b"\xBD" * 5, f"{MARK} [CLIP ENTRY 1] {MARK}".encode("cp1252"),
             datafiles.UTF8, b"\xF0\x9F", b"text")

    def show(self, file):
        """The list of the file, each entry all its lines."""
        names, texts, clips, slots, tasks, marks = self.ask(
            f"get {PAD} List ; slots PadEntries ; get {CLIP} List ; slots ClipEntries ; get {TODO} List ; "
            f"get {TODO} Selected")
        self.wants("rows and slots", clips == slots[:len(clips)], clips, slots)
        marks = [str(mark == "1") for mark in marks]
        return [list(entry) for entry in zip(*{"P": (names, texts), "C": (clips,), "T": (marks, tasks)}[file[0]])]

    def make_step(self):
        file = self.one(*FILES)
        texts = ["one line", "-", "a line feed\nalone", "x" * 300, self.one("Ελληνικά 漢字 \U0001F600", "Grüße ½")]
        texts += ["", "three\r\nlines\r\n"] * (file != "ToDoData.qbx")
        self.random.shuffle(texts)
        entries = [{"PAD": [f"name {i}", text], "CLIP": [text], "TODO": [str(i % 2 == 0), text]}[FILES[file]]
                   for i, text in enumerate(texts)]
        whole = damaged = datafiles.content(FILES[file], map("\r\n".join, entries))
        how, at = self.one("whole", "cut", "cut", "change", "change", "noise"), len(whole)
        if how == "cut":
            at = self.random.randrange(len(whole))
            damaged = whole[:at]
        elif how == "change":  # behind the header, which gives the file its mark and its encoding
            at = self.random.randrange(whole.index(b"\n") + 1, len(whole))
            byte, few = bytes([self.one(0, 9, 10, 13, 32, 49, 84, 189, 233)]), self.random.randrange(40)
            damaged = whole[:at] + self.one(
                byte + whole[at + 1:], whole[at + 1 + few:], byte * (1 + few) + whole[at:],
                whole[self.random.randrange(len(whole)):][:self.random.randrange(200)] + whole[at:])
        elif how == "noise":
            at = 0
            damaged = b"".join(self.random.choices(self.NOISE, k=self.random.randrange(200)))
        for each in FILES:
            (self.folder / each).unlink(missing_ok=True)
        (self.folder / file).write_bytes(damaged)
        _, boxes = self.ask("start ; boxes")
        is_said = any("damaged" in title for title in boxes[1::3])
        self.wants("boxes", len(boxes) == 3 * is_said, boxes)
        lists = self.show(file)
        same = next((i for i, (a, b) in enumerate(zip(lists, entries)) if a != b), min(len(lists), len(entries)))
        # An entry is closed by the marker behind it. The change may stand in the last line before it.
        closed = sum(whole.find(b"\n", marker.end()) < at for marker in re.finditer(rb" ENTRY \d", whole[:at])) - 1
        is_bytes = how != "change" or whole[:3] != datafiles.UTF8  # else any byte may end the reading as UTF-8
        self.wants("entries before the damage", not is_bytes or same >= closed - 1, how, at, same, closed, damaged)
        if how == "whole" or (how == "cut" and at >= len(whole) - 2):
            self.wants("a whole file", same == len(entries) == len(lists) and not is_said, lists, damaged)
        elif how == "cut":
            self.wants("what is said", is_said == (at > 90), at, boxes, damaged)
        self.wants("the end", self.ask("end") == [["0"]])
        self.wants("saved", self.holds(file, lists), damaged)


class Lines(Hand):
    SHARE = 7
    REQUESTS = " ; ".join((
        *(pattern for *_, patterns in DEEDS for pattern in patterns), *SETTINGS, LOOK, "start ; end ; closebox frmTray",
        "running ; user {|name} ; platform #3 ; separator , ; screen 1 #999 ; version 6 1 85 x ; instance #2 ; sounds",
        "settip frmTray.Command6 @ ; tip frmTray.Label7 #99 ; move frmTray #999 0 ; reg.delete HKCU a b")).split(" ; ")
    ODD = ("", "-1", "99999999999999999999", "frmTray.", ".", "\\", "\\u", "\\ud800", "\\n", "é")
    REFUSED = (b"clip.set\t\xFF", b"clip.set\t\xED\xA0\x80", b"clip.get\t", b"", b"\t", b" clip.get", b"x" * 50_000)

    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.answers()
        for line in self.REFUSED:
            self.wants("not refused", self.send(line)[0].startswith(b"error\t"), line[:100])

    def make_step(self):
        words, others = (self.expand(self.one(*self.REQUESTS)) for _ in range(2))
        if self.chance(70):
            words[1:] = self.random.choices([*words, *others, *self.ODD], k=self.random.randrange(5))
        line = "\t".join(words).encode()
        if self.chance(20):
            at = self.random.randrange(len(line) + 1)
            line = line[:at] + self.random.randbytes(self.random.randrange(6)) + line[at:]
        elif self.chance(2):
            line = self.random.randbytes(self.random.randrange(300))
        # No year of ticks, and no files anywhere.
        line = re.sub(rb"^(advance|folder)(?=\t|$)", b"", line.replace(b"\n", b""))
        answer, running = self.send(line, b"running")
        self.wants("an answer", re.match(rb"(ok|error\t.+)(\t|$)", answer) and running in (b"ok\t0", b"ok\t1"), answer)
        if running == b"ok\t0" and self.chance(30):
            self.ask("start")


HANDS = {"program": Program, "damage": Damage, "lines": Lines}
EPISODE = 2000  # steps after which a hand begins in a world of its own


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("body")
    parser.add_argument("--steps", type=int, default=4000)
    parser.add_argument("--seed", type=int, default=random.SystemRandom().randrange(10**6))
    options = parser.parse_args()
    print(f"walk: seed {options.seed}", flush=True)
    body, done, failed = Body(options.body), collections.Counter(), 0
    with tempfile.TemporaryDirectory(prefix="quillbox-walk-") as folder:
        try:
            for episode in range(-(-options.steps // EPISODE)):
                for name, make in HANDS.items():
                    hand = make(body, f"{options.seed} {episode} {name}", pathlib.Path(folder) / "world")
                    for _ in range(min(EPISODE, options.steps - episode * EPISODE) * make.SHARE // 100):
                        hand.make_step()
                        done[name] += 1
        except Failure as failure:
            for request in Hand.last:
                print("  ", request.decode("utf-8", "replace")[:200])
            print(f"walk: {name}, step {done[name]}: {str(failure)[:3000]}")
            failed = 1
        failed = body.end() or failed
    print("walk:", ", ".join(f"{name} {count}" for name, count in done.items()), "steps")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
