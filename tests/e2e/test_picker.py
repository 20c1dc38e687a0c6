"""Choosing an application in the running program: from the list, by its file, and among broken things."""
import os
import shutil
import unittest

from gi.repository import GLib

import desktop
from tavrin import DATA, RUNTIME, item, lines, press, wait_for
from window import EDITABLE, WindowCase

FOLDER = f"{DATA}/applications"
SEARCH = "Tìm ứng dụng"
BROWSE = "Duyệt file từ ổ cứng..."


class Picker(WindowCase):
    def setUp(self):
        super().setUp()
        self.log = f"{RUNTIME}/started"
        self.addCleanup(lambda: os.path.exists(self.log) and os.remove(self.log))
        self.tool = desktop.write_script(f"{desktop.HOME}/bin/tool", f"echo \"$*\" >> '{self.log}'")
        os.makedirs(FOLDER)
        self.addCleanup(shutil.rmtree, FOLDER)

    def entry(self, name, *more):
        """A desktop entry of the user's."""
        path = f"{FOLDER}/{name}.desktop"
        with open(path, "w") as file:
            file.write("\n".join(("[Desktop Entry]", "Type=Application", f"Name={name}", *more, "")))
        return path

    def open_picker(self, **environment):
        self.program = self.start_window([item("Mở", "k", action="launchApp", value="chua-chon")], **environment)
        self.row("Mở").find("push button", "Chỉnh sửa").press()
        self.window.find("push button", "Đổi Ứng Dụng...").press()
        self.sheet = self.window.find("dialog", "Chọn Ứng Dụng")
        self.wait_focused(EDITABLE, SEARCH)
        wait_for(lambda: self.sheet.search("list item"), "the list of applications")

    def names(self):
        try:
            return {row.name for row in self.sheet.search("list item")}
        except GLib.Error:
            # One of them went while we were looking.
            return set()

    def look_for(self, text, *names):
        self.write(self.sheet.find(EDITABLE, SEARCH), text)
        wait_for(lambda: self.names() == set(names), lambda: f"{names} being listed instead of {self.names()}")

    def save(self, path):
        """The picker has gone; the shortcut opens what was chosen there."""
        self.window.wait_gone("dialog", "Chọn Ứng Dụng")
        self.window.find("push button", "Lưu Thay Đổi").press()
        self.wait_stored("Mở", actionValue=path)
        press("super+k")
        wait_for(lambda: lines(self.log), "the application being started")

    def test_choose_by_keys(self):
        self.entry("aaa", "Name[vi]=Công cụ một", f"Exec={self.tool} one")
        path = self.entry("bbb", "Name[vi]=Công cụ hai", f"Exec={self.tool} two")
        self.open_picker()
        self.look_for("CO\u0302NG CU\u0323", "Công cụ hai", "Công cụ một")
        press("Down", "Up", "Return")
        self.save(path)
        self.assertEqual(lines(self.log), ["two"])
        self.assertEqual(self.program.output(), [])

    def test_choose_by_pointer(self):
        path = self.entry("aaa", f"Exec={self.tool} one")
        self.open_picker()
        self.look_for("aaa", "aaa")
        self.sheet.find("push button", "Chọn").click()
        self.save(path)

    def test_escape_closes_the_picker_alone(self):
        self.open_picker()
        press("Escape")
        self.window.wait_gone("dialog", "Chọn Ứng Dụng")
        self.window.find("push button", "Lưu Thay Đổi")
        press("Escape")
        self.window.wait_gone("push button", "Lưu Thay Đổi")
        self.assertEqual(self.stored("Mở")["actionValue"], "chua-chon")

    def test_browse_for_a_program(self):
        called = f"{RUNTIME}/zenity-called"
        desktop.write_script(f"{desktop.HOME}/panel/zenity",
                             f"[ -e '{called}' ] && echo '{self.tool}' && exit; touch '{called}'; exit 1")
        self.open_picker(PATH=f"{desktop.HOME}/panel:{os.environ['PATH']}")
        self.sheet.find("push button", BROWSE).press()
        wait_for(lambda: os.path.exists(called), "the panel that is cancelled")
        wait_for(self.press_browse_until_closed, "the picker closing")
        self.save(self.tool)
        self.assertEqual(lines(self.log), [""])

    def press_browse_until_closed(self):
        """A press while the panel before is still open does nothing."""
        for button in self.window.search("push button", BROWSE):
            button.press()
        return not self.window.search("dialog", "Chọn Ứng Dụng")

    def test_broken_things_are_survived(self):
        huge, corrupt, pipe = (f"{FOLDER}/{name}.png" for name in ("huge", "corrupt", "pipe"))
        with open(huge, "wb") as file:
            file.write(b"\x89PNG\r\n\x1a\n")
            file.truncate(50 << 20)
        with open(corrupt, "wb") as file:
            file.write(b"\x89PNG\r\n\x1a\n" + b"\xff" * 1000)
        os.mkfifo(pipe)
        for number, icon in enumerate((huge, corrupt, pipe, FOLDER, "/dev/zero", "")):
            self.entry(f"zz{number}", f"Exec={self.tool} {number}", f"Icon={icon}")
        with open(f"{FOLDER}/zz-broken.desktop", "wb") as file:
            file.write(b"\xff\xfe\0[Desktop" * 100)
        os.symlink("zz-loop.desktop", f"{FOLDER}/zz-loop.desktop")
        os.mkfifo(f"{FOLDER}/zz-pipe.desktop")
        self.open_picker()
        # What cannot be read is listed by its file.
        self.look_for("zz", *(f"zz{number}" for number in range(6)), "zz-broken", "zz-pipe")
        self.look_for("zz3", "zz3")
        press("Return")
        self.save(f"{FOLDER}/zz3.desktop")
        self.assertEqual(lines(self.log), ["3"])
        # The library that reads pictures says by itself what it thinks of a corrupt one.
        self.assertEqual([line for line in self.program.output() if not line.startswith("libpng error:")], [])


if __name__ == "__main__":
    unittest.main(verbosity=2)
