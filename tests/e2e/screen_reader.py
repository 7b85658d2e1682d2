"""The program as a screen reader sees it: names, roles and places of its controls over AT-SPI."""

import os
import subprocess
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

from program import click, wait_until  # noqa: E402

CONTROLS = {"push button", "check box", "radio button", "toggle button", "text", "slider", "combo box", "list", "menu item",
            "entry", "spin button"}
SETTLE_S = 0.15


def switch_on():
    """To be called before the program starts: from then on it tells what it shows."""
    os.environ.pop("NO_AT_BRIDGE", None)
    os.environ["QT_ACCESSIBILITY"] = "1"
    os.environ["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
    subprocess.run(["dbus-send", "--session", "--print-reply", "--dest=org.a11y.Bus", "/org/a11y/bus",
                    "org.a11y.Bus.GetAddress"], check=True, stdout=subprocess.DEVNULL)


def children(node):
    for index in range(node.get_child_count()):
        try:
            child = node.get_child_at_index(index)
        except GLib.GError:
            continue
        if child:
            yield child


def everything_in(node):
    yield node
    for child in children(node):
        yield from everything_in(child)


def has(node, state):
    return node.get_state_set().contains(state)


def is_shown(node):
    return has(node, Atspi.StateType.SHOWING) and has(node, Atspi.StateType.VISIBLE)


def place(node):
    area = node.get_extents(Atspi.CoordType.SCREEN)
    return area.x, area.y, area.width, area.height


def middle(node):
    x, y, width, height = place(node)
    return x + width // 2, y + height // 2


def program():
    """The program's own node; the one that came last where an earlier one is still going."""
    desktop = Atspi.get_desktop(0)
    found = [node for node in children(desktop) if node.get_name() == "velmo-studio"]
    return found[-1] if found else None


def windows():
    root = program()
    return [node for node in children(root) if is_shown(node)] if root else []


def window(title):
    return wait_until(f"the window {title}", lambda: next((node for node in windows() if node.get_name() == title), None), 20)


def find(title, name, role=None):
    """The control of a window that is called so; absent while it is not there."""
    for top in windows():
        if title is None or top.get_name() == title:
            for node in everything_in(top):
                if node.get_name() == name and (role is None or node.get_role_name() == role) \
                        and (role is not None or node.get_role_name() in CONTROLS):
                    return node
    return None


def control(title, name, role=None):
    return wait_until(f"the control {name}", lambda: find(title, name, role), 20)


def press_on(title, name, role=None):
    """A real click on a control, which is scrolled to where it can be seen first."""
    x, y = middle(bring(title, name, role))
    click(x, y)
    time.sleep(SETTLE_S)


def bring(title, name, role=None):
    """Turns the wheel over the window until the control is inside of its seen part."""
    node = control(title, name, role)
    if title is None:
        return node
    left, top, width, height = place(window(title))
    for _ in range(80):
        x, y, across, down = place(node)
        low, high = top + 90, top + height - 90
        if across and low <= y + down // 2 <= high or down == 0:
            break
        before = y
        click(left + width // 2, top + height // 2, button=5 if y > high - down else 4)
        time.sleep(SETTLE_S)
        if place(node)[1] == before:
            break  # the end of the way
    return node


def focused():
    for top in windows():
        for node in everything_in(top):
            if has(node, Atspi.StateType.FOCUSED) and node.get_role_name() in CONTROLS:
                return node
    return None
