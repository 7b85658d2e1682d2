"""Without the mouse: what the library offers, and Escape, which leaves every window and menu and changes nothing."""

import os
import subprocess
import time
import unittest

import screen_reader
from program import Program, Stage, click, press, press_in_library, wait_until
from screen_reader import Atspi, CONTROLS, bring, everything_in, has, is_shown, middle, press_on, window

LIBRARY = "Velmo Studio"
SETUP = "Nueva grabación"
BAR = "Velmo Studio · controles"
SETTLE_S = 0.4


def record_something(program):
    with Stage("still"):
        path = program.begin_recording()
        time.sleep(1.5)
        program.end_recording(path)
    wait_until("the library", program.library_window)
    time.sleep(SETTLE_S)


def is_open(title):
    return any(top.get_name() == title for top in screen_reader.windows())


def leaves(title):
    """Escape ends the window that is called so."""
    window(title)
    time.sleep(SETTLE_S)
    press("Escape")
    wait_until(f"the end of {title}", lambda: not is_open(title), 15)


class Keyboard(unittest.TestCase):
    def setUp(self):
        screen_reader.switch_on()

    def test_tab_reaches_all_that_the_library_offers(self):
        with Program() as program:
            record_something(program)
            top = window(LIBRARY)
            wanted = {node.get_name() for node in everything_in(top)
                      if node.get_role_name() in CONTROLS and node.get_role_name() != "menu item"
                      and has(node, Atspi.StateType.FOCUSABLE) and has(node, Atspi.StateType.ENABLED) and is_shown(node)}
            self.assertGreaterEqual(wanted, {"Carpeta", "Nueva grabación", "Tus grabaciones"})
            reached = set()
            for _ in range(20):
                press("Tab")
                time.sleep(0.1)
                node = focused_in(top)
                if node is not None:
                    reached.add(node.get_name())
            self.assertEqual(wanted - reached, set())

    def test_a_recording_is_renamed_by_keys_alone(self):
        with Program() as program:
            record_something(program)
            press_in_library("Menu")
            time.sleep(SETTLE_S)
            press("Down", "Down", "Return")
            window("Renombrar grabación")
            time.sleep(SETTLE_S)
            subprocess.run(["xdotool", "type", "--delay", "30", "Derivadas"], check=True)
            press("Return")
            wait_until("the new name", lambda: any("Derivadas" in os.path.basename(path) or
                                                   "Derivadas" in str(program.metadata()) for path in program.videos()))

    def test_escape_leaves_each_window_of_the_library(self):
        with Program() as program:
            record_something(program)
            before = program.videos(), program.metadata()
            for menu, entry, title in (("Velmo Studio", "Acerca de Velmo Studio", "Acerca de Velmo Studio"),
                                       ("Ayuda", "Atajos de teclado", "Atajos de Velmo Studio")):
                press_on(LIBRARY, menu, "menu item")
                press_on(None, entry, "menu item")
                leaves(title)
            press_in_library("Menu")
            time.sleep(SETTLE_S)
            press("Escape")  # the menu alone
            for downs, title in ((2, "Renombrar grabación"), (5, "¿Mover a la papelera?")):
                press_in_library("Menu")
                time.sleep(SETTLE_S)
                press(*["Down"] * downs, "Return")
                leaves(title)
            self.assertEqual((program.videos(), program.metadata()), before)
            self.assertTrue(program.library_window())

    def test_escape_leaves_a_list_and_a_question_of_the_setup_panel_before_the_panel(self):
        with Program() as program:
            press_in_library("ctrl+n")
            window(SETUP)
            press_on(SETUP, "Perfiles")
            time.sleep(SETTLE_S)
            press("Escape")
            time.sleep(SETTLE_S)
            self.assertTrue(is_open(SETUP), "Escape was the menu's")
            press_on(SETUP, "Perfiles")
            time.sleep(SETTLE_S)
            press("Up", "Return")  # the last entry
            leaves("Guardar configuración")
            self.assertTrue(is_open(SETUP))
            leaves(SETUP)
            self.assertIsNone(program.process.poll())

    def test_escape_at_a_question_of_the_bar_keeps_the_recording(self):
        with Stage("still"), Program() as program:
            path = program.begin_recording()
            videos = program.videos()
            time.sleep(1)
            for button, title in (("Empezar de nuevo", "¿Empezar de nuevo?"), ("Descartar", "¿Descartar esta grabación?")):
                press_on(BAR, button)
                leaves(title)
                self.assertEqual(program.videos(), videos)
            x, y = middle(bring(BAR, "Grabar solo una zona"))
            before = set(program.windows())
            click(x, y, button=3)
            menus = wait_until("the bar's menu", lambda: set(program.windows()) - before)
            press("Escape")
            wait_until("the menu's end", lambda: not menus & set(program.windows()))
            size = os.path.getsize(path)
            program.end_recording(path)
            self.assertEqual(program.videos(), videos)
            self.assertGreaterEqual(os.path.getsize(path), min(size, 200))


def focused_in(top):
    return next((node for node in everything_in(top) if has(node, Atspi.StateType.FOCUSED)
                 and node.get_role_name() in CONTROLS), None)


if __name__ == "__main__":
    unittest.main(verbosity=2)
