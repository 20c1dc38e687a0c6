"""A window with a menu bar and a text field; prints what the field holds whenever that changes."""
import gi

gi.require_version("Gtk", "3.0")
from gi.repository import Gtk  # noqa: E402

window = Gtk.Window(title="gtk field")
box = Gtk.Box(orientation=Gtk.Orientation.VERTICAL)
bar = Gtk.MenuBar()
item = Gtk.MenuItem.new_with_mnemonic("_File")
item.set_submenu(Gtk.Menu())
bar.append(item)
entry = Gtk.Entry()
entry.connect("changed", lambda field: print(field.get_text(), flush=True))
box.add(bar)
box.add(entry)
window.add(box)
window.connect("destroy", Gtk.main_quit)
entry.grab_focus()
window.show_all()
Gtk.main()
