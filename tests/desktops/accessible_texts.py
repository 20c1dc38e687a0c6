#!/usr/bin/python3
"""Prints the names of everything that the application shows, as a screen reader finds it.

usage: accessible_texts.py APPLICATION   (a part of its accessible name, in any case)
"""
import os
import sys

from gi.repository import GLib

sys.path.append(f"{os.path.dirname(os.path.abspath(__file__))}/../e2e")

from accessibility import applications, walk  # noqa: E402 (found by the path above)

for application in applications(sys.argv[1]):
    for node in walk(application):
        try:
            print(node.get_name())
        except GLib.Error:
            # It went while we were looking.
            continue
