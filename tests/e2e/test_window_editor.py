"""A shortcut of each type through the whole of its life: made, fired, changed, found, switched, paused, deleted. Each
step shows in the file, in the list, and in what a key press does while another program has the focus."""
import json
import os
import subprocess
import time
import unittest
import uuid

import desktop
from tavrin import CMD, CONTROL, OPTION, RUNTIME, SHIFT, is_free, item, lines, press, read_shortcuts, wait_for, window_id
from window import EDITABLE, MOST_STOPS, WindowCase, copy

K = 45  # X key code


def counter(name):
    """A program that writes a line with its arguments at each start, and the file."""
    log = f"{RUNTIME}/{name}-{uuid.uuid4()}.calls"
    return desktop.write_script(f"{desktop.HOME}/bin/{name}", f"printf '%s\\n' \"$*\" >> '{log}'"), log


class Editor(WindowCase):
    def setUp(self):
        super().setUp()
        self.field_text = None

    def start_empty(self, **environment):
        self.program = self.start_window([], **environment)

    def to_front(self, title):
        subprocess.run(("wmctrl", "-F", "-a", title), check=True)
        desktop.wait_title(title)

    def other_in_front(self):
        """Another program's text field gets the focus."""
        if self.field_text is None:
            self.field_text = desktop.open_field(self)
        else:
            self.to_front("gtk field")
        # The toolkit notices it with a delay, so that menus do not make a window inactive.
        self.window.find("frame").wait("active", False)

    def window_in_front(self):
        subprocess.run(("wmctrl", "-i", "-a", str(window_id())), check=True)
        self.window.find("frame", state="active")

    def open_new(self):
        self.window_in_front()
        press("ctrl+n")
        sheet = self.window.find("dialog", "Thêm Phím Tắt Mới")
        self.wait_focused(EDITABLE, "Tên gợi nhớ")
        return sheet

    def record(self, sheet, keys, badges):
        """Presses the keys while the recorder listens."""
        sheet.find("push button", "Ghi phím").press()
        sheet.find("push button", "Nhấn tổ hợp phím bất kỳ...")
        press(keys)
        sheet.find("push button", badges)

    def choose_type(self, sheet, label):
        sheet.find("radio button", label).press()
        sheet.find("radio button", label, "checked")

    def save(self, sheet, title):
        sheet.find("push button", title).press()
        self.window.wait_gone("dialog")

    def live(self, name, keys, key, effects):
        """What every shortcut goes through once it was made; `effects` tells how often it has done its work."""
        made = self.stored(name)
        self.assert_effect(keys, effects)
        made = self.rename(name, made)
        name = made["name"]
        self.search_for(name.upper())
        self.wait_rows(name)
        self.search_for("")

        self.window.find("check box", f"Bật {name}", "checked").toggle()
        self.wait_stored(name, isEnabled=False)
        self.wait_free(*key)
        self.window.find("check box", f"Bật {name}").toggle()
        self.wait_stored(name, isEnabled=True)
        self.assert_effect(keys, effects)

        self.window.find("push button", "Tạm dừng tất cả").press()
        self.wait_free(*key)
        self.window.find("push button", "Kích hoạt lại phím tắt").press()
        self.wait_free(*key, wanted=False)
        self.assert_effect(keys, effects)
        self.assertEqual(self.stored(name), made)

        self.row(name).find("push button", "Xóa").press()
        self.alert().find("push button", "Xóa phím tắt").press()
        self.wait_no_alert()
        self.window.find("label", "Chưa có phím tắt nào được tạo")
        self.assertEqual(read_shortcuts(), [])
        self.wait_free(*key)
        self.assertEqual(self.program.output(), [])

    def assert_effect(self, keys, effects):
        """Fires once, with another program in front."""
        self.other_in_front()
        before = effects()
        time.sleep(0.4)  # Presses of a quick text that follow faster are taken for one that bounces.
        press(keys)
        wait_for(lambda: effects() == before + 1, lambda: f"{effects()} instead of {before + 1} effects of {keys}")

    def rename(self, name, made):
        self.row(name).find("push button", "Chỉnh sửa").press()
        sheet = self.window.find("dialog", "Chỉnh Sửa Phím Tắt")
        field = sheet.find(EDITABLE, "Tên gợi nhớ")
        self.assertEqual(field.text, name)
        self.window_in_front()
        self.write(field, f"{name} đã sửa")
        self.save(sheet, "Lưu Thay Đổi")
        self.row(f"{name} đã sửa")
        changed = self.stored(f"{name} đã sửa")
        self.assertEqual(changed, {**made, "name": f"{name} đã sửa"})
        return changed

    def assert_stored(self, name, key, modifiers, action, value):
        stored = self.stored(name)
        self.assertEqual({field: stored[field] for field in ("keyCode", "modifiers", "actionType", "isEnabled")},
                         {"keyCode": key, "modifiers": modifiers, "actionType": action, "isEnabled": True})
        if action == "quickText":
            self.assertEqual(json.loads(stored["actionValue"]), value)
        else:
            self.assertEqual(stored["actionValue"], value)

    def test_script(self):
        self.start_empty()
        script, log = counter("script")
        sheet = self.open_new()
        self.write(sheet.find(EDITABLE, "Tên gợi nhớ"), "Chạy tập lệnh")
        self.record(sheet, "super+shift+k", "⇧ Shift ⌘ Command K")
        self.choose_type(sheet, "Script")
        # A trailing line break is a part of the script, a space is not.
        self.write(sheet.find(EDITABLE, "Lệnh Shell Script (zsh)"), f"  '{script}' 'một hai'\n")
        self.save(sheet, "Tạo Phím Tắt")
        self.assert_stored("Chạy tập lệnh", 40, CMD | SHIFT, "shellScript", f"'{script}' 'một hai'\n")
        self.live("Chạy tập lệnh", "super+shift+k", (K, "mod4+shift"), lambda: lines(log).count("một hai"))

    def test_web_address(self):
        browser, log = counter("browser")
        desktop.write_entry(self, "org.example.Browser", f"{browser} %u", "MimeType=x-scheme-handler/https;")
        self.addCleanup(os.remove, desktop.write(
            f"{os.environ['XDG_CONFIG_HOME']}/mimeapps.list",
            "[Default Applications]\nx-scheme-handler/https=org.example.Browser.desktop\n"))
        self.start_empty()
        sheet = self.open_new()
        self.record(sheet, "F7", "F7")
        sheet.find("label", "💡 Trên bàn phím MacBook, mặc định cần giữ kèm nút Fn khi bấm các phím F1–F12.")
        self.choose_type(sheet, "Trang Web")
        self.write(sheet.find(EDITABLE, "Đường dẫn trang web (URL)"), " https://example.org/đây ")
        self.save(sheet, "Tạo Phím Tắt")
        self.assert_stored("Phím tắt mới", 98, 0, "openURL", "https://example.org/đây")
        self.live("Phím tắt mới", "F7", (73, "none"), lambda: len(lines(log)))

    def test_quick_text(self):
        self.start_empty()
        sheet = self.open_new()
        self.record(sheet, "ctrl+alt+k", "⌃ Control ⌥ Option K")
        self.choose_type(sheet, "Văn bản")
        self.write(sheet.find(EDITABLE, "Nội dung văn bản cần chèn / chép"), "Xin chào 👋 ")
        self.save(sheet, "Tạo Phím Tắt")
        self.assert_stored("Xin chào 👋", 40, CONTROL | OPTION, "quickText",
                           {"mode": "paste", "text": "Xin chào 👋 ", "restoreClipboard": False})
        self.live("Xin chào 👋", "ctrl+alt+k", (K, "ctrl+alt"), lambda: self.field_text().count("Xin chào 👋 "))

    def test_application(self):
        application, log = counter("application")
        desktop.write_entry(self, "org.example.Paint", application)
        self.start_empty()
        sheet = self.open_new()
        self.record(sheet, "super+k", "⌘ Command K")
        sheet.find("push button", "Bấm vào đây để chọn Ứng dụng từ danh sách...").press()
        picker = self.window.find("dialog", "Chọn Ứng Dụng")
        first_row = picker.find("list item", state="selected").name
        self.assertEqual(self.tab_stops("Tab"), ["Tìm ứng dụng", first_row, "Duyệt file từ ổ cứng...", "Hủy", "Đóng"])
        # Only the sheet in front goes.
        press("Escape")
        self.window.wait_gone("dialog", "Chọn Ứng Dụng")
        self.window.find("dialog", "Thêm Phím Tắt Mới")
        sheet.find("push button", "Bấm vào đây để chọn Ứng dụng từ danh sách...").press()
        picker = self.window.find("dialog", "Chọn Ứng Dụng")
        self.write(picker.find(EDITABLE, "Tìm ứng dụng"), "EXAMPLE.P")
        picker.find("list item", "org.example.Paint").find("push button", "Chọn").press()
        self.window.wait_gone("dialog", "Chọn Ứng Dụng")
        sheet.find("label", "org.example.Paint")
        self.save(sheet, "Tạo Phím Tắt")
        self.assert_stored("org.example.Paint", 40, CMD, "launchApp",
                           f"{desktop.APPLICATIONS}/org.example.Paint.desktop")
        self.live("org.example.Paint", "super+k", (K,), lambda: len(lines(log)))

    def test_system_action(self):
        _, log = counter("rofi")
        self.start_empty(PATH=f"{desktop.HOME}/bin:{os.environ['PATH']}")
        sheet = self.open_new()
        self.record(sheet, "super+alt+k", "⌥ Option ⌘ Command K")
        self.choose_type(sheet, "Hệ thống")
        sheet.find("radio button", "Khoá màn hình", "checked").focus()
        press(*["Down"] * 10)
        self.wait_focused("radio button", "Mở Mission Control")
        sheet.find("radio button", "Mở Mission Control", "checked")
        self.save(sheet, "Tạo Phím Tắt")
        self.assert_stored("Mở Mission Control", 40, CMD | OPTION, "systemAction", "openMissionControl")
        self.live("Mở Mission Control", "super+alt+k", (K, "mod4+alt"), lambda: lines(log).count("-show window"))

    def test_keyboard_alone(self):
        self.start_empty()
        script, log = counter("keyboard")
        press("ctrl+n")
        sheet = self.window.find("dialog", "Thêm Phím Tắt Mới")
        self.wait_focused(EDITABLE, "Tên gợi nhớ")
        press("b", "a", "n", "space", "p", "h", "i", "m")
        self.tab_to("push button", "Ghi phím")
        press("space")
        sheet.find("push button", "Nhấn tổ hợp phím bất kỳ...")
        press("super+k")
        sheet.find("push button", "⌘ Command K")
        self.tab_to("radio button", "Mở App")
        press("Right", "Right", "Right")
        self.wait_focused("radio button", "Script")
        self.tab_to(EDITABLE, "Lệnh Shell Script (zsh)")
        copy(f"'{script}' một")
        press("ctrl+v", "Return", "x", "BackSpace")
        self.tab_to("push button", "Tạo Phím Tắt")
        press("Return")
        self.window.wait_gone("dialog")
        self.assert_stored("ban phim", 40, CMD, "shellScript", f"'{script}' một\n")
        press("Return")
        sheet = self.window.find("dialog", "Chỉnh Sửa Phím Tắt")
        self.wait_focused(EDITABLE, "Tên gợi nhớ")
        press("End", "2", "Return")
        self.window.wait_gone("dialog")
        self.wait_stored("ban phim2", keyCode=40)
        self.other_in_front()
        press("super+k")
        wait_for(lambda: lines(log) == ["một"], "the script")
        self.assertEqual(self.program.output(), [])

    def tab_to(self, role, name):
        element = self.focused()
        for _ in range(MOST_STOPS):
            if (element.role, element.name) == (role, name):
                return
            element = self.move_focus(element, "Tab")
        self.fail(f"Tab never comes to {role} {name}")

    def test_pointer_alone_but_for_what_is_typed(self):
        script, log = counter("pointer")
        self.start_empty()
        self.window.find("push button", "Thêm Phím Tắt Đầu Tiên").click()
        sheet = self.window.find("dialog", "Thêm Phím Tắt Mới")
        sheet.find("push button", "Chưa gán phím tắt").click()
        sheet.find("push button", "Nhấn tổ hợp phím bất kỳ...")
        press("super+k")
        sheet.find("push button", "⌘ Command K")
        sheet.find("push button", "Xoá phím tắt").click()
        sheet.find("push button", "Chưa gán phím tắt")
        sheet.find("push button", "Tạo Phím Tắt").click()
        sheet.find("alert", "Vui lòng nhấn nút 'Ghi phím' để gán tổ hợp phím tắt.")
        sheet.find("push button", "Ghi phím").click()
        sheet.find("push button", "Nhấn tổ hợp phím bất kỳ...")
        press("super+l")
        sheet.find("radio button", "Script").click()
        script_field = sheet.find(EDITABLE, "Lệnh Shell Script (zsh)")
        before = script_field.extents
        subprocess.run(("xdotool", "click", "--repeat", "20", "5"), check=True)
        wait_for(lambda: script_field.extents != before, "the form scrolling")
        self.wait_still(script_field)
        script_field.click()
        self.wait_focused(EDITABLE, "Lệnh Shell Script (zsh)")
        copy(f"'{script}' một")
        press("ctrl+v")
        sheet.find("push button", "Tạo Phím Tắt").click()
        self.window.wait_gone("dialog")
        self.assert_stored("Phím tắt mới", 37, CMD, "shellScript", f"'{script}' một")
        self.row("Phím tắt mới").click(times=2)
        sheet = self.window.find("dialog", "Chỉnh Sửa Phím Tắt")
        sheet.find(EDITABLE, "Tên gợi nhớ").click(times=2)
        press("x")
        sheet.find("push button", "Hủy").click()
        self.window.wait_gone("dialog")
        self.row("Phím tắt mới").find("push button", "Chạy thử").click()
        wait_for(lambda: lines(log) == ["một"], "the script")
        self.assertEqual(self.program.output(), [])

    def wait_still(self, element):
        """Until a movement has come to its end."""
        places = [element.extents]
        def rests():
            time.sleep(0.1)
            places.append(element.extents)
            return places[-1] == places[-2]
        wait_for(rests, f"{element.name!r} coming to rest")

    def test_recording_again_the_keys_that_are_registered(self):
        """They are recorded, not fired, and fire again afterwards."""
        script, log = counter("again")
        self.program = self.start_window([item("Lại", "k", value=f"'{script}' một")])
        self.row("Lại").find("push button", "Chỉnh sửa").press()
        sheet = self.window.find("dialog", "Chỉnh Sửa Phím Tắt")
        self.record(sheet, "super+l", "⌘ Command L")
        self.record(sheet, "super+k", "⌘ Command K")
        sheet.find("push button", "Ghi phím").press()
        sheet.find("push button", "Nhấn tổ hợp phím bất kỳ...")
        press("Escape")
        sheet.find("push button", "⌘ Command K")
        self.save(sheet, "Lưu Thay Đổi")
        self.assertEqual(lines(log), [])
        self.assert_fires(log, "super+k")
        self.assertEqual(lines(log), ["một"])

    def test_sheet_keeps_the_focus_and_what_is_under_it_does_nothing(self):
        self.program = self.start_window([item("Một", "k")])
        before = read_shortcuts()
        sheet = self.open_new()
        self.window.find("check box", "Bật Một").toggle()
        for label in ("Tạm dừng tất cả", "Xóa"):
            self.window.find("push button", label).press()
        for label, middle in (("Mở App", ["Bấm vào đây để chọn Ứng dụng từ danh sách..."]),
                              ("Trang Web", ["Đường dẫn trang web (URL)"]),
                              ("Văn bản", ["Mẫu văn bản có sẵn...", "Nội dung văn bản cần chèn / chép", "Ngày hiện tại",
                                           "Giờ hiện tại", "Ngày & Giờ", "Clipboard hiện tại",
                                           "Chế độ thực thi: Tự động dán (Auto Paste)",
                                           "Khôi phục lại nội dung Clipboard trước đó sau khi dán"]),
                              ("Script", ["Mẫu script có sẵn...", "Lệnh Shell Script (zsh)"]),
                              ("Hệ thống", ["Khoá màn hình"])):
            self.choose_type(sheet, label)
            sheet.find(EDITABLE, "Tên gợi nhớ").focus()
            stops = self.tab_stops("Tab")
            self.assertEqual(stops, ["Tên gợi nhớ", "Ghi phím", label, *middle, "Hủy", "Tạo Phím Tắt"])
            self.assertEqual(self.tab_stops("shift+Tab"), stops[:1] + stops[:0:-1])
        press("ctrl+f", "ctrl+n")
        self.wait_focused(EDITABLE, "Tên gợi nhớ")
        press("Escape")
        self.window.wait_gone("dialog")
        self.window.find("label", "Đang hoạt động")
        self.assertEqual(self.window.search("alert"), [])
        self.assertEqual(read_shortcuts(), before)
        self.assertFalse(is_free(K))
        self.assertEqual(self.program.output(), [])

if __name__ == "__main__":
    unittest.main(verbosity=2)
