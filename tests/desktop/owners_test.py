"""Whatever an owner of the clipboard does, and whoever asks for what we own: the program goes on, nothing is lost."""
from case import DesktopCase
from clients import DragSource, Manager, Owner, silent
from desktop import wait_for


class Owners(DesktopCase):
    def test_drops_wait_for_nobody(self):
        """Many of a source that says nothing; then one of files, which are no text, and one of a text."""
        self.desktop.start_program()
        window = self.desktop.show_window()
        left, top, width, height = self.desktop.place(window)
        on_list, on_field = ((window, left + width // 2, top + height * part // 4) for part in (1, 3))
        with DragSource(self.desktop.name, {"text/plain": silent, "text/uri-list": silent}) as source:
            sent = []

            def all_dropped():
                if source.told.count("ended") == len(sent):
                    sent.append(source.drop(*(on_list, on_field)[len(sent) % 2]))
                return len(sent) == 25

            # Seconds are too few for who waits for each.
            wait_for("the end of all drags but one", all_dropped, 60)
            self.open_from_menu("Escape")
            self.next_copy_is_taken()
            self.assertIn("text/plain", source.asked)
            self.assertEqual({"XdndActionCopy", "ended"}, {*source.told})
        before = self.file("Clip")
        for offers in {"text/plain": b"/a", "text/uri-list": b"file:///a\r\n"}, {"UTF8_STRING": "a \u20ac".encode()}:
            with DragSource(self.desktop.name, offers) as source:
                source.drop(*on_list)
                wait_for("the end of the drag", lambda: "ended" in source.told)
        wait_for("the entry", lambda: self.file("Clip") == ["a \u20ac", *before])

    def test_a_text_outlives_its_program_and_ours(self):
        """At our end it is handed over to a clipboard manager, of the tests' own."""
        self.desktop.start_program()
        manager = Manager(self.desktop.name)
        self.addCleanup(manager.close)
        with Owner(self.desktop.name, {"UTF8_STRING": b"outlives its program"}):
            self.newest_becomes("outlives its program")
        self.pastes("outlives its program")
        self.assertEqual(0, self.desktop.stop_program())
        self.assertEqual(b"outlives its program", manager.saved)

    def test_a_secret_is_kept_by_nobody(self):
        """Nor in any list, menu or tip, all of which are the program's memory; offered again unmarked, too."""
        self.desktop.start_program()
        self.copy("before the secret")
        secret = "correct horse battery staple"
        for text, hint in ("STRING", {"x-kde-passwordManagerHint": b"Secret\n"}), ("UTF8_STRING", {}):
            with Owner(self.desktop.name, {text: secret.encode(), **hint}) as owner:
                wait_for("the text taken", lambda: owner.asked[-1:] == [text])
                self.newest_becomes("")
            self.pastes(None)
        self.desktop.open_menu()
        self.assertEqual([], self.desktop.traces(secret))
        self.assertIn("memory", self.desktop.traces("before the secret"))
        self.menu_goes("Escape")
        self.next_copy_is_taken()

    def test_keys_copy_from_and_paste_into_our_own_fields(self):
        """Those of one line and of several, and the calculator."""
        self.start_reading("Pad")
        self.copy("seed")
        for field, number, paste, copy in (("Name of the Pad entry", "1", "ctrl+v", "ctrl+c"),
                                           ("Text of the Pad entry", "2", "shift+Insert", "ctrl+Insert")):
            self.reader.tab_to(field)
            self.desktop.key("ctrl+a", paste, "End", number, "ctrl+a", copy)
            self.pastes("seed12"[:4 + int(number)])
        with Owner(self.desktop.name, {"TARGETS": silent}) as owner:
            wait_for("the question to the owner", lambda: owner.asked)
            # Nothing can be pasted, and nobody waits for that.
            self.desktop.key("ctrl+a", "ctrl+v", "shift+Insert", "End", "3", "ctrl+a", "ctrl+c")
            self.pastes("seed123")
        self.desktop.key("ctrl+Tab")
        self.reader.tab_to("Display")
        self.desktop.key("Num_Lock", "KP_9", "KP_Divide", "KP_4", "KP_Subtract", "KP_1", "KP_Enter", "Num_Lock")
        self.reader.tab_to("copy result to clipboard")
        self.desktop.key("space")
        self.pastes("1.25")
        self.newest_becomes("1.25")
