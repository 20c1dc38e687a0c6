"""KDE Plasma: kwin_x11, plasmashell, Dolphin."""
import whole_desktop
from whole_desktop import DesktopCase, Everywhere, NotPossible
from machine import run
from plasma import PlasmaChecks
from screen import active_window, is_active


class Plasma(Everywhere, PlasmaChecks, DesktopCase):
    @classmethod
    def start_desktop(cls):
        cls.machine.start_system_bus()
        cls.enter_plasma()
        cls.machine.start("kwin_x11")
        cls.start_plasma()

    def test_10_hidden_files(self):
        """Hidden files: Dolphin's open window shows them, and no longer"""
        self.open_dolphin()
        self.check_hidden_files("dolphin")
        self.end_dolphin()

    def shade(self):
        """Mean brightness of a new window of the editor, 0 to 1."""
        self.open_editor("shade.txt")
        self.wait(lambda: is_active("shade.txt"), "the editor")
        told = run("convert", f"x:{active_window().id}", "-colorspace", "Gray", "-format", "%[fx:mean]", "info:")
        self.close_editor()
        return float(told)

    def test_12_dark_mode(self):
        """Dark mode: KWrite that starts now is dark, then light again"""
        self.wait(lambda: self.color_scheme() == "BreezeLight", "the light scheme")
        self.assertGreater(self.shade(), 0.6)
        self.press_action("toggleDarkMode")
        self.wait(lambda: self.color_scheme() == "BreezeDark", "the dark scheme")
        self.assertLess(self.shade(), 0.4)
        self.press_action("toggleDarkMode")
        self.wait(lambda: self.color_scheme() == "BreezeLight", "the light scheme again")
        self.assertGreater(self.shade(), 0.6)

    def test_13_region(self):
        """Region to the clipboard with Spectacle, the mouse and Return; cancelled with Escape"""
        self.check_region("spectacle", confirm="Return")

    def test_17_display_off(self):
        """Display off"""
        raise NotPossible("no X server without hardware can turn its display off")


if __name__ == "__main__":
    whole_desktop.main()
