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
        input_method = kind(self)
        program = self.start_window([item("Gõ tiếng việt", "k"), item("Khác", "l")], QT_IM_MODULE=kind.MODULE)
        search = self.window.find(EDITABLE, "Tìm kiếm").focus()
        input_method.switch_on()
        self.type(search, "Tiếng Việt")
        self.wait_rows("Gõ tiếng việt")
        self.assertEqual(program.output(), [])

    def type(self, field, text):
        press(*TELEX[text])
        # A word may be open until something follows it.
        press("Right")
        wait_for(lambda: field.text == text, lambda: f"{text!r} instead of {field.text!r}")


if __name__ == "__main__":
    unittest.main(verbosity=2)
