"""A GTK program that pastes: prints the text, or the size of the picture, that is on the clipboard."""
import sys

import gi

gi.require_version("Gdk", "3.0")
gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, Gtk  # noqa: E402

clipboard = Gtk.Clipboard.get(Gdk.SELECTION_CLIPBOARD)
if sys.argv[1] == "text":
    sys.stdout.write(clipboard.wait_for_text() or "")
else:
    picture = clipboard.wait_for_image()
    sys.stdout.write(f"{picture.get_width()}x{picture.get_height()}" if picture else "none")
