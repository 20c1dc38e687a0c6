"""The main window as its user finds it: with the keyboard alone, with the pointer alone, with a screen reader."""
import unicodedata
import unittest

from tavrin import CMD, OPTION, is_free, item, lines, mark, press, read_shortcuts, wait_for
from window import EDITABLE, TITLES, WindowCase

K, L = 45, 46  # X key codes


class MainWindow(WindowCase):
    def start_with_five(self):
        """One of each type."""
        self.items = [
            item("Trình duyệt", "k", action="launchApp", value="org.example.Browser"),
            item("Trang chủ", "l", action="openURL", value="https://example.org/Index"),
            item("Chữ ký", "m", CMD | OPTION, action="quickText",
                 value='{"mode":"copyOnly","text":"một\\nhai","restoreClipboard":false}'),
            item("Sao lưu", "F5", 0, value="rsync -a ~/Tài\\ liệu /mnt", enabled=False),
            item("Tiếng to", "a", action="systemAction", value="volumeUp"),
        ]
        return self.start_window(self.items)

    def names(self):
        return [element.name for element in self.window.below()]

    def test_is_read_from_top_to_bottom(self):
        program = self.start_window([item("Một", "k"), item("Hai", "l", enabled=False)])
        row = ["Chạy thử", "Chỉnh sửa", "Xóa"]
        self.window.find("list item", "Hai (⌘ L)")
        self.assertEqual(self.names(), [
            "Tavrin", "Tavrin - Trình Quản Lý Phím Tắt Toàn Cục", "Tavrin", "Tavrin", "v1.0.7", "Đang hoạt động",
            "Trình quản lý phím tắt toàn cục Native macOS", "Thêm Phím Tắt",
            "Mục", "Phím tắt", "Hướng dẫn", "Tác giả",
            "Khởi động cùng máy tính", "Ẩn icon thanh Dock (Chỉ hiện Menu Bar)",
            "💡 Đóng cửa sổ sẽ không tắt app mà luôn giữ chạy ngầm trên Menu Bar.",
            "Tìm kiếm", "Loại hành động: Tất cả", "Danh sách phím tắt",
            "Một (⌘ K)", "Một", "⌘ K", "Script: true", *row, "Bật Một",
            "Hai (⌘ L)", "Hai", "⌘ L", "Script: true", *row, "Bật Hai",
            "Tổng cộng: 2 phím tắt (1 đang bật)", "Quyền Trợ năng: Đã cấp", "Tạm dừng tất cả"])
        self.assertEqual(self.window.find(EDITABLE, "Tìm kiếm").description,
                         "Tìm kiếm theo tên, phím tắt hoặc mục tiêu...")
        self.assertEqual(program.output(), [])

    def test_search_and_type_choose_the_rows(self):
        program = self.start_with_five()
        names = [entry["name"] for entry in self.items]
        self.wait_rows(*names)
        for text, expected in (("TRÌNH", ["Trình duyệt"]),
                               (unicodedata.normalize("NFD", "chữ KÝ"), ["Chữ ký"]),
                               (unicodedata.normalize("NFC", "tài"), ["Sao lưu"]),
                               ("⌘", ["Trình duyệt", "Trang chủ", "Chữ ký", "Tiếng to"]),
                               ("example.org/i", ["Trang chủ"]),
                               (" ", names)):
            self.search_for(text)
            self.wait_rows(*expected)
        self.search_for("không có")
        self.window.find("label", "Không tìm thấy phím tắt phù hợp")
        self.window.find("push button", "Xoá bộ lọc tìm kiếm").press()
        self.wait_rows(*names)
        self.assertEqual(self.window.find(EDITABLE, "Tìm kiếm").text, "")

        for title, name in zip(TITLES[1:], names):
            self.window.find("combo box").press()
            self.window.find("list item", title).press()
            self.wait_rows(name)
            self.window.find("combo box", f"Loại hành động: {title}")
        self.search_for("trình")
        self.window.find("push button", "Xoá bộ lọc tìm kiếm").press()
        self.wait_rows(*names)
        self.window.find("combo box", "Loại hành động: Tất cả")
        self.assertEqual(program.output(), [])

    def test_empty_list_says_so_whatever_is_searched(self):
        self.start_window([])
        self.search_for("gì đó")
        self.window.find("label", "Chưa có phím tắt nào được tạo")
        self.window.find("push button", "Thêm Phím Tắt Đầu Tiên")
        self.window.find("label", "Tổng cộng: 0 phím tắt (0 đang bật)")

    def test_switching_off_and_on_reaches_file_and_keys(self):
        script, path = mark("switched")
        program = self.start_window([item("Ghi", "k", value=script)])
        self.assert_fires(path, "super+k")
        self.row("Ghi").find("check box", "Bật Ghi", "checked").toggle()
        self.wait_stored("Ghi", isEnabled=False)
        self.wait_free(K)
        self.window.find("label", "Tổng cộng: 1 phím tắt (0 đang bật)")
        switch = self.window.find("check box", "Bật Ghi").wait("checked", False)
        # Tried by hand, it runs although it is off.
        self.row("Ghi").find("push button", "Chạy thử").press()
        wait_for(lambda: len(lines(path)) == 2, "the script")
        switch.toggle()
        self.wait_stored("Ghi", isEnabled=True)
        self.wait_free(K, wanted=False)
        self.assert_fires(path, "super+k")
        self.assertEqual(program.output(), [])

    def test_pausing_frees_all_keys_and_leaves_the_file(self):
        script, path = mark("paused")
        self.start_window([item("Một", "k", value=script), item("Hai", "l", value=script, enabled=False)])
        before = read_shortcuts()
        self.window.find("push button", "Tạm dừng tất cả").press()
        self.window.find("label", "TẠM DỪNG")
        self.wait_free(K)
        # Off or on, nothing is registered until it goes on.
        self.window.find("check box", "Bật Hai").toggle()
        self.wait_stored("Hai", isEnabled=True)
        self.assertTrue(is_free(L))
        self.window.find("check box", "Bật Hai").toggle()
        self.wait_stored("Hai", isEnabled=False)
        self.window.find("push button", "Kích hoạt lại phím tắt").press()
        self.window.find("label", "Đang hoạt động")
        self.wait_free(K, wanted=False)
        self.assertTrue(is_free(L))
        self.assertEqual(read_shortcuts(), before)
        self.assert_fires(path, "super+k")

    def test_deleting_asks_first(self):
        program = self.start_window([item("Một", "k"), item("Hai", "l")])
        before = read_shortcuts()
        for leave in (lambda alert: alert.find("push button", "Hủy").press(), lambda alert: press("Escape")):
            alert = self.ask_to_delete("Một")
            alert.find("label", 'Bạn có chắc chắn muốn xóa phím tắt "Một" (⌘ K) không? Thao tác này không thể hoàn tác.')
            leave(alert)
            self.wait_no_alert()
            self.assertEqual(read_shortcuts(), before)
            self.assertFalse(is_free(K))
        self.ask_to_delete("Một").find("push button", "Xóa phím tắt").press()
        self.wait_no_alert()
        self.wait_rows("Hai")
        self.assertEqual([entry["name"] for entry in read_shortcuts()], ["Hai"])
        self.wait_free(K)
        self.assertFalse(is_free(L))
        self.assertEqual(program.output(), [])

    def ask_to_delete(self, name):
        self.row(name).find("push button", "Xóa").press()
        return self.alert()

    def test_keyboard_alone(self):
        script, path = mark("keyboard")
        program = self.start_window([item("Một", "k", value=script), item("Hai", "l", value=script),
                                     item("Ba wxyz", "m", value=script)])
        press("Down")
        self.wait_selected("Hai")
        press("space")
        self.wait_stored("Hai", isEnabled=False)
        self.wait_free(L)
        press("space")
        self.wait_stored("Hai", isEnabled=True)
        press("Home")
        self.wait_selected("Một")
        press("Delete")
        self.alert()
        self.wait_focused("push button", "Hủy")
        press("Escape")
        self.wait_no_alert()
        self.wait_selected("Một")
        press("Delete")
        self.alert()
        press("Tab")
        self.wait_focused("push button", "Xóa phím tắt")
        press("Return")
        self.wait_no_alert()
        self.wait_rows("Hai", "Ba wxyz")
        self.wait_free(K)
        press("ctrl+f")
        self.wait_focused(EDITABLE, "Tìm kiếm")
        press("w", "x", "y", "z")
        self.wait_rows("Ba wxyz")
        press("Escape")
        self.wait_rows("Hai", "Ba wxyz")
        self.assertEqual(self.window.find(EDITABLE, "Tìm kiếm").text, "")
        # In a field it is a letter.
        press("slash")
        wait_for(lambda: self.window.find(EDITABLE, "Tìm kiếm").text == "/", "the letter")
        press("BackSpace", "Tab")
        self.wait_focused("combo box", "Loại hành động: Tất cả")
        press("slash")
        self.wait_focused(EDITABLE, "Tìm kiếm")
        press("Tab", "space", "Down", "Down", "Return")
        self.window.find("combo box", "Loại hành động: Mở Đường dẫn Web")
        self.window.find("label", "Không tìm thấy phím tắt phù hợp")
        press("Tab", "Return")
        self.wait_rows("Hai", "Ba wxyz")
        self.assertEqual(program.output(), [])

    def test_tab_goes_through_everything_in_the_order_of_reading(self):
        program = self.start_window([item("Một", "k"), item("Hai", "l")])
        stops = self.tab_stops("Tab")
        first = stops.index("Thêm Phím Tắt")
        self.assertEqual(stops[first:] + stops[:first], [
            "Thêm Phím Tắt", "Mục", "Khởi động cùng máy tính", "Ẩn icon thanh Dock (Chỉ hiện Menu Bar)", "Tìm kiếm",
            "Loại hành động: Tất cả", "Một (⌘ K)", "Chạy thử", "Chỉnh sửa", "Xóa", "Bật Một",
            "Quyền Trợ năng: Đã cấp", "Tạm dừng tất cả"])
        self.assertEqual(self.tab_stops("shift+Tab"), stops[:1] + stops[:0:-1])
        # From a button of one row the arrows still lead to another.
        self.wait_selected("Một")
        press("Tab")
        self.wait_focused("push button", "Chạy thử")
        press("Down")
        self.wait_selected("Hai")
        self.assertEqual(program.output(), [])

    def test_focus_stays_in_the_alert(self):
        self.start_window([item("Một", "k")])
        press("Delete")
        self.alert()
        self.wait_focused("push button", "Hủy")
        for key in ("Tab", "shift+Tab"):
            self.assertEqual(sorted(self.tab_stops(key)), ["Hủy", "Xóa phím tắt"])
        # What lies under it answers neither to keys nor to the pointer.
        press("ctrl+f", "ctrl+n")
        self.window.find("push button", "Tạm dừng tất cả").click()
        press("Escape")
        self.wait_no_alert()
        self.assertFalse(is_free(K))
        self.window.find("label", "Đang hoạt động")

    def test_pointer_alone(self):
        script, path = mark("pointer")
        program = self.start_window([item("Một wxyz", "k", value=script), item("Hai", "l", value=script)])
        self.row("Hai").find("push button", "Chạy thử").click()
        wait_for(lambda: lines(path), "the script")
        self.window.find("check box", "Bật Hai").click()
        self.wait_stored("Hai", isEnabled=False)
        self.wait_free(L)
        self.window.find("combo box").click()
        self.window.find("list item", "Hành động Hệ thống").click()
        self.window.find("push button", "Xoá bộ lọc tìm kiếm").click()
        self.wait_rows("Một wxyz", "Hai")
        self.window.find(EDITABLE, "Tìm kiếm").click()
        self.wait_focused(EDITABLE, "Tìm kiếm")
        press("w", "x", "y", "z")
        self.wait_rows("Một wxyz")
        self.window.find("push button", "Xoá").click()
        self.wait_rows("Một wxyz", "Hai")
        self.row("Một wxyz").find("push button", "Xóa").click()
        self.alert().find("push button", "Xóa phím tắt").click()
        self.wait_rows("Hai")
        self.wait_free(K)
        self.window.find("push button", "Tạm dừng tất cả").click()
        self.window.find("label", "TẠM DỪNG")
        for tab in ("Hướng dẫn", "Tác giả", "Phím tắt"):
            self.window.find("page tab", tab).click()
            self.window.find("page tab", tab, "selected")
        self.wait_rows("Hai")
        self.assertEqual(program.output(), [])

if __name__ == "__main__":
    unittest.main(verbosity=2)
