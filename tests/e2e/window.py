"""The main window of the running program, driven through its accessibility tree and by keys and pointer."""
import subprocess

from gi.repository import GLib

import accessibility
from tavrin import TestCase, is_free, press, read_shortcuts, wait_for, write_shortcuts

TITLES = ["Tất cả", "Mở Ứng dụng", "Mở Đường dẫn Web", "Văn bản & Clipboard", "Chạy Script / Lệnh", "Hành động Hệ thống"]
EDITABLE = "text"
MOST_STOPS = 60


def copy(text):
    subprocess.run(("xclip", "-selection", "clipboard", "-in"), input=text.encode(), check=True,
                   stdout=subprocess.DEVNULL)


class WindowCase(TestCase):
    """What a test finds and does in the window; `window` is its tree."""

    def start_window(self, items, **environment):
        write_shortcuts(items)
        program = self.start(**accessibility.ENVIRONMENT, **environment)
        self.window = accessibility.application("Tavrin")
        self.window.find("frame", state="active")
        return program

    def row(self, name):
        """The row of the shortcut; its name is followed by the combination in brackets."""
        def rows():
            return [row for row in self.window.search("list item") if row.name.rpartition(" (")[0] == name]
        return wait_for(rows, f"the row of {name}")[0]

    def row_names(self):
        """From top to bottom; the tree has the rows in the order in which the view has made them."""
        def name_and_place(row):
            return row.extents[1], row.name.rpartition(" (")[0]
        try:
            return [name for _, name in sorted(map(name_and_place, self.window.search("list item")))]
        except GLib.Error:
            # One of them went while we were looking.
            return []

    def wait_rows(self, *names):
        wait_for(lambda: self.row_names() == list(names), lambda: f"{names} being listed instead of {self.row_names()}")

    def focused(self):
        return accessibility.focused(self.window)

    def wait_focused(self, role, name):
        def is_there():
            element = self.focused()
            return element and (element.role, element.name) == (role, name)
        wait_for(is_there, f"{role} {name} having the focus instead of {self.focused()}")

    def tab_stops(self, key):
        """Where the focus goes until it is back where it was."""
        stops = []
        element = self.focused()
        while not stops or element.name != stops[0]:
            self.assertLess(len(stops), MOST_STOPS, stops)
            stops.append(element.name)
            element = self.move_focus(element, key)
        return stops

    def move_focus(self, element, key):
        """Presses a key that takes the focus away from the element; where it goes."""
        press(key)
        element.wait("focused", False)
        return wait_for(self.focused, f"{key} leading somewhere from {element.name!r}")

    def write(self, field, text):
        """Replaces what stands in a field, by its keys."""
        field.focus()
        press("ctrl+a")
        if text:
            copy(text)
            press("ctrl+v")
        else:
            press("BackSpace")
        wait_for(lambda: field.text == text, f"{text[:40]!r} in {field.name!r}")

    def search_for(self, text):
        self.write(self.window.find(EDITABLE, "Tìm kiếm"), text)

    def stored(self, name):
        """The shortcut as the file has it, or None."""
        return next((item for item in read_shortcuts() if item["name"] == name), None)

    def wait_stored(self, name, **values):
        def is_stored():
            item = self.stored(name)
            return item and all(item[key] == value for key, value in values.items())
        wait_for(is_stored, f"{name} with {values} in the file")

    def wait_free(self, key, modifiers="mod4", wanted=True):
        wait_for(lambda: is_free(key, modifiers) == wanted, f"{key} being {'free' if wanted else 'taken'}")

    def wait_selected(self, name):
        wait_for(lambda: "selected" in self.row(name).states, f"{name} being selected")

    def alert(self):
        return self.window.find("alert", "Xác nhận xóa phím tắt")

    def wait_no_alert(self):
        self.window.wait_gone("alert")
