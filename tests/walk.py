#!/usr/bin/env python3
"""A random hand on the program without a screen: walk.py BODY [--steps N] [--seed S] [--hand NAME]

BODY is quillbox-console or quillbox-window. The seed is printed; with it the same walk is made again. The hands:

  program   all pages, dialogs and the tray menu, other programs' copies, restarts, what comes in while a box or the
            typing of keys is under way, settings that no dialog stores, files and a registry that can't be written.
            After each step rows, slots, files and menu hold the same entries, and no step has lost an entry that it
            had no right to
  tasks     the ToDo page beside a plain model of its list
  calc      the calculator: what its state says of itself, and results that are numbers
  damage    data files cut off, changed or full of noise: what was closed before the damage stands
  lines     anything at all as a request: each line has its answer

The requests of a step go out together and their answers come back together, so a step costs some 100 us.
"""
import argparse
import collections
import pathlib
import random
import re
import shutil
import subprocess
import sys
import tempfile

INTERN = r"Software\Norvane\Quillbox\user\Intern"
CLIP, PAD, TODO = "frmTray.List2", "frmTray.List1", "frmTray.List3"
FILES = ("PadData.qbx", "ClipData.qbx", "ToDoData.qbx")
MAXIMA = ("PermEntriesMax", "ClipEntriesMax", "ToDoEntriesMax")
MARK = "½" * 5
ANY = 1000  # any number of entries
ESCAPES = {"\\": "\\\\", "\n": "\\n", "\r": "\\r", "\t": "\\t"}
ESCAPED = {value[1]: key for key, value in ESCAPES.items()}


class Found(Exception):
    """What should not be."""


def escape(word):
    return re.sub(r"[\\\n\r\t]", lambda sign: ESCAPES[sign[0]], word)


def unescape(word):
    if "\\" not in word:
        return word
    return re.sub(r"\\(?:u(....)|(.))", lambda sign: chr(int(sign[1], 16)) if sign[1] else ESCAPED[sign[2]], word)


def stored(kind, entries):
    """A data file; each entry is all its lines."""
    lines = [f"{MARK} [{kind} ENTRY FILE 4.31, DO NOT EDIT] {MARK}"]
    for i, entry in enumerate(entries):
        lines += [f"{MARK} [{kind} ENTRY {i}] {MARK}", *entry]
    text = "\r\n".join([*lines, f"{MARK} [{kind} ENTRY FILE END] {MARK}", ""])
    try:
        return text.encode("cp1252")
    except UnicodeEncodeError:
        return b"\xEF\xBB\xBF" + text.encode()


