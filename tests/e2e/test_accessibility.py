"""Every control has a name and a role for assistive technology, and the setup panel is all within reach of the keyboard."""

import time
import unittest

import screen_reader
from program import Program, press, press_in_library
from screen_reader import Atspi, CONTROLS, everything_in, has, is_shown, press_on, window

CARDS = ["fuentes", "burbuja", "video", "zoom", "presentador", "material", "guion"]
OPEN = {"panel.mas": True, **{"panel." + card: True for card in CARDS}}
SETUP = "Nueva grabación"
WELCOME = "Bienvenido a Velmo Studio"
SHORTCUTS = "Atajos de Velmo Studio"


def nameless(top):
    """(role, place) of what can be used and has no name."""
    return [(node.get_role_name(), screen_reader.place(node)) for node in everything_in(top)
            if (node.get_role_name() in CONTROLS or has(node, Atspi.StateType.FOCUSABLE)) and not node.get_name()]


class Names(unittest.TestCase):
    def setUp(self):
        screen_reader.switch_on()

    def check(self, title):
        top = window(title)
        controls = [node for node in everything_in(top) if node.get_role_name() in CONTROLS]
        self.assertGreater(len(controls), 0, title)
        self.assertEqual(nameless(top), [], title)
        return controls

    def test_every_control_of_every_window_has_a_name(self):
        with Program(mode="screenCam", showName=True, presenterStyle="sideRight", **OPEN):
            self.check("Velmo Studio")
            press_in_library("ctrl+n")
            controls = self.check(SETUP)
            self.assertGreater(len(controls), 40, "all cards are open")
            press("Escape")
            press_on("Velmo Studio", "Ayuda", "menu item")
            press_on(None, "Atajos de teclado", "menu item")
            self.check(SHORTCUTS)
            press("Escape")
        with Program(onboarded=False):
            self.check(WELCOME)

    def test_tab_reaches_all_that_the_setup_panel_offers(self):
        with Program(mode="screenCam", showName=True, presenterStyle="sideRight", **OPEN):
            press_in_library("ctrl+n")
            top = window(SETUP)
            time.sleep(0.5)
            # Of a group of choices Tab reaches the chosen one; arrows go on from there.
            wanted = {(node.get_role_name(), node.get_name()) for node in everything_in(top)
                      if node.get_role_name() in CONTROLS and has(node, Atspi.StateType.FOCUSABLE)
                      and has(node, Atspi.StateType.ENABLED) and is_shown_in_panel(node)
                      and not (node.get_role_name() == "radio button" and not has(node, Atspi.StateType.CHECKED))}
            reached = []
            for _ in range(90):
                press("Tab")
                node = screen_reader.focused()
                self.assertIsNotNone(node)
                key = (node.get_role_name(), node.get_name())
                if reached and key == reached[0]:
                    break
                reached.append(key)
            self.assertEqual(wanted - set(reached), set())
            self.assertGreater(len(reached), 35)


def is_shown_in_panel(node):
    """Also what is scrolled out of sight, but not what is put away."""
    return has(node, Atspi.StateType.VISIBLE)


if __name__ == "__main__":
    unittest.main(verbosity=2)
