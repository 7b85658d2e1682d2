"""The first session of a new user: an account without anything of the program, and all by clicks on what is to be seen."""

import json
import os
import subprocess
import time
import unittest

import screen_reader
from program import NOTHING, Program, click, judge, output, pixel_on_screen, press, wait_until
from screen_reader import control, everything_in, is_shown, middle, place, press_on, window
from test_kit_panel import lines_of, stand_in_for_xdg_open

WELCOME = "Bienvenido a Velmo Studio"
LIBRARY = "Velmo Studio"
SETUP = "Nueva grabación"
BAR = "Velmo Studio · controles"
PALETTE = "Paleta de dibujo"
KIT = "Velmo Studio · material"
SCRIPT = "Velmo Studio · guion"
SCRIPT_FIELD = "Escribe o pega lo que vas a decir. Mientras grabas, sube solo debajo de la cámara"
RED, BRAND, SAND = (0xFF, 0x45, 0x3A), (0x1F, 0xA9, 0x71), (0xF3, 0xEF, 0xE6)
SHOTS = os.environ.get("VELMO_SHOTS")  # a folder in which to leave a picture of each step


def look(name):
    if SHOTS:
        time.sleep(0.4)
        subprocess.run(["import", "-window", "root", os.path.join(SHOTS, name + ".png")], check=True)


def shown(title):
    return output("xdotool", "search", "--onlyvisible", "--name", title).split()


def overlap(a, b):
    return a[0] < b[0] + b[2] and b[0] < a[0] + a[2] and a[1] < b[1] + b[3] and b[1] < a[1] + a[3]


def drag(start, end, steps=12):
    chain = ["mousemove", *map(str, start), "mousedown", "1"]
    for i in range(1, steps + 1):
        point = [str(round(a + (b - a) * i / steps)) for a, b in zip(start, end)]
        chain += ["mousemove", *point, "sleep", "0.02"]
    subprocess.run(["xdotool", *chain, "mouseup", "1"], check=True)


def near(a, b, slack=12):
    return all(abs(x - y) <= slack for x, y in zip(a, b))


def speak():
    """Something to hear, into the virtual microphone, until it is ended."""
    command = "ffmpeg -v quiet -f lavfi -i sine=330:duration=120 -f wav - | paplay --device=micfeed"
    return subprocess.Popen(["bash", "-c", command],
                            start_new_session=True)


