"""Reads and drives windows through the accessibility tree, as a screen reader does."""
import subprocess
import warnings

import gi

from tavrin import wait_for

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

# What a program needs in its environment to have a tree without a screen reader running.
ENVIRONMENT = {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}

DEEPEST, MOST_CHILDREN = 30, 300


def applications(part):
    """The applications in the tree whose names contain the text, in any case."""
    Atspi.init()
    desktop = Atspi.get_desktop(0)
    found = []
    for index in range(desktop.get_child_count()):
        application = desktop.get_child_at_index(index)
        if application and part.lower() in (application.get_name() or "").lower():
            # What was asked for once would be answered from memory for ever: nobody here listens to events.
            application.set_cache_mask(Atspi.Cache.NONE)
            found.append(application)
    return found


def walk(node, depth=0):
    """The node and all below it, in the order of a screen reader; without what goes meanwhile."""
    try:
        yield node
        if depth < DEEPEST:
            for index in range(min(node.get_child_count(), MOST_CHILDREN)):
                child = node.get_child_at_index(index)
                if child:
                    yield from walk(child, depth + 1)
    except GLib.Error:
        return


class Element:
    """One thing in the tree: what it is called, what state it is in, and what can be done to it."""

    def __init__(self, node):
        self.node = node

    @property
    def name(self):
        return self.node.get_name()

    @property
    def description(self):
        return self.node.get_description()

    @property
    def role(self):
        return self.node.get_role_name()

    @property
    def states(self):
        return {state.value_nick for state in self.node.get_state_set().get_states()}

    @property
    def text(self):
        """What stands in a field."""
        text = Atspi.Text.get_text(self.node, 0, Atspi.Text.get_character_count(self.node))
        # Qt's sign of the end of a paragraph.
        return text.replace("\u2029", "\n")

    @property
    def extents(self):
        """x, y, width and height on the screen."""
        found = Atspi.Component.get_extents(self.node, Atspi.CoordType.SCREEN)
        return found.x, found.y, found.width, found.height

    def perform(self, action):
        with warnings.catch_warnings():
            # What is to be used instead is not answered by Qt 6.4.
            warnings.simplefilter("ignore", DeprecationWarning)
            names = [Atspi.Action.get_action_name(self.node, index)
                     for index in range(Atspi.Action.get_n_actions(self.node))]
        Atspi.Action.do_action(self.node, names.index(action))

    def press(self):
        self.perform("Press")

    def toggle(self):
        self.perform("Toggle")

    def focus(self):
        self.perform("SetFocus")
        self.wait("focused")
        return self

    def is_in(self, state):
        try:
            return state in self.states
        except GLib.Error:
            return False

    def wait(self, state, wanted=True):
        wait_for(lambda: self.is_in(state) == wanted, f"{self.name!r} being {'' if wanted else 'not '}{state}")
        return self

    def click(self, times=1):
        """With the pointer, in its upper part: the lower one of what is high may be scrolled out of sight."""
        x, y, width, height = self.extents
        subprocess.run(("xdotool", "mousemove", "--sync", str(x + width // 2), str(y + min(height // 2, 20)),
                        "click", "--repeat", str(times), "--delay", "50", "1"), check=True)

    def below(self):
        """All that is shown in it, in the order of reading."""
        found = []
        for node in walk(self.node):
            element = Element(node)
            if element.is_in("showing"):
                found.append(element)
        return found

    def search(self, role, name=None, state=None):
        """The elements of the role, name and state that are shown in it."""
        found = []
        for node in walk(self.node):
            try:
                if node.get_role_name() == role and name in (None, node.get_name()):
                    element = Element(node)
                    if {"showing", state or "showing"} <= element.states:
                        found.append(element)
            except GLib.Error:
                continue
        return found

    def find(self, role, name=None, state=None):
        """The first that search() gives, once there is one."""
        found = wait_for(lambda: self.search(role, name, state), f"{role} {name or ''} {state or ''}")
        return found[0]

    def wait_gone(self, role, name=None):
        wait_for(lambda: not self.search(role, name), f"{role} {name or ''} going")


def application(name):
    """The one application of exactly this name, once its window is in the tree."""
    def with_window():
        return [node for node in applications(name) if node.get_name() == name and node.get_child_count()]
    return Element(wait_for(with_window, f"{name} in the accessibility tree")[0])


def focused(element):
    """Where the keys go: the innermost element in it that has the focus, or None."""
    found = [node for node in walk(element.node) if Element(node).is_in("focused")]
    return Element(found[-1]) if found else None
