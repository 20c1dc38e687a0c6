#!/usr/bin/python3
"""Prints the names of everything that the application shows, as a screen reader finds it.

usage: accessible_texts.py APPLICATION   (a part of its accessible name, in any case)
"""
import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

DEEPEST, MOST_CHILDREN = 30, 300


def walk(node, depth):
    try:
        print(node.get_name())
        if depth < DEEPEST:
            for index in range(min(node.get_child_count(), MOST_CHILDREN)):
                child = node.get_child_at_index(index)
                if child:
                    walk(child, depth + 1)
    except GLib.Error:
        # It went while we were looking.
        return


Atspi.init()
desktop = Atspi.get_desktop(0)
for number in range(desktop.get_child_count()):
    application = desktop.get_child_at_index(number)
    if application and sys.argv[1].lower() in (application.get_name() or "").lower():
        walk(application, 0)
