"""A quick text that is only copied: on the clipboard for every other program, with what was there in it."""
import json
import subprocess
import unittest

from tavrin import TestCase, item, press, wait_for, write_shortcuts


def copy_only(text):
    return json.dumps({"mode": "copyOnly", "text": text, "restoreClipboard": False})


def clipboard():
    return subprocess.run(("xclip", "-o", "-selection", "clipboard"), capture_output=True, text=True).stdout


class Clipboard(TestCase):
    def test_text_is_copied_for_other_programs(self):
        write_shortcuts([item("chào", "k", action="quickText", value=copy_only("Xin chào, 👋 thế giới"))])
        program = self.start()
        press("super+k")
        wait_for(lambda: clipboard() == "Xin chào, 👋 thế giới", "the text on the clipboard")
        self.assertEqual(program.end(), 0)
        self.assertEqual(program.output(), [])

    def test_what_another_program_copied_goes_into_the_text(self):
        write_shortcuts([item("trích", "k", action="quickText", value=copy_only("« {clipboard} »"))])
        self.start()
        subprocess.run(("xclip", "-i", "-selection", "clipboard"), input="từ nơi khác".encode(), check=True,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        press("super+k")
        wait_for(lambda: clipboard() == "« từ nơi khác »", "the text around what was copied")


if __name__ == "__main__":
    unittest.main(verbosity=2)
