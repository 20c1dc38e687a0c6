"""Whatever the file of shortcuts or a paste brings: the window goes on and answers."""
import os
import unittest

import desktop
from tavrin import CMD, CONTROL, OPTION, item, mark, press, wait_for
from window import EDITABLE, WindowCase, copy

# Sanitizers make each of the many allocations behind a long text slow.
HUGE = int(os.environ.get("TAVRIN_TEST_HUGE", 100_000))
NAMES = {
    "long": "dài " * (HUGE // 4),
    "long, without a space": "W" * HUGE,
    "letters and marks": "e\u0302\u0301 " * (HUGE // 4),
    "one letter with many marks": "e" + "\u0301" * 1000,
    "from right to left": "مرحبا " * (HUGE // 6),
    "turned around": "\u202eABC مرحبا\u202c",
    "emoji": "👩‍👩‍👧‍👦 🏳️‍🌈 " * 60,
    "lines": "dòng\r\n\u2028\t" * 2000,
    "markup": "<b>đậm</b> <img src='/dev/zero'> &amp;",
    "empty": "",
}


class BadInput(WindowCase):
    def assert_answers(self, program):
        """A search finds a row, and its key still works."""
        self.search_for("dòng cuối")
        self.wait_rows("Dòng cuối cùng")
        self.search_for("")
        self.assert_fires(self.path, "super+m")
        self.assertEqual(program.output(), [])

    def last(self):
        script, self.path = mark("last")
        return item("Dòng cuối cùng", "m", value=script)

    def test_names_of_every_kind_in_the_file(self):
        odd = [item(name, key, CMD | OPTION | CONTROL, value=name or "true") for key, name in enumerate(NAMES.values())]
        program = self.start_window(odd + [self.last()])
        for key in ("End", "Home", *["Down"] * (len(odd) + 1)):
            press(key)
        self.wait_selected("Dòng cuối cùng")
        for text in ("👦", "مرحبا", "<img"):
            self.search_for(text)
            wait_for(lambda: 1 <= len(self.window.search("list item")) <= 2, f"the rows with {text}")
        self.assert_answers(program)

    def test_pasted_into_the_search_and_the_editor(self):
        program = self.start_window([self.last()])
        for what, text in NAMES.items():
            with self.subTest(what):
                self.paste_everywhere(text)
        self.assert_answers(program)

    def paste_everywhere(self, text):
        self.paste(self.window.find(EDITABLE, "Tìm kiếm"), text)
        self.search_for("")
        press("ctrl+n")
        sheet = self.window.find("dialog", "Thêm Phím Tắt Mới")
        name = sheet.find(EDITABLE, "Tên gợi nhớ")
        self.paste(name, text)
        self.assertFalse({"\n", "\r", "\u2028"} & set(name.text))
        for label, field in (("Trang Web", "Đường dẫn trang web (URL)"), ("Script", "Lệnh Shell Script (zsh)"),
                             ("Văn bản", "Nội dung văn bản cần chèn / chép")):
            sheet.find("radio button", label).press()
            self.paste(sheet.find(EDITABLE, field), text)
        press("Escape")
        self.window.wait_gone("dialog")

    def paste(self, field, text):
        """And a letter behind it, which shows that the field still answers."""
        field.focus()
        copy(text)
        press("ctrl+v", "End", "z")
        wait_for(lambda: field.text.endswith("z") and len(field.text) >= len(text.strip()) // 2, f"{field.name!r} with the pasted text")

    def test_application_that_was_removed(self):
        desktop.write_entry(self, "org.example.Kept", desktop.write_script(f"{desktop.HOME}/bin/kept", "true"))
        gone = f"{desktop.APPLICATIONS}/org.example.Gone.desktop"
        program = self.start_window([
            item("Mất", "k", action="launchApp", value=gone), item("Hỏng", "l", action="launchApp", value=""), self.last()])
        self.row("Mất").find("push button", "Chạy thử").press()
        self.row("Hỏng").find("push button", "Chạy thử").press()
        self.row("Mất").find("push button", "Chỉnh sửa").press()
        sheet = self.window.find("dialog", "Chỉnh Sửa Phím Tắt")
        sheet.find("push button", "Đổi Ứng Dụng...")
        press("Escape")
        self.window.wait_gone("dialog")
        self.assert_answers(program)


if __name__ == "__main__":
    unittest.main(verbosity=2)
