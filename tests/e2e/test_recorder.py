"""Recording a combination: whoever it belongs to, it is recorded and does not fire; afterwards it does again."""
import os
import signal
import subprocess
import unittest

from tavrin import CMD, OPTION, close_window, item, lines, mark, press, wait_for, window_id
from window import EDITABLE, WindowCase

RECORDING = "Nhấn tổ hợp phím bất kỳ..."
MUHENKAN, SUPER = 102, 133  # X key codes


def strokes(*words):
    subprocess.run((os.environ["TAVRIN_BUILD"] + "/tests/keyboard", *map(str, words)), check=True)


class Recorder(WindowCase):
    def setUp(self):
        super().setUp()
        self.script, self.path = mark("own")
        self.program = self.start_window([item("Của mình", "k", value=self.script)])

    def edit_new(self):
        self.window.find("push button", "Thêm Phím Tắt").press()
        self.wait_focused(EDITABLE, "Tên gợi nhớ")

    def record(self):
        self.window.find("push button", "Ghi phím").press()
        self.window.find("push button", RECORDING)

    def wait_badges(self, *badges):
        self.window.find("push button", " ".join(badges))
        for badge in badges:
            self.window.find("label", badge)

    def other_window(self):
        terminal = subprocess.Popen(("xterm", "-T", "other"))
        self.addCleanup(terminal.wait)
        self.addCleanup(terminal.kill)
        return wait_for(lambda: subprocess.run(("xdotool", "search", "--onlyvisible", "--name", "^other$"),
                                               capture_output=True, text=True).stdout.split(), "the other window")[0]

    def activate(self, window):
        subprocess.run(("xdotool", "windowactivate", "--sync", str(window)), check=True)

    def assert_recording_ended(self):
        """The keyboard is everybody's again: the hotkey fires, and the recorder shows what it had."""
        self.assert_fires(self.path, "super+k")

    def test_own_hotkey_is_recorded_and_does_not_fire(self):
        self.edit_new()
        self.record()
        press("super+k")
        self.wait_badges("⌘ Command", "K")
        self.assertEqual(lines(self.path), [])
        press("super+k")
        wait_for(lambda: lines(self.path), "the hotkey firing once the recording is over")
        self.assertEqual(self.program.output(), [])

    def test_combination_of_the_window_manager_is_recorded_and_does_nothing(self):
        other = self.other_window()
        self.activate(window_id())
        self.edit_new()
        self.record()
        press("alt+Tab")
        self.wait_badges("⌥ Option", "⇥")
        active = subprocess.run(("xdotool", "getactivewindow"), capture_output=True, text=True).stdout.split()[0]
        self.assertEqual(int(active), window_id())
        self.assertNotEqual(active, other)

        self.write(self.window.find(EDITABLE, "Tên gợi nhớ"), "Chuyển")
        self.window.find("radio button", "Script").press()
        self.write(self.window.find(EDITABLE, "Lệnh Shell Script (zsh)"), "true")
        self.window.find("push button", "Tạo Phím Tắt").press()
        self.wait_stored("Chuyển", keyCode=48, modifiers=OPTION)

    def test_key_without_a_position_is_recorded_by_its_number_and_fires(self):
        script, path = mark("muhenkan")
        self.edit_new()
        self.record()
        strokes("press", SUPER, MUHENKAN, "release", MUHENKAN, SUPER)
        self.wait_badges("⌘ Command", "Key(65630)")
        self.write(self.window.find(EDITABLE, "Tên gợi nhớ"), "Không tên")
        self.window.find("radio button", "Script").press()
        self.write(self.window.find(EDITABLE, "Lệnh Shell Script (zsh)"), script)
        press("ctrl+Return")
        self.wait_stored("Không tên", keyCode=0x10000 + MUHENKAN - 8, modifiers=CMD)
        strokes("press", SUPER, MUHENKAN, "release", MUHENKAN, SUPER)
        wait_for(lambda: lines(path), "the new shortcut firing")

    def test_a_click_that_brings_the_window_back_begins_a_recording_that_stays(self):
        self.edit_new()
        button = self.window.find("push button", "Ghi phím")
        other = self.other_window()
        # Beside our window, which it must not cover.
        subprocess.run(("xdotool", "windowsize", "--sync", other, "200", "100", "windowmove", other, "0", "0"), check=True)
        self.activate(other)
        button.click()
        self.window.find("push button", RECORDING)
        press("super+k")
        self.wait_badges("⌘ Command", "K")
        self.assertEqual(lines(self.path), [])

    def test_escape_ends_the_recording_and_only_that(self):
        self.edit_new()
        self.record()
        press("Escape")
        self.window.find("push button", "Ghi phím")
        self.assert_recording_ended()
        self.window.find("push button", "Chưa gán phím tắt")
        press("Escape")
        self.window.wait_gone("push button", "Ghi phím")

    def test_going_to_another_program_ends_the_recording(self):
        other = self.other_window()
        self.activate(window_id())
        self.edit_new()
        self.record()
        self.activate(other)
        self.window.find("push button", "Ghi phím")
        self.assert_recording_ended()
        self.window.find("push button", "Chưa gán phím tắt")

    def test_closing_the_window_ends_the_recording(self):
        self.edit_new()
        self.record()
        close_window()
        self.assert_recording_ended()

    def test_the_picker_ends_the_recording(self):
        self.edit_new()
        self.record()
        self.window.find("push button", "Bấm vào đây để chọn Ứng dụng từ danh sách...").press()
        self.wait_focused(EDITABLE, "Tìm ứng dụng")
        self.assert_recording_ended()

    def test_a_killed_program_leaves_the_keyboard(self):
        self.edit_new()
        self.record()
        self.program.end(signal.SIGKILL)
        program = self.start()
        self.assert_recording_ended()
        self.assertEqual(program.output(), [])


if __name__ == "__main__":
    unittest.main(verbosity=2)
