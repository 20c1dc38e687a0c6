"""The program's first steps with a new user, and the help that is there afterwards."""
import os
import shutil
import signal
import subprocess
import unittest

import desktop
from tavrin import close_window, is_free, item, lines, mark, press, wait_for, window_id
from tray import Tray
from window import WindowCase

CONFIG = os.environ["XDG_CONFIG_HOME"]
SETTINGS = f"{CONFIG}/Tavrin/Tavrin.conf"
AUTOSTART = f"{CONFIG}/autostart/app.tavrin.Tavrin.desktop"
LOGIN, DOCK = "Khởi động cùng máy tính", "Ẩn icon thanh Dock (Chỉ hiện Menu Bar)"
PERMISSION = "Mở Cài đặt để Bật Quyền Trợ Năng"
WIZARD = "Chào mừng đến với Tavrin"
PAGES = [WIZARD, "Cấp Quyền Trợ Năng macOS", "4 Loại Hành Động Tự Động Hoá", "Thiết Lập Chạy Nền & Hoàn Tất"]
K = 45


class HelpCase(WindowCase):
    """The wizard is found by itself: what it covers is in the tree as well."""

    def wizard(self):
        return self.window.find("dialog", WIZARD)

    def wait_page(self, number):
        self.wizard().find("heading", PAGES[number - 1])
        self.wizard().find("label", f"Bước {number}/4")

    def wait_no_wizard(self):
        self.window.wait_gone("dialog", WIZARD)
        self.wait_focused("list", "Danh sách phím tắt")

    def wait_setting(self, line):
        wait_for(lambda: line in lines(SETTINGS), f"{line} in the settings")

    def button(self, name):
        return self.wizard().find("push button", name)


