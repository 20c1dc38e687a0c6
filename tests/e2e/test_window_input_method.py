"""Vietnamese is typed by Telex into the window's fields, as into any other program's."""
import unittest

from input_methods import Fcitx, IBus
from tavrin import item, press, wait_for
from window import EDITABLE, WindowCase

TELEX = {"Tiếng Việt": ("shift+t", "i", "e", "e", "s", "n", "g", "space", "shift+v", "i", "e", "e", "j", "t")}


class InputMethods(WindowCase):
    def test_ibus(self):
        self.use(IBus)

    def test_fcitx(self):
        self.use(Fcitx)

    def use(self, kind):
        self.input_method = kind(self)
        program = self.start_window([item("Gõ tiếng việt", "k"), item("Khác", "l")], QT_IM_MODULE=kind.MODULE)
        search = self.window.find(EDITABLE, "Tìm kiếm").focus()
        self.type(search, "Tiếng Việt")
        self.wait_rows("Gõ tiếng việt")
        press("ctrl+n")
        sheet = self.window.find("dialog", "Thêm Phím Tắt Mới")
        self.wait_focused(EDITABLE, "Tên gợi nhớ")
        self.type(sheet.find(EDITABLE, "Tên gợi nhớ"), "Tiếng Việt")
        # While it records, the input method makes no letters of the keys.
        sheet.find("push button", "Ghi phím").press()
        sheet.find("push button", "Nhấn tổ hợp phím bất kỳ...")
        press("e")
        sheet.find("push button", "E")
        sheet.find("radio button", "Script").press()
        script = sheet.find(EDITABLE, "Lệnh Shell Script (zsh)").focus()
        self.type(script, "Tiếng Việt")
        sheet.find("push button", "Tạo Phím Tắt").press()
        self.wait_stored("Tiếng Việt", keyCode=14, modifiers=0, actionValue="Tiếng Việt")
        self.assertEqual(program.output(), [])

    def type(self, field, text):
        # Asked now, it has heard of the field that the program has told it of before.
        self.input_method.switch_on()
        press(*TELEX[text])
        # A word may be open until something follows it.
        press("Right")
        wait_for(lambda: field.text == text, lambda: f"{text!r} instead of {field.text!r}")


if __name__ == "__main__":
    unittest.main(verbosity=2)