class FirstSession(unittest.TestCase):
    def setUp(self):
        screen_reader.switch_on()
        self.opened = stand_in_for_xdg_open()

    def settings(self, program):
        with open(os.path.join(program.config, "defaults.json"), encoding="utf-8") as file:
            return json.load(file)

    def wait_setting(self, program, key, accepts):
        wait_until(f"the setting {key}", lambda: accepts(self.settings(program).get(key)), 15)

    def write(self, text):
        subprocess.run(["xdotool", "type", "--delay", "12", text], check=True)

    def test_from_an_empty_account_to_the_finished_class(self):
        voice = speak()
        try:
            with Program(NOTHING, arguments=["--synthetic-cameras", "--no-camera-counter"]) as program:
                self.be_welcomed(program)
                self.prepare(program)
                video = self.begin(program)
                self.teach(program)
                press_on(BAR, "Terminar y guardar")
                entry = program.wait_saved(video)
                self.find_the_class(program)
        finally:
            os.killpg(voice.pid, 15)
            voice.wait()
        self.judge(video, entry)

    def be_welcomed(self, program):
        wait_until("screen, camera and microphone to be found",
                   lambda: sum(node.get_name() == "Listo" for node in everything_in(window(WELCOME)) if is_shown(node)) == 3, 20)
        look("01-bienvenida")
        press_on(WELCOME, "Empezar")
        self.wait_setting(program, "onboarded", bool)
        time.sleep(0.5)
        look("02-biblioteca-vacia")
        press_on(LIBRARY, "Nueva grabación", "push button")
        window(SETUP)

    def prepare(self, program):
        wait_until("the teacher to be seen", lambda: shown("Velmo Studio · cámara"), 15)
        time.sleep(1.5)
        look("03-panel")
        x, y, _, _ = screen_reader.place(control(SETUP, "Habla: si se mueve, te escucha", "label"))
        wait_until("the level of the voice", lambda: near(pixel_on_screen(x + 6, y - 9), BRAND), 10)
        press_on(SETUP, "Más opciones")
        time.sleep(0.4)
        look("04-mas-opciones")
        press_on(SETUP, "Material de la clase")
        press_on(SETUP, "Pega un link o un video de YouTube")
        self.write("example.org/lluvias")
        press_on(SETUP, "Agregar")
        self.wait_setting(program, "kit.items", bool)
        look("05-material")
        press_on(SETUP, "Guion (teleprompter)")
        press_on(SETUP, SCRIPT_FIELD, "text")
        self.write("Hola a todos. Hoy seguimos el viaje de una gota de agua. El sol calienta el mar y el agua sube. ")
        self.wait_setting(program, "scriptText", lambda text: text and "gota de agua" in text)
        look("06-guion")

    def begin(self, program):
        press_on(SETUP, "Comenzar grabación")
        wait_until("the countdown", lambda: shown("Velmo Studio · cuenta"), 10)
        look("07-cuenta-regresiva")
        video = wait_until("a new video file", program.videos)[0]
        wait_until("the first samples", lambda: os.path.getsize(video) > 200)
        for surface in (BAR, KIT, SCRIPT):
            wait_until(surface, lambda: shown(surface), 15)
        time.sleep(1)
        look("08-grabando")
        return video

    def teach(self, program):
        press_on(SCRIPT, "Empezar")
        press_on(BAR, "Pausar")
        control(BAR, "Reanudar")
        look("09-pausa")
        press_on(BAR, "Reanudar")
        press_on(BAR, "Marcador")
        look("10-marcador")
        self.draw()
        press_on(BAR, "Zoom: acercar donde está el mouse")
        control(BAR, "Volver a la vista normal")
        time.sleep(1)
        look("12-zoom")
        press_on(BAR, "Volver a la vista normal")
        time.sleep(1)
        self.change_scenes()
        press_on("Material de la clase", "example.org/lluvias")
        wait_until("the page to be opened", lambda: "https://example.org/lluvias" in lines_of(self.opened), 10)
        look("15-material-abierto")
        press_on(BAR, "Ocultar el guion")
        wait_until("the script's end", lambda: not shown(SCRIPT), 10)

    def draw(self):
        press_on(BAR, "Dibujar sobre la pantalla")
        control(PALETTE, "Listo")
        width, height = map(int, output("xdotool", "getdisplaygeometry").split())
        start, end = (round(width * 0.35), round(height * 0.55)), (round(width * 0.55), round(height * 0.55))
        drag(start, end)
        look("11-dibujo")
        self.assertFalse(overlap(place(window(PALETTE)), place(window(SCRIPT))), "the script can be read while drawing")
        self.ink = ((start[0] + end[0]) // 2, start[1])
        wait_until("the ink", lambda: near(pixel_on_screen(*self.ink), RED), 5)
        time.sleep(0.5)
        press_on(PALETTE, "Borrar todo")
        press_on(PALETTE, "Listo")
        time.sleep(0.5)

    def change_scenes(self):
        press_on(BAR, "Vista del video: pantalla y burbuja, solo tú, tú al lado o tú en columna")
        time.sleep(0.4)
        look("13-menu-de-vistas")
        x, y = middle(control(BAR, "Terminar y guardar"))
        self.assertTrue(near(pixel_on_screen(x - 45, y), SAND), "the menu leaves the bar to be seen")
        press("Down", "Down", "Return")
        time.sleep(2)
        look("14-solo-tu")
        press("ctrl+1")
        time.sleep(1.5)

    def find_the_class(self, program):
        time.sleep(1)
        look("16-biblioteca")

    def judge(self, video, entry):
        self.assertGreaterEqual(len(entry["markers"]), 2, "the mark and the material")
        self.assertIn("example.org/lluvias", entry["titles"])
        seen = judge(video, "--probe", f"{self.ink[0]},{self.ink[1]}")
        self.assertEqual(seen["decodeErrors"], 0)
        self.assertEqual({stream["type"] for stream in seen["streams"]}, {"video", "audio"})
        self.assertTrue(seen["sounds"][0], "the teacher is heard")


if __name__ == "__main__":
    unittest.main(verbosity=2)