class FirstRun(HelpCase):
    def setUp(self):
        super().setUp()
        # Nothing is left of a test before.
        shutil.rmtree(os.path.dirname(SETTINGS), ignore_errors=True)
        shutil.rmtree(os.path.dirname(AUTOSTART), ignore_errors=True)

    def start_again(self, program):
        self.assertEqual(program.end(), 0)
        return self.start_window([])

    def assert_never_again(self, program):
        program = self.start_again(program)
        self.window.find("label", "Chưa có phím tắt nào được tạo")
        self.assertEqual(self.window.search("dialog"), [])
        self.assertEqual(program.output(), [])

    def test_by_keyboard_alone(self):
        program = self.start_window([])
        self.wait_page(1)
        self.wait_focused("push button", "Tiếp tục")
        self.assertEqual(self.tab_stops("Tab"), ["Tiếp tục", "Bỏ qua"])
        press("Escape", "Return")
        self.wait_page(2)
        self.wizard().find("label", "ĐÃ CẤP")
        self.assertEqual(self.tab_stops("shift+Tab"), ["Tiếp tục", "Quay lại", PERMISSION, "Bỏ qua"])
        press("space")
        self.wait_page(3)
        press("shift+Tab", "Return")
        self.wait_page(2)
        self.wait_focused("push button", "Quay lại")
        press("Return")
        self.wait_page(1)
        self.wait_focused("push button", "Tiếp tục")
        press("Return", "Return", "Return")
        self.wait_page(4)
        self.assertEqual(self.tab_stops("Tab"), ["Bắt đầu sử dụng", LOGIN, DOCK, "Quay lại"])
        press("Tab", "space")
        wait_for(lambda: os.path.exists(AUTOSTART), "the entry that starts the program with the session")
        press("Tab", "space")
        self.wait_setting("hideDockIcon=false")
        self.assertNotIn("hasCompletedOnboarding=true", lines(SETTINGS))
        press("shift+Tab", "shift+Tab", "Return")
        self.wait_no_wizard()
        self.wait_setting("hasCompletedOnboarding=true")
        self.assertEqual(program.output(), [])
        self.assert_never_again(program)

    def test_by_pointer_alone(self):
        program = self.start_window([])
        for number in (1, 2, 3):
            self.wait_page(number)
            self.button("Tiếp tục").click()
        self.wait_page(4)
        self.button("Quay lại").click()
        self.wait_page(3)
        self.button("Tiếp tục").click()
        self.wait_page(4)
        self.assertEqual(self.wizard().search("push button", "Bỏ qua"), [])
        self.wizard().find("check box", LOGIN).click()
        wait_for(lambda: os.path.exists(AUTOSTART), "the entry that starts the program with the session")
        # The text belongs to the switch.
        self.wizard().find("label", "Giúp thanh Dock gọn gàng, Tavrin sẽ chạy nền âm thầm trên Menu Bar.").click()
        self.wait_setting("hideDockIcon=false")
        self.button("Bắt đầu sử dụng").click()
        self.wait_no_wizard()
        self.assert_never_again(program)

    def test_by_screen_reader(self):
        program = self.start_window([])
        for number in (1, 2, 3):
            self.wait_page(number)
            self.button("Tiếp tục").press()
        self.wait_page(4)
        switch = self.wizard().find("check box", LOGIN)
        switch.toggle()
        switch.wait("checked")
        self.button("Bắt đầu sử dụng").press()
        self.wait_no_wizard()
        self.assert_never_again(program)

    def test_skipping_is_finishing(self):
        program = self.start_window([])
        self.wait_page(1)
        press("Return")
        self.wait_page(2)
        self.button("Bỏ qua").click()
        self.wait_no_wizard()
        self.assert_never_again(program)

    def test_comes_again_until_it_is_finished(self):
        program = self.start_window([])
        self.wait_page(1)
        press("Return")
        self.wait_page(2)
        program.end(signal.SIGKILL)
        program = self.start_window([])
        self.wait_page(1)
        # A window that is closed and shown again is where it was.
        press("Return")
        self.wait_page(2)
        close_window()
        self.start_window_again()
        self.wait_page(2)
        program = self.start_again(program)
        self.wait_page(1)
        self.assertEqual(program.output(), [])

    def start_window_again(self):
        """By a second start, which wakes the first."""
        self.assertEqual(subprocess.run((os.environ["TAVRIN"],), timeout=20).returncode, 0)
        wait_for(window_id, "the window coming back")
        self.window.find("frame", state="active")

    def test_shortcuts_work_behind_it_and_nothing_else(self):
        script, path = mark("wizard")
        self.start_window([item("Một", "k", value=script)])
        self.wait_page(1)
        self.assert_fires(path, "super+k")
        press("ctrl+n", "ctrl+f", "Delete")
        self.window.find("push button", "Tạm dừng tất cả").press()
        x, y, _, height = self.window.find("push button", "Tạm dừng tất cả").extents
        subprocess.run(("xdotool", "mousemove", "--sync", str(x + 5), str(y + height // 2), "click", "1"), check=True)
        press("Return")
        self.wait_page(2)
        self.assertEqual([dialog.name for dialog in self.window.search("dialog")], [WIZARD])
        self.assertFalse(is_free(K))


class Help(HelpCase):
    """With a user who has the first steps behind him."""

    def setUp(self):
        super().setUp()
        desktop.write(SETTINGS, "[General]\nhasCompletedOnboarding=true\n")

    def start_with_tray(self):
        self.tray = Tray(self)
        program = self.start_window([])
        self.tray.wait_item()
        return program

    def choose(self, title):
        """From the menu, while the window is away."""
        close_window()
        self.tray.choose(title)
        wait_for(window_id, "the window coming back")
        self.window.find("frame", state="active")

    def test_menu_leads_to_each_of_the_three(self):
        program = self.start_with_tray()
        self.choose("Hướng dẫn sử dụng...")
        self.window.find("page tab", "Hướng dẫn", "selected")
        self.window.find("label", "Hướng Dẫn Sử Dụng Tavrin")
        self.choose("Thông tin Tác giả...")
        self.window.find("page tab", "Tác giả", "selected")
        self.window.find("label", "Thông tin liên hệ")
        self.assertEqual(self.window.search("dialog"), [])
        self.choose("Hướng dẫn thiết lập ban đầu (Wizard)...")
        self.wait_page(1)
        press("Return")
        self.wait_page(2)
        self.button("Bỏ qua").press()
        self.window.wait_gone("dialog")
        self.window.find("page tab", "Tác giả", "selected")
        # Over a window that is there, too, and from its beginning.
        self.tray.choose("Hướng dẫn thiết lập ban đầu (Wizard)...")
        self.wait_page(1)
        # It was asked for this once.
        self.assertEqual(program.end(), 0)
        self.start_window([])
        self.window.find("label", "Chưa có phím tắt nào được tạo")
        self.assertEqual(self.window.search("dialog"), [])
        self.assertEqual(program.output(), [])

    def test_guide_leads_to_the_wizard_and_to_the_settings(self):
        page, log = desktop.write_recorder("gnome-control-center")
        program = self.start_window([], PATH=f"{os.path.dirname(page)}:{os.environ['PATH']}",
                                    XDG_CURRENT_DESKTOP="GNOME")
        self.window.find("page tab", "Hướng dẫn").click()
        self.window.find("label", "Hướng Dẫn Sử Dụng Tavrin")
        self.window.find("push button", "Mở Wizard Giới Thiệu & Thiết Lập").click()
        self.wait_page(1)
        self.button("Bỏ qua").click()
        self.window.wait_gone("dialog")
        self.assertIn("hasCompletedOnboarding=true", lines(SETTINGS))
        press("End")
        self.window.find("push button", "Mở Cài đặt").click()
        self.assertEqual(desktop.calls(log), ["gnome-control-center", "universal-access"])
        self.assertEqual(program.output(), [])

    def test_author_page_copies_for_other_programs(self):
        program = self.start_window([])
        self.window.find("page tab", "Tác giả").click()
        self.window.find("label", "Thông tin liên hệ")
        for name, label in (("Sao chép Điện thoại", "Điện thoại:"), ("Sao chép Số tài khoản", "Số tài khoản:")):
            self.window.find("push button", name).press()
            shown = [element.name for element in self.window.below()]
            wait_for(lambda: pasted() == shown[shown.index(label) + 1], f"the value of {label} on the clipboard")
            press("End")
        self.assertEqual(program.output(), [])


def pasted():
    return subprocess.run(("xclip", "-selection", "clipboard", "-out"), capture_output=True, text=True).stdout


if __name__ == "__main__":
    unittest.main(verbosity=2)
