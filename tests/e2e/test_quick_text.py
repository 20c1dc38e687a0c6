"""A press anywhere puts a prepared text into the application that has the focus."""
import json
import os
import random
import subprocess
import time
import unittest

import desktop
from input_methods import Fcitx, IBus
from tavrin import CMD, CONTROL, OPTION, SHIFT, RUNTIME, TestCase, item, lines, wait_for, write_shortcuts

CONTROL_LEFT, SHIFT_LEFT, ALT_LEFT, SUPER_LEFT, K, L, V, A, SPACE = 37, 50, 64, 133, 45, 46, 55, 38, 65  # X key codes


def keyboard(*words):
    return subprocess.run((os.environ["TAVRIN_BUILD"] + "/tests/keyboard", *map(str, words)), check=True,
                          capture_output=True, text=True).stdout.split()


def quick_text(name, key, modifiers, text, mode="paste", restore=True):
    value = json.dumps({"mode": mode, "text": text, "restoreClipboard": restore}, ensure_ascii=False)
    return item(name, key, modifiers, action="quickText", value=value)


def copy(text, selection="clipboard"):
    subprocess.run(("xclip", "-selection", selection, "-in"), input=text.encode(), check=True,
                   stdout=subprocess.DEVNULL)


def pasted(selection="clipboard"):
    return subprocess.run(("xclip", "-selection", selection, "-out"), capture_output=True).stdout.decode()


class QuickText(TestCase):
    def setUp(self):
        super().setUp()
        self.addCleanup(lambda: self.assertEqual(keyboard("held"), []))

    def test_appears_while_the_keys_are_held_and_the_clipboard_comes_back(self):
        write_shortcuts([quick_text("chào", "k", CMD | SHIFT, "Chào buổi sáng 🌞 [{clipboard}]")])
        program = self.start()
        text = desktop.open_field(self)
        copy("trước đó")
        keyboard("press", SUPER_LEFT, SHIFT_LEFT, K)
        wait_for(lambda: text() == "Chào buổi sáng 🌞 [trước đó]", "the text")
        wait_for(lambda: pasted() == "trước đó", "the clipboard coming back")
        # The keys are still down: a second tap is a second press, and types nothing.
        keyboard("release", K, "press", K)
        wait_for(lambda: text() == "Chào buổi sáng 🌞 [trước đó]" * 2, "the second text")
        keyboard("release", K, SHIFT_LEFT, SUPER_LEFT)
        wait_for(lambda: pasted() == "trước đó", "the clipboard coming back again")
        self.assertEqual(program.output(), [])

    def test_appears_when_the_keys_were_let_go_and_may_stay_on_the_clipboard(self):
        write_shortcuts([quick_text("một", "k", OPTION, "một"),
                         quick_text("hai", "l", OPTION | CONTROL, " và hai", mode="pasteAndKeep")])
        program = self.start()
        text = desktop.open_field(self)
        keyboard("press", ALT_LEFT, K, "release", K, ALT_LEFT)
        wait_for(lambda: text() == "một", "the first text")
        time.sleep(0.4)  # Presses that follow faster are taken for one that bounces.
        keyboard("press", CONTROL_LEFT, ALT_LEFT, L, "release", L, ALT_LEFT, CONTROL_LEFT)
        wait_for(lambda: text() == "một và hai", "the second text")
        self.assertEqual(pasted(), " và hai")
        self.assertEqual(program.output(), [])

    def test_works_on_the_very_keys_of_paste(self):
        write_shortcuts([quick_text("dán", "v", CONTROL, "của Tavrin", restore=False)])
        program = self.start()
        text = desktop.open_field(self)
        keyboard("press", CONTROL_LEFT, V)
        wait_for(lambda: text() == "của Tavrin", "the text")
        keyboard("release", V, CONTROL_LEFT)
        time.sleep(0.4)
        keyboard("press", CONTROL_LEFT, V, "release", V, CONTROL_LEFT)
        wait_for(lambda: text() == "của Tavrin" * 2, "the second text")
        self.assertEqual(program.output(), [])

    def test_appears_in_a_terminal_that_pastes_the_primary_selection(self):
        write_shortcuts([quick_text("lệnh", "k", CMD, "echo xin chào")])
        program = self.start()
        path = f"{RUNTIME}/terminal"
        terminal = subprocess.Popen(("xterm", "-T", "terminal", "-e", f"stty raw -echo; exec cat > '{path}'"))
        self.addCleanup(terminal.wait)
        self.addCleanup(terminal.kill)
        desktop.wait_title("terminal")
        wait_for(lambda: os.path.exists(path), "the terminal")
        copy("bảng tạm")
        copy("đang chọn", "primary")
        keyboard("press", SUPER_LEFT, K)
        wait_for(lambda: lines(path) == ["echo xin chào"], "the text")
        keyboard("release", K, SUPER_LEFT)
        wait_for(lambda: pasted("primary") == "đang chọn", "the primary selection coming back")
        wait_for(lambda: pasted() == "bảng tạm", "the clipboard coming back")
        self.assertEqual(program.output(), [])

    def paste_between_words(self, text):
        """The input method makes other letters of what is typed, and none of what is pasted."""
        expected = ""
        for modifiers, key in (((SUPER_LEFT,), K), ((SHIFT_LEFT, ALT_LEFT), K), ((CONTROL_LEFT,), V)):
            # With a space behind it: some input methods drop a word that is still open when any hotkey takes
            # the keyboard.
            keyboard("press", A, "release", A, "press", A, "release", A, "press", SPACE, "release", SPACE)
            expected += "â "
            wait_for(lambda: text() == expected, f"the word and {expected!r}")
            for _ in range(2):
                time.sleep(0.4)
                keyboard("press", *modifiers, key)
                expected += "oo aa"
                wait_for(lambda: text() == expected, f"the text after {modifiers} and {expected!r}")
                keyboard("release", key)
            keyboard("release", *modifiers)

    def write_words(self):
        write_shortcuts([quick_text(str(key) + str(modifiers), key, modifiers, "oo aa")
                         for key, modifiers in (("k", CMD), ("k", SHIFT | OPTION), ("v", CONTROL))])

    def test_is_not_changed_by_ibus(self):
        self.paste_with(IBus)

    def test_is_not_changed_by_fcitx(self):
        self.paste_with(Fcitx)

    def paste_with(self, kind):
        self.write_words()
        self.start()
        input_method = kind(self)
        text = desktop.open_field(self, GTK_IM_MODULE=kind.MODULE)
        input_method.switch_on()
        self.paste_between_words(text)

    def test_leaves_no_key_down_when_it_is_killed(self):
        write_shortcuts([quick_text("chào", "k", CMD | SHIFT, "chào")])
        desktop.open_field(self)
        for moment in [0.118 + 0.001 * random.randrange(12) for _ in range(6)]:
            program = self.start()
            keyboard("press", SUPER_LEFT, SHIFT_LEFT, K)
            time.sleep(moment)
            program.kill()
            keyboard("release", K, SHIFT_LEFT, SUPER_LEFT)
            wait_for(lambda: not keyboard("held"), f"all keys being up after a kill at {moment} s")


if __name__ == "__main__":
    unittest.main()
