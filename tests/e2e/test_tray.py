"""The status menu of the running program, as a panel sees it: listed, chosen from, always up to date."""
import os
import subprocess
import unittest

from tavrin import (TestCase, close_window, is_free, item, lines, mark, press, wait_for, window_id, write_shortcuts)
from tray import Tray

K = 45


class StatusMenu(TestCase):
    def start_with_tray(self, items):
        write_shortcuts(items)
        self.tray = Tray(self)
        program = self.start()
        self.tray.wait_item()
        return program

    def test_reads_as_it_should(self):
        self.start_with_tray([item("Terminal & A_b", "m"), item("Một mình", "F5", 0, enabled=False)])
        self.assertEqual(self.tray.titles(), [
            "Tavrin v1.0.7", "---", "Mở Bảng điều khiển...", "Hướng dẫn sử dụng...",
            "Hướng dẫn thiết lập ban đầu (Wizard)...", "Thông tin Tác giả...", "Kiểm tra cập nhật...", "---",
            "_Terminal & A__b (⌘ M)", "Một mình (F5)", "---", "Khởi động cùng máy",
            "Ẩn icon thanh Dock (Chỉ hiện Menu Bar)", "Tạm dừng tất cả", "---", "Thoát hoàn toàn Tavrin"])
        self.assertEqual([entry[2] for entry in self.tray.open() if entry[2] is not None], [1, 0, 0, 1])
        self.assertEqual([entry[1] for entry in self.tray.open() if not entry[3]], ["Tavrin v1.0.7"])

    def test_empty_list(self):
        self.start_with_tray([])
        self.assertIn("(Chưa có phím tắt nào)", self.tray.titles())

    def test_runs_a_shortcut_that_is_off_and_paused(self):
        script, path = mark("from-menu")
        self.start_with_tray([item("chạy", "k", value=script, enabled=False)])
        self.tray.choose("Tạm dừng tất cả")
        self.tray.choose("chạy (⌘ K)")
        wait_for(lambda: lines(path), "the script")
        self.assertEqual(self.tray.state("chạy (⌘ K)"), 0, "choosing it does not switch it on")

    def test_pause_frees_the_keys_at_once(self):
        script, path = mark("paused")
        self.start_with_tray([item("k", "k", value=script)])
        self.assert_fires(path, "super+k")
        self.tray.choose("Tạm dừng tất cả")
        wait_for(lambda: is_free(K), "the combination being free")
        self.assertIn("Kích hoạt lại phím tắt", self.tray.titles())
        press("super+k")
        self.tray.choose("Kích hoạt lại phím tắt")
        wait_for(lambda: not is_free(K), "the combination being taken")
        self.assertIn("Tạm dừng tất cả", self.tray.titles())
        self.assert_fires(path, "super+k")
        self.assertEqual(len(lines(path)), 2)

    def test_settings(self):
        self.start_with_tray([])
        entry = f"{os.environ['XDG_CONFIG_HOME']}/autostart/app.tavrin.Tavrin.desktop"
        settings = f"{os.environ['XDG_CONFIG_HOME']}/Tavrin/Tavrin.conf"
        self.tray.choose("Khởi động cùng máy")
        wait_for(lambda: os.path.exists(entry), "the autostart entry")
        self.assertEqual(self.tray.state("Khởi động cùng máy"), 1)
        self.tray.choose("Khởi động cùng máy")
        wait_for(lambda: not os.path.exists(entry), "the entry going")
        self.tray.choose("Ẩn icon thanh Dock (Chỉ hiện Menu Bar)")
        wait_for(lambda: "hideDockIcon=false" in "".join(lines(settings)), "the setting")
        state = lambda: subprocess.run(("xprop", "-id", str(window_id()), "_NET_WM_STATE"), capture_output=True, text=True).stdout
        wait_for(lambda: "SKIP_TASKBAR" not in state(), "the window joining the task bar")
        self.tray.choose("Ẩn icon thanh Dock (Chỉ hiện Menu Bar)")
        wait_for(lambda: "SKIP_TASKBAR" in state(), "the window leaving the task bar")

    def test_click_and_command_show_the_window(self):
        self.start_with_tray([])
        for show in (self.tray.click, lambda: self.tray.choose("Mở Bảng điều khiển...")):
            close_window()
            show()
            wait_for(window_id, "the window coming back")

    def test_quits(self):
        program = self.start_with_tray([item("k", "k")])
        self.tray.choose("Thoát hoàn toàn Tavrin")
        self.assertEqual(program.process.wait(10), 0)
        self.assertTrue(is_free(K))
        self.assertEqual(program.output(), [])

    def test_comes_when_the_panel_comes_and_comes_back_with_it(self):
        write_shortcuts([])
        self.start()
        for _ in range(2):
            tray = Tray(self)
            tray.wait_item()
            self.assertIn("Thoát hoàn toàn Tavrin", tray.titles())
            tray.end()


if __name__ == "__main__":
    unittest.main(verbosity=2)
