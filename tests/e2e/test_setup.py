"""A recording is prepared by real clicks on the panel's own controls, on a small screen, and the first run is gone through."""

import json
import os
import time
import unittest

import screen_reader
from program import Program, click, press, press_in_library, wait_until
from screen_reader import bring, find, middle, place, press_on, window

SETUP = "Nueva grabación"
WELCOME = "Bienvenido a Velmo Studio"
SCREEN = (1366, 768)


class Setup(unittest.TestCase):
    def setUp(self):
        screen_reader.switch_on()

    def settings(self, program):
        with open(os.path.join(program.config, "defaults.json"), encoding="utf-8") as file:
            return json.load(file)

    def wait_setting(self, program, key, value):
        wait_until(f"{key} to be {value!r}", lambda: self.settings(program).get(key) == value, 15)

    def open_panel(self):
        press_in_library("ctrl+n")
        window(SETUP)
        time.sleep(0.4)

    def choose(self, *keys):
        """In the menu that has just opened; Qt's pop-ups are not in the tree."""
        time.sleep(0.3)
        for key in (*keys, "Return"):
            press(key)
            time.sleep(0.1)

    def type_into(self, name, text):
        press_on(SETUP, name)
        press("ctrl+a")
        for letter in text:
            press({" ": "space", "é": "eacute"}.get(letter, letter))

    def test_a_class_is_prepared_and_recorded_by_clicks(self):
        with Program(mode="cam", micID="") as program:
            before = set(program.videos())
            self.open_panel()
            press_on(SETUP, "Pantalla", "radio button")
            self.wait_setting(program, "mode", "screen")
            press_on(SETUP, "Micrófono")
            self.choose("Up")
            self.wait_setting(program, "micID", "none")
            press_on(SETUP, "Más opciones")
            self.wait_setting(program, "panel.mas", True)
            press_on(SETUP, "Zoom y señalar")
            self.wait_setting(program, "panel.zoom", True)
            press_on(SETUP, "Mucho", "radio button")
            self.wait_setting(program, "zoomLevel", 3)
            press_on(SETUP, "Acercar automáticamente al hacer clic")
            self.wait_setting(program, "zoomAuto", True)
            press_on(SETUP, "Comenzar grabación")
            video = wait_until("a new video file", lambda: set(program.videos()) - before).pop()
            wait_until("the first samples", lambda: os.path.getsize(video) > 200)
            self.assertIsNone(find(SETUP, "Comenzar grabación"), "the panel is away while recording")
            time.sleep(1)
            program.end_recording(video)

    def test_a_name_is_typed_and_kept(self):
        with Program(mode="screenCam") as program:
            self.open_panel()
            press_on(SETUP, "Mostrar mi nombre bajo la cámara")
            self.wait_setting(program, "showName", True)
            self.type_into("Tu nombre", "Ana Paz")
            self.wait_setting(program, "presenterName", "Ana Paz")

    def test_a_profile_is_saved_applied_and_removed(self):
        with Program(mode="screen") as program:
            self.open_panel()
            press_on(SETUP, "Perfiles")
            self.choose("Down")
            window("Guardar configuración")
            for letter in "Curso":
                press(letter)
            press("Return")
            self.wait_setting(program, "perfil.actual", "Curso")
            press_on(SETUP, "Cámara", "radio button")
            self.wait_setting(program, "mode", "cam")
            press_on(SETUP, "Perfiles")
            self.choose("Down")
            self.wait_setting(program, "mode", "screen")
            press_on(SETUP, "Perfiles")
            self.choose("Up", "Right")
            wait_until("the profile's end", lambda: "Curso" not in self.settings(program).get("perfiles", {}), 15)

    def test_two_quick_clicks_start_one_recording(self):
        with Program(mode="screen") as program:
            before = set(program.videos())
            self.open_panel()
            x, y = middle(bring(SETUP, "Comenzar grabación"))
            click(x, y)
            click(x, y)
            video = wait_until("a new video file", lambda: set(program.videos()) - before).pop()
            time.sleep(1.5)
            program.end_recording(video)
            self.assertEqual(len(set(program.videos()) - before), 1)

    def test_escape_closes_the_panel_and_it_stays_on_a_small_screen(self):
        cards = {"panel." + card: True for card in ("fuentes", "burbuja", "video", "zoom", "presentador", "guion")}
        with Program(mode="screenCam", showName=True, **{"panel.mas": True}, **cards) as program:
            self.open_panel()
            panel = window(SETUP)
            x, y, width, height = place(panel)
            self.assertGreaterEqual(x, 0)
            self.assertGreaterEqual(y, 0)
            self.assertLessEqual(x + width, SCREEN[0])
            last = middle(bring(SETUP, "Super", "radio button"))
            self.assertLess(last[1], SCREEN[1], "the last control can be scrolled to")
            click(*last)
            self.wait_setting(program, "shortcutModifier", "super")
            press("Escape")
            wait_until("the panel's end", lambda: find(SETUP, "Cerrar") is None, 15)
            self.assertIsNone(program.process.poll())

    def test_the_first_run_welcomes_and_leads_to_the_library(self):
        with Program(onboarded=False) as program:
            top = window(WELCOME)
            words = lambda: {node.get_name() for node in screen_reader.everything_in(top)
                             if screen_reader.is_shown(node)}
            wait_until("screen and microphone to be found", lambda: "Listo" in words(), 20)
            self.assertIn("Grabación de pantalla", words())
            self.assertFalse(self.settings(program)["onboarded"])
            press_on(WELCOME, "Empezar")
            self.wait_setting(program, "onboarded", True)
            wait_until("the welcome's end", lambda: find(WELCOME, "Empezar") is None, 15)
            self.assertTrue(program.library_window())


if __name__ == "__main__":
    unittest.main(verbosity=2)