class Body:
    """The program's body: requests that wait, and their answers."""

    def __init__(self, path):
        self.process = subprocess.Popen([path], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.waiting, self.size = [], 0
        self.last = collections.deque(maxlen=60)

    def send(self, line):
        self.waiting.append(line)
        self.size += len(line) + 1
        assert self.size < 65_536, "more than a pipe holds while nobody reads the answers"

    def flush(self):
        lines, self.waiting, self.size = self.waiting, [], 0
        if not lines:
            return []
        try:
            self.process.stdin.write(b"\n".join(lines) + b"\n")
            self.process.stdin.flush()
        except BrokenPipeError:
            pass
        answers = []
        for line in lines:
            answer = self.process.stdout.readline()
            self.last.append((line, answer))
            if not answer.endswith(b"\n"):
                raise Found(f"the body has ended with {self.process.wait()}")
            answers.append(answer[:-1])
        return answers

    def end(self):
        self.process.stdin.close()
        self.process.stdout.close()
        return self.process.wait()


class Hand:
    """What all hands need. A request is words; `want` sends one that must be carried out, `may` one that can be
    refused, since what it touches can't be reached now. Both wait for the next `answers`."""

    def __init__(self, body, seed, folder):
        self.body, self.random, self.folder = body, random.Random(seed), folder
        self.musts = []
        self.world()

    def world(self):
        self.want("anew")
        shutil.rmtree(self.folder, ignore_errors=True)
        (self.folder / "user").mkdir(parents=True)
        self.want("folder", str(self.folder))
        self.set("StartHelp", "No")
        self.want("reg.set", "HKCU", INTERN.replace("Intern", "Extern"), "QuillboxVMajor", "4")

    def want(self, *request):
        self.send(True, request)

    def may(self, *request):
        self.send(False, request)

    def send(self, must, request):
        self.musts.append((must, request))
        self.body.send("\t".join(map(escape, request)).encode())

    def answers(self):
        musts, self.musts = self.musts, []
        values = []
        for (must, request), line in zip(musts, self.body.flush()):
            if line[:2] != b"ok" and (must or b"mirror" in line or b"no such" in line or line[:6] != b"error\t"):
                raise Found(f"{request} is refused: {line.decode()}")
            values.append([unescape(word) for word in line.decode().split("\t")[1:]])
        return values

    def ask(self, *request):
        self.want(*request)
        return self.answers()[-1]

    def set(self, key, value):
        self.want("reg.set", "HKCU", INTERN, key, value)

    def chance(self, percent):
        return self.random.random() * 100 < percent

    def below(self, count):
        return self.random.randrange(count)

    def one(self, *of):
        return self.random.choice(of)

    def expand(self, pattern):
        """`{a|b}` is one of them, `#3` a number below 3, `#1-3` one of these, `@` any text; blanks between words."""
        pattern = re.sub(r"{([^}]*)}", lambda match: self.one(*match[1].split("|")), pattern)
        pattern = re.sub(r"#(\d+)(?:-(\d+))?", lambda match: str(
            self.random.randint(int(match[1]), int(match[2])) if match[2] else self.below(int(match[1]))), pattern)
        return [self.text() if word == "@" else word.replace("_", " ") for word in pattern.split(" ")]

    def do(self, patterns):
        for pattern in patterns.split(" ; "):
            self.want(*self.expand(pattern))

    def hand(self, patterns):
        for pattern in self.one(*patterns).split(" ; "):
            self.may(*self.expand(pattern))

    def text(self):
        if self.chance(1):
            return "x" * self.one(300, 32001)
        return self.one(f"text {self.below(40)}", "one", "two", "three", "a&b", "line\r\nmore", "größer", "{SCRIPT}abc",
                        "{script}{", "tab\tand", " ", "<r>tip", "1,5e3", f"{MARK} [CLIP ENTRY FILE END] {MARK}",
                        "日本 \U0001F600")

    def wants(self, what, is_so, *more):
        if not is_so:
            raise Found(" ".join(map(str, (what, *more))))


Lists = collections.namedtuple("Lists", "names pads clips tasks marks")

# Share; how many clips, pads and tasks may go, None where an entry is put on the clipboard; what is done.
DEEDS = (
    (18, (1, 0, 0), ("clip.clear", "clip.picture", "clip.lock #2", "clip.set @", *3 * ("clip.set @ ; advance #600",))),
    (12, None, ("pick mnuClip{|Sub}#1-10", "pick mnuPad{|Sub}#1-10", f"dblrow {CLIP} #10", f"dblrow {PAD} #10",
                f"key {{{CLIP}|{PAD}}} Enter", "click frmTray.Command102")),
    (5, (0, 0, 0), ("spin frmTray.UpDown{1|2} {up|down}",
                    f"key {{{PAD}|{TODO}}} {{Home|End|Up|Down|Left|Right|PageUp|PageDown}} ctrl")),
    (5, None, (f"key {CLIP} {{Home|End|Up|Down|Left|Right|PageUp|PageDown}} {{|ctrl}}",
               f"key {{{PAD}|{TODO}}} {{Home|End|Up|Down|PageUp|PageDown}} {{|shift}}")),
    (7, (0, 0, 0), (f"select {{{CLIP}|{PAD}|{TODO}}} #10", f"select {{{CLIP}|{PAD}|{TODO}}} #10 #10",
                    f"select {{{CLIP}|{PAD}|{TODO}}} #10 #10 #10", f"drag {{{CLIP}|{PAD}|{TODO}}}")),
    (5, (1, 0, 0), ("settext frmTray.Text0 {one|edited|a&b|}", r"type frmTray.Text0 {a|b}", "dblclick frmTray.Label7",
                    "settext frmTray.Text0 @")),
    (6, (0, 0, 0), ("settext frmTray.Text3 {name|[No_Name]|}", "dblclick frmTray.Label13",
                    "settext frmTray.Text101 {|one|two|fresh_#20}", "settext frmTray.Text101 @")),
    (7, (0, 1, 0), ("click frmTray.Command101", "click frmTray.Command101", "click frmTray.Command001",
                    f"drop {PAD} {{dropped|one|two}}")),
    (2, (0, 0, ANY), ("click frmTray.Command{103|104|6}",)),  # to the tray, which may drop the tasks that are done
    (1, (0, 0, 0), (f"{{drop|dropother}} {CLIP} dropped",)),
    (2, (1, 0, ANY), ("pick mnuClear", "click frmTray.Command000")),
    (2, (ANY, ANY, ANY), ("answer {6|7|7|7|7} ; click frmTray.Command{003|105|3}",
                          f"answer 6 {{6|7|7|7|7}} ; key {{{CLIP}|{PAD}|{TODO}}} Delete")),
    # The text that was there before, and on Yes the oldest of a full list.
    (5, (0, 0, 2), ("settext frmTray.Text1 {|True|task_#20|größer} ; click frmTray.Command2",
                    f"key {{frmTray.Text1|{TODO}}} {{Enter|Space}}", f"drop {TODO} task_#20")),
    (2, (0, 0, ANY), ("click frmTray.Command{4|5}",)),
    (3, (0, 0, 0), (f"check {TODO} #10 #2",)),
    (5, None, ("type frmTray.Text7 {1|7.5|+|=|x|-|F}", "click frmTray.Label{9|10|11}", "click frmTray.Commandu#1-6",
               "click frmTray.Command{7|8|9|49|50}", "click frmTray.Command#10-41", "click frmTray.Command#10-27")),
    (4, None, ("settext frmTray.Text{14|16|17} {|1|59|99|x|0}", "click frmTray.Option{1|2}", "settext frmTray.Text13 @",
               "click frmMessage.Command{1|2}", "closebox frmMessage",
               "clock {2001-12-31_23:59:30|2024-02-28_23:59:58}", "click frmTray.Command{1|42|43|45|46}",
               "click frmTray.Label{5|8}")),
    (15, (0, 0, ANY), ("closebox frmTray", "tray.mouse {513|515|516}", "pick {mnuShow|mnuOnTop|mnuInfo|mnuStartHelp}",
                       "click {frmAbout|frmStartHelp}.Command1", "closebox {frmAbout|frmStartHelp}",
                       *6 * ("pick mnuShow ; tab frmTray.SSTab1 #5",))),
    (2, (0, 0, 0), ("reg.deny {HKCU|HKLM} #2", "keys.fail #2")),
    (2, (1, 0, 0), ("advance #3000", "advance 90000")),
    # What comes in while the next box is open, or the next keys are being sent.
    (2, None, ("during {box|keys} clip.set @", "during {box|keys} advance 250", "during {box|keys} clip.lock #2",
               f"during {{box|keys}} select {{{CLIP}|{PAD}|{TODO}}} #3", "during {box|keys} tray.mouse 516")),
    # What no dialog would store, and what another version may have.
    (1, (0, 0, 0), (f"reg.set HKCU {INTERN} {{Insert|LastSort|Minimize|AskDelKey|AlwaysOnTop|Warning}} #1-2",
                    f"reg.set HKCU {INTERN} {{AutoRefresh|AutoRefresh2|ClicksToShow}} #1-2",
                    f"reg.set HKCU {INTERN} {{ClipEntriesMax|PermEntriesMax|ToDoEntriesMax}} #3-10",
                    f"reg.set HKCU {INTERN} MenuEntries{{Max|SubMax|Max2|SubMax2|Len|Len2}} {{|0|2|7|-3|2.6|1E400|30}}",
                    f"reg.set HKCU {INTERN} {{TrayTipMode|CutURL|ROT47}} {{|0|2|7|-3|abc|0.4|1E400|30}}",
                    f"reg.bytes HKCU {INTERN} {{Insert|Minimize|MenuEntriesMax}} {{1|3|4}} {{00|3100|FFFE80|313233}}")),
)
SETTINGS = (
    "settext frmSettings.Text{1|2|3} {5|8||101|x|-4}", "settext frmSettings.Text{4|4a|5|5a|6|7|8} {0|3|10|26|1E400|}",
    "scroll frmSettings.VScroll{1|2|3|4|4a|5|5a|6|7} -#12", "choose frmSettings.Combo1 #3",
    "click frmSettings.{Check|Option}#1-4", "click frmSettings.Check#5-8", "click frmSettings.Command4")
LEAVE = (f"pick mnuShow ; tab frmTray.SSTab1 4 ; focus {TODO} ; tab frmTray.SSTab1 0 ; focus frmTray.Text0 ; "
         "focus frmTray.Command6")


class Program(Hand):
    SHARE = 50

    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.obstructed, self.behind = set(), {}  # files that can't be written; that may hold something else by now
        self.leftovers = False  # a lowered maximum leaves old texts in the slots behind the last row
        self.armed = 0  # requests that wait for a box or for keys
        self.weights = [deed[0] for deed in DEEDS] + [3, 2, 1]
        largest = self.chance(10)
        for key in MAXIMA:
            self.set(key, "99" if largest else "7")
        self.set("ROT47", "1")
        if largest:
            for kind, file, more in zip(("PAD", "CLIP", "TODO"), FILES, ("name", None, "False")):
                entries = [[f"{more} {i}" * (more == "name") or more, f"{kind} {i}"] if more else [f"{kind} {i}"]
                           for i in range(100)]
                (self.folder / "user" / file).write_bytes(stored(kind, entries))
            self.want("clip.set", "CLIP 0")
        self.want("start")
        if not largest:
            self.do("pick mnuShow ; pick mnuClear ; click frmTray.Command6")
        self.before = self.look()
        self.number, self.compared = 0, {}

    def path(self, file):
        return self.folder / "user" / file

    def look(self):
        at = len(self.musts)
        for request in (("get", PAD, "List"), ("slots", "PadEntries"), ("get", CLIP, "List"), ("slots", "ClipEntries"),
                        ("get", TODO, "List"), ("get", TODO, "Selected"), ("during",), ("boxes",), ("keys",),
                        ("get", "frmTray.Timer1", "Enabled"), *(("writes", file) for file in FILES),
                        *(("reg.get", "HKCU", INTERN, key) for key in (*MAXIMA, "CutURL", "AutoRefresh"))):
            self.want(*request)
        got = self.answers()[at:]
        names, pads, clips, slots, tasks, marks, came, _, _, polls = got[:10]
        self.writes = dict(zip(FILES, (int(value[0]) for value in got[10:13])))
        *limits, cut, self.refresh = (value[1] if value[0] == "1" and value[1] else None for value in got[13:])
        self.armed -= len(came)
        self.came = len(came) > 0
        self.limits = [int(value or "49") + 1 for value in limits]
        self.cuts = cut not in (None, "0")
        self.wants("the poll", polls == ["1"])
        for what, rows, all_slots in (("clip", clips, slots), ("pad", names, pads)):
            self.wants(f"{what} rows", len(rows) <= 101)
            self.wants(f"a {what} slot without a row", self.leftovers or not any(all_slots[len(rows):]), all_slots)
        self.wants("clip rows and slots", clips == slots[:len(clips)], clips, slots)
        self.wants("task rows", len(tasks) <= 100)
        return Lists(names, pads[:len(names)], clips, tasks, marks)

    def step(self):
        """Does something, and says what it may cost."""
        if self.chance(10):
            self.want("answer", self.one("6", "7"))
        at = self.random.choices(range(len(self.weights)), self.weights)[0]
        if at < len(DEEDS):
            if DEEDS[at][2][0].startswith("during"):
                self.armed += 1
            self.hand(DEEDS[at][2])
            # A text comes in, into a list that may be beyond its limit, and it may be cut.
            return DEEDS[at][1] or ((len(self.before.clips) > self.limits[1]) + self.cuts, 0, 0)
        return (self.change_settings, self.break_files, self.restart)[at - len(DEEDS)]()

    def change_settings(self):
        self.may("click", "frmTray.Command47")
        for _ in range(self.below(5)):
            self.may(*self.expand("tab frmSettings.SSTab1 #3"))
            self.hand(SETTINGS)
        if self.chance(60):
            self.may("click", "frmSettings.Command1")
            # Lists beyond their new maximum are cut; what isn't written yet lasts until the next save.
            self.fall_behind(FILES)
            self.leftovers = True
            return (ANY, ANY, ANY)
        self.may(*self.one(("click", "frmSettings.Command2"), ("closebox", "frmSettings")))
        return (0, 0, 0)

    def fall_behind(self, files):
        for file in files:
            self.behind[file] = int(self.ask("writes", file)[0])

    def mend(self):
        for file in sorted(self.obstructed):
            shutil.rmtree(self.path(file))
            self.path(file + ".before").rename(self.path(file))
        self.fall_behind(sorted(self.obstructed))
        self.obstructed.clear()
        self.do("reg.deny HKCU 0 ; reg.deny HKLM 0 ; keys.fail 0 ; clip.lock 0")

    def break_files(self):
        file = self.one(*FILES)
        if self.chance(40):
            self.mend()
        elif file not in self.obstructed and self.path(file).exists():
            self.answers()
            self.path(file).rename(self.path(file + ".before"))
            (self.path(file) / "full").mkdir(parents=True)  # a folder that holds something can't be replaced
            self.obstructed.add(file)
        return (0, 0, 0)

    def restart(self):
        self.mend()
        if self.chance(30):
            self.want("reg.deny", self.one("HKCU", "HKLM"), "1")
        drops = self.refresh == "1"
        self.wants("the end", self.ask(self.one("end", "shutdown")) == ["0"])
        self.want("start")
        self.leftovers = False
        expected, self.behind = self.before, {}
        self.before = now = self.look()
        limits = dict(zip(FILES, self.limits))
        for file, column in (("PadData.qbx", "names"), ("PadData.qbx", "pads"), ("ToDoData.qbx", "tasks"),
                             ("ToDoData.qbx", "marks")):
            was = getattr(expected, column)
            if len(was) > limits[file]:  # what a lowered maximum leaves out stands in the file until the next save
                self.behind[file] = self.writes[file]
            if not (file == "ToDoData.qbx" and drops):
                self.wants(f"{column} after a restart", getattr(now, column) == was[:limits[file]], now, expected)
        if len(expected.clips) > limits["ClipData.qbx"]:
            self.behind["ClipData.qbx"] = self.writes["ClipData.qbx"]
        self.wants("clips after a restart", self.lost(expected.clips[:limits["ClipData.qbx"]], now.clips) <= 1)
        return (ANY, ANY, ANY)

    @staticmethod
    def lost(before, after):
        return len(set(before) - set(after) - {""})

    def check(self, may):
        now = self.look()
        may = (may[0] + self.armed_before, *may[1:])
        for what, number in (("clips", may[0]), ("pads", may[1]), ("tasks", may[2])):
            gone = self.lost(getattr(self.before, what), getattr(now, what))
            self.wants(f"lost {what}", gone <= number, gone, "of", getattr(self.before, what), "left", now)
        if may[1] == 0:
            self.wants("a repeat has come or gone", sorted(self.before.pads) == sorted(now.pads), self.before, now)
        self.before = self.check_files(now)

    def check_files(self, now):
        left = False
        for file in FILES:
            if file in self.obstructed:
                self.behind[file] = self.writes[file]
            elif file in self.behind and self.writes[file] != self.behind[file]:
                del self.behind[file]
            if file in self.behind:
                continue
            is_right, state = self.compare(file, now)
            if not is_right and not left and file != "PadData.qbx":
                self.do(LEAVE)  # what is edited, cut or marked is saved when the field or the list is left
                now, left = self.look(), True
                is_right, state = self.compare(file, now)
            self.wants(file, is_right, now, state[1:], self.path(file).read_bytes()[:3000])
        return now

    def compare(self, file, now):
        state = (self.writes[file], *{"PadData.qbx": (now.names, now.pads), "ClipData.qbx": (now.clips,),
                                      "ToDoData.qbx": (["True" if mark == "1" else "False" for mark in now.marks],
                                                       now.tasks)}[file])
        if self.compared.get(file) != state:  # written since, or changed in memory
            if not self.path(file).exists() or self.path(file).read_bytes() != stored(
                    {"P": "PAD", "C": "CLIP", "T": "TODO"}[file[0]], list(zip(*state[1:]))):
                return False, state
            self.compared[file] = state
        return True, state

    def check_top(self):
        """With the clipboard free and a tick gone the top row is what stands on it."""
        self.do("clip.lock 0 ; advance 250")
        self.armed_before = self.armed
        self.check((1, 0, 0))
        if self.came:  # behind what the tick has read
            return
        (text,), (field,) = (self.want("clip.get"), self.want("get", "frmTray.Text0", "Text"), self.answers())[2]
        top = self.before.clips[0] if self.before.clips else ""
        self.wants("the top row", top == text[:32000] == field, repr((top, text, field)))

    def check_menu(self):
        """Plain texts stand in the menu as they are, one item each."""
        self.may("tray.mouse", "516")
        menu = self.ask("menu")
        self.before = self.look()
        for name, caption in zip(menu[::3], menu[1::3]):
            item = re.fullmatch(r"mnu(Clip|Pad)(Sub)?(\d+)", name)
            if not item:
                continue
            number, rows = int(item[3]), self.before.clips if item[1] == "Clip" else self.before.names
            shown = caption.partition(":  ")[2]
            whole = rows[number - 1] if number <= len(rows) else ""
            if item[2] or (number > len(rows) and self.leftovers) or re.search("[\r\n\t&]", whole):
                continue
            self.wants("an item without a row", number <= len(rows) or number == 1, name)
            is_cut = shown.endswith("...")
            self.wants(name, whole.startswith(shown[:-3]) if is_cut else whole == shown, repr((whole, caption)))

    def make_step(self):
        self.number += 1
        self.armed_before = self.armed
        self.check(self.step())
        if self.number % 20 == 9:
            self.check_menu()
        elif self.number % 20 == 19:
            self.check_top()


class Tasks(Hand):
    SHARE = 20

    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.tasks, self.maximum, self.boxes, self.pending = [], 49, 0, False  # pending: a mark that isn't saved yet
        self.begin()

    def begin(self):
        self.do("start ; tray.mouse 513 ; tab frmTray.SSTab1 4")
        self.index, self.pending = -1, False

    def text(self):
        return self.one("True", "False", " ", f"{MARK} [TODO ENTRY FILE END] {MARK}", f"{MARK} [TODO ENTRY 0] {MARK}",
                        "größer", *(f"task {i}" for i in range(14)))

    def put(self):
        text, drop, yes = self.text(), self.chance(20), self.chance(50)
        old = -1 if drop else self.index
        after = [task for row, task in enumerate(self.tasks) if row != old]
        same = [row for row, task in enumerate(after) if task[0] == text]
        self.index = -1
        if same:
            del after[same[-1]]
            after.append((text, False))
        elif len(after) > self.maximum:
            self.boxes += 1
            self.want("answer", "6" if yes else "7")
            after = after[1:] + [(text, False)] if yes else self.tasks
            self.index = -1 if yes or drop else old
        else:
            after.insert(old if old >= 0 else len(after), (text, False))
        self.tasks = after
        if drop:
            self.want("drop", TODO, text)
        else:
            self.want("settext", "frmTray.Text1", text)
            self.want(*self.one(("click", "frmTray.Command2"), ("key", "frmTray.Text1", "Enter")))
        self.pending = False

    def select(self):
        self.index = self.below(len(self.tasks))
        self.want("select", TODO, str(self.index))

    def toggle(self):
        self.index = self.below(len(self.tasks))
        text, mark = self.tasks[self.index]
        self.tasks[self.index] = (text, not mark)
        if self.chance(50):
            self.want("check", TODO, str(self.index), "0" if mark else "1")
        else:
            self.want("select", TODO, str(self.index))
            self.want("key", TODO, self.one("Enter", "Space"))
        self.pending = True

    def move(self):
        self.select()
        way = self.one("Up", "Left", "Down", "Right", "Home", "End", "up", "down")
        to = {"Home": 0, "End": len(self.tasks) - 1}.get(way, self.index + (-1 if way in ("Up", "Left", "up") else 1))
        to = min(max(to, 0), len(self.tasks) - 1)
        self.want(*(("spin", "frmTray.UpDown1", way) if way.islower() else ("key", TODO, way, "ctrl")))
        if to != self.index:
            self.tasks.insert(to, self.tasks.pop(self.index))
            self.index, self.pending = to, False

    def delete(self):
        key, everything, yes = self.chance(50), self.index < 0, self.chance(10)
        self.boxes += key + everything
        for answer in ["6"] * key + ["6" if yes else "7"] * everything:
            self.want("answer", answer)
        if not everything:
            del self.tasks[self.index]
            self.index = -1
        elif yes:
            self.tasks = []
        self.want(*(("key", TODO, "Delete") if key else ("click", "frmTray.Command3")))
        self.pending = bool(key and self.pending and everything and self.tasks)

    def drop_marked(self):
        self.tasks, self.index, self.pending = [task for task in self.tasks if not task[1]], -1, False

    def end_or_minimize(self):
        ends, drops = self.chance(50), self.chance(50)
        self.set("AutoRefresh" if ends else "AutoRefresh2", "1" if drops else "2")
        self.want(*((self.one("end", "shutdown"),) if ends else ("click", "frmTray.Command6")))
        if drops:
            self.drop_marked()
        self.pending = False
        self.begin() if ends else self.want("tray.mouse", "513")

    def limit(self):
        self.maximum = 2 + self.below(7)
        # The file keeps what is cut until the next save.
        self.do(f"click frmTray.Command47 ; tab frmSettings.SSTab1 1 ; settext frmSettings.Text3 {self.maximum + 1} ; "
                f"click frmSettings.Command1 ; focus {TODO} ; focus frmTray.Text1")
        del self.tasks[self.maximum + 1:]
        self.index, self.pending = -1, False

    def make_step(self):
        some = len(self.tasks) > 0
        deed = self.random.choices(
            (self.put, self.toggle, self.select, self.move, self.delete, self.refresh, self.end_or_minimize,
             self.limit), (30, 25 * some, 10 * some, 15 * some, 7, 6, 5, 2))[0]
        deed()
        for request in (("get", TODO, "List"), ("get", TODO, "Selected"), ("get", TODO, "ListIndex"), ("boxes",),
                        ("writes", FILES[2])):
            self.want(*request)
        rows, marks, index, boxes, writes = self.answers()[-5:]
        shown = [(row, mark == "1") for row, mark in zip(rows, marks)]
        self.wants("tasks", shown == self.tasks, "are", shown, "should be", self.tasks)
        self.wants("the current row", index == [str(self.index)], index, self.index)
        self.wants("questions", len(boxes) == 3 * self.boxes, boxes)
        self.boxes = 0
        if not self.pending and writes != ["0"]:
            file = (self.folder / "user" / FILES[2]).read_bytes()
            self.wants("the file", file == stored("TODO", [[str(mark), text] for text, mark in self.tasks]), file)

    def refresh(self):
        self.want("click", self.one("frmTray.Command4", "frmTray.Command5"))
        if self.body.waiting[-1].endswith(b"5"):
            self.drop_marked()
        self.index, self.pending = -1, False


class Calc(Hand):
    SHARE = 20
    # Keys whose result is a number as the calculator writes it, or one of its two messages.
    RESULTS = {f"frmTray.Command{i}" for i in (7, 8, 28, 29, 41, 44, 30, 32, 33, 36, 37, 40, 21)} | {
        f"frmTray.Commandu{i}" for i in range(1, 7)}
    NUMBER = re.compile(r"-?(?:[1-9]\d{0,14}|0(?=\.)|[1-9]\d*(?=\.))(?:\.\d*[1-9])?|0|-?[1-9](?:\.\d*[1-9])?E[+-]\d\d+"
                        r"|Error!|Sorry\.\.\. no complex numbers!")

    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.do(f"separator {self.one('.', ',')} ; start ; tray.mouse 513 ; tab frmTray.SSTab1 2")
        self.shown = "0"

    def make_step(self):
        key = ""
        choice = self.below(10)
        if choice == 0:
            self.hand(("click frmTray.Label#9-11", "clip.set {17,25|-1E-7_x}", "drop frmTray.Text7 {3E150|x|12,5}"))
        elif choice == 1:
            self.hand(("focus frmTray.Text7", "key frmTray.Text7 {Left|Home|End|Delete}"))
        elif choice < 5:
            self.may("type", "frmTray.Text7", self.one(*"0123456789.,+-*/x=\r\b abcdefABCDEF^Ω\x01"))
        else:
            key = self.one(*(f"frmTray.Command{i}" for i in (7, 8, 9, *range(10, 42), 44, 49, 50)), *self.RESULTS)
            self.may("click", key)
        done = len(self.musts)
        for name in ("Text7", "Text8", "Text9", "Text10", "Text22", "Text23"):
            self.want("get", "frmTray." + name, "Text")
        self.want("get", "frmTray.Label9", "Visible")
        self.want("get", "frmTray.Label9", "ForeColor")
        self.want("get", "frmTray.Command38", "Enabled")
        self.want("get", "frmTray.Command39", "Enabled")
        self.want("reg.get", "HKCU", INTERN.replace("Intern", "CalcEntry"), "M1")
        got = self.answers()[done:]
        shown, operator, left, entry, typed, focus, labels, color, recall, clear = (value[0] for value in got[:10])
        self.wants("an operation", operator in ("", "+", "-", "x", "/", "^"), operator)
        self.wants("an operand without an operation", operator or not left, left)
        self.wants("marks", entry in ("", "k") and typed in ("", "k") and focus in ("", "got"), entry, typed, focus)
        self.wants("the base selector", labels == ("1" if focus else "0"), labels, focus)
        self.wants("a comma", "," not in shown, shown)
        if shown == "-0":  # a hand can put it together from what is left of a number; a result never is
            self.wants("-0", re.fullmatch(r"-\d?\.?|-0\.|-.0|-0.", self.shown), self.shown)
        if not focus:
            self.wants("a display without the focus", shown and not typed and color == "blue", shown, typed, color)
        memory = got[10][1] if got[10][0] == "1" else ""
        self.wants("MR and MC", recall == clear == ("1" if memory else "0"), recall, clear, memory)
        if key in self.RESULTS:
            self.wants("no number", self.NUMBER.fullmatch(shown), shown, "of", self.shown, "by", key)
        self.shown = shown


class Damage(Hand):
    SHARE = 5
    KINDS = dict(zip(FILES, ("PAD", "CLIP", "TODO")))

    def show(self, file):
        """The list of the file, each entry all its lines."""
        if file == "ToDoData.qbx":
            self.want("get", TODO, "List")
            self.want("get", TODO, "Selected")
            rows, marks = self.answers()[-2:]
            return [["True" if mark == "1" else "False", row] for row, mark in zip(rows, marks)]
        self.want("get", PAD if file == "PadData.qbx" else CLIP, "List")
        self.want("slots", "PadEntries" if file == "PadData.qbx" else "ClipEntries")
        rows, slots = self.answers()[-2:]
        self.wants("rows and slots", file == "PadData.qbx" or rows == slots[:len(rows)], rows, slots)
        return [[row, slot] for row, slot in zip(rows, slots)] if file == "PadData.qbx" else [[row] for row in rows]

    def make_step(self):
        file = self.one(*FILES)
        texts = ["one line", "" if file != "ToDoData.qbx" else "-", "a line feed\nalone", "x" * 300,
                 self.one("Ελληνικά 漢字 \U0001F600", "Grüße ½"), *(["three\r\nlines\r\n"] * (file != "ToDoData.qbx"))]
        self.random.shuffle(texts)
        entries = [{"PAD": [f"name {i}", text], "CLIP": [text], "TODO": [str(i % 2 == 0), text]}[self.KINDS[file]]
                   for i, text in enumerate(texts)]
        whole = damaged = stored(self.KINDS[file], entries)
        how = self.one("whole", "cut", "cut", "change", "change", "noise")
        at = len(whole)
        if how == "cut":
            at = self.below(len(whole))
            damaged = whole[:at]
        elif how == "change":  # behind the header, which gives the file its mark and its encoding
            at = self.random.randrange(whole.index(b"\n") + 1, len(whole))
            damaged = whole[:at] + self.one(
                bytes([self.one(0, 9, 10, 13, 32, 49, 84, 189, 233)]) + whole[at + 1:], whole[at + 1 + self.below(40):],
                bytes([self.one(0, 9, 10, 13, 32, 49, 84, 189, 233)]) * (1 + self.below(40)) + whole[at:],
                whole[self.below(len(whole)):][:self.below(200)] + whole[at:])
        elif how == "noise":
            at = 0
            damaged = b"".join(self.random.choices(
                [b"\r\n", b"\r", b"\n", b"\0", b"True", b"\xBD" * 5, b"\xBD" * 5 + b" [CLIP ENTRY 1] " + b"\xBD" * 5,
                 b"\xEF\xBB\xBF", b"\xF0\x9F", b"text"], k=self.below(200)))
        for each in FILES:
            (self.folder / "user" / each).unlink(missing_ok=True)
        (self.folder / "user" / file).write_bytes(damaged)
        self.want("start")
        boxes = self.ask("boxes")
        is_said = any("damaged" in title for title in boxes[1::3])
        self.wants("boxes", len(boxes) == 3 * is_said, boxes)
        lists = self.show(file)
        same = next((i for i, (a, b) in enumerate(zip(lists, entries)) if a != b), min(len(lists), len(entries)))
        # An entry is closed by the marker behind it. The change may stand in the last line before it.
        closed = sum(whole.find(b"\n", marker.end()) < at for marker in re.finditer(rb" ENTRY \d", whole[:at])) - 1
        is_bytes = how != "change" or whole[:3] != b"\xEF\xBB\xBF"  # else any byte may end the reading as UTF-8
        self.wants("entries before the damage", not is_bytes or same >= closed - 1, how, at, same, closed, damaged)
        if how == "whole" or (how == "cut" and at >= len(whole) - 2):
            self.wants("a whole file", same == len(entries) == len(lists) and not is_said, lists, damaged)
        elif how == "cut":
            self.wants("what is said", is_said == (at > 90), at, boxes, damaged)
        self.wants("the end", self.ask("end") == ["0"])
        self.wants("saved", (self.folder / "user" / file).read_bytes() == stored(self.KINDS[file], lists), damaged)


class Lines(Hand):
    SHARE = 5

    VERBS = (
        "start end closebox shutdown running clip.set clip.clear clip.picture clip.lock clip.get clip.writes reg.set "
        "reg.get reg.delete reg.bytes reg.deny get slots settext type key click dblclick focus select dblrow check spin "
        "scroll choose tab drop dropother drag move tray tray.mouse menu pick answer boxes keys keys.fail sounds writes "
        "settip tip user platform separator screen version clock instance during").split()
    WORDS = (
        "", "0", "1", "-1", "250", "99999999999999999999", "HKCU", "HKLM", INTERN, "Insert", "Text", "List", "Value",
        "frmTray", "frmSettings", "frmTray.", ".", "frmTray.Timer1", "frmTray.SSTab1", CLIP, PAD, TODO, "frmTray.Text7",
        "frmTray.Text0", "frmTray.Command47", "frmSettings.Command1", "frmSettings.Combo1", "mnuShow", "mnuEnd", "up",
        "ClipEntries", "PadEntries", "Delete", "ctrl", "box", "keys", "clip.get", "\\", "\\u", "\\ud800", "\\n", "é")
    REFUSED = (b"clip.set\t\xFF", b"clip.set\t\xED\xA0\x80", b"clip.get\t", b"", b"\t", b" clip.get", b"x" * 50_000)

    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.answers()
        for line in self.REFUSED:
            self.body.send(line)
            self.wants("not refused", self.body.flush()[0].startswith(b"error\t"), line[:100])

    def make_step(self):
        line = "\t".join([self.one(*self.VERBS), *self.random.choices(self.WORDS, k=self.below(5))]).encode()
        if self.chance(20):
            at = self.below(len(line) + 1)
            line = line[:at] + self.random.randbytes(self.below(6)).replace(b"\n", b"") + line[at:]
        elif self.chance(2):
            line = self.random.randbytes(self.below(300)).replace(b"\n", b"")
        if line.split(b"\t")[0] in (b"advance", b"folder"):  # a year of ticks, or files anywhere
            line = b""
        self.body.send(line)
        self.body.send(b"running")
        answer, running = self.body.flush()
        self.wants("an answer", re.match(rb"(ok|error\t.+)(\t|$)", answer) and running in (b"ok\t0", b"ok\t1"), answer)
        if running == b"ok\t0" and self.chance(30):
            self.want("start")
            self.answers()


HANDS = {"program": Program, "tasks": Tasks, "calc": Calc, "damage": Damage, "lines": Lines}
EPISODE = 2000  # steps after which a hand begins in a world of its own


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("body")
    parser.add_argument("--steps", type=int, default=4000)
    parser.add_argument("--seed", type=int, default=random.SystemRandom().randrange(10**6))
    parser.add_argument("--hand", choices=HANDS)
    options = parser.parse_args()
    print(f"walk: seed {options.seed}", flush=True)
    body, done = Body(options.body), collections.Counter()
    with tempfile.TemporaryDirectory(prefix="quillbox-walk-") as folder:
        try:
            for episode in range(-(-options.steps // EPISODE)):
                for name in [options.hand] if options.hand else HANDS:
                    share = 100 if options.hand else HANDS[name].SHARE
                    hand = HANDS[name](body, f"{options.seed} {episode} {name}", pathlib.Path(folder) / "world")
                    for _ in range(min(EPISODE, options.steps - episode * EPISODE) * share // 100):
                        hand.make_step()
                        done[name] += 1
            failed = body.end()
        except Found as found:
            for request, answer in body.last:
                print("  ", *(each.decode("utf-8", "replace")[:200].strip() for each in (request, answer)), sep="  ")
            print(f"walk: {name}, step {done[name]}: {str(found)[:3000]}")
            body.process.kill()
            failed = 1
    print("walk:", ", ".join(f"{name} {count}" for name, count in done.items()), "steps")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
