"""The class material on the recorded screen: a click opens it and leaves a chapter, and the video does not show the panel."""

import json
import os
import time
import unittest

import screen_reader
from program import Program, Stage, click, judge, luma_of, output, pixel_on_screen, press, wait_until
from test_class_folder import class_folder, kit, text_of

GREY = (0xC8, 0xC8, 0xC8)
LUMA_SLACK = 5
WIDTH, HEAD, ROW = 270, 38, 38
LEFT = 1920 - 290
PANEL = "Velmo Studio · material"


def stand_in_for_xdg_open():
    """Puts a program first on PATH that only notes what it is asked to open; gives the file of its notes."""
    folder = os.path.join(os.environ["DESK_FOLDER"], "stand-ins")
    notes = os.path.join(folder, "opened")
    os.makedirs(folder, exist_ok=True)
    with open(os.path.join(folder, "xdg-open"), "w") as script:
        script.write(f"#!/bin/sh\nprintf '%s\\n' \"$1\" >> '{notes}'\n")
    os.chmod(script.name, 0o755)
    if os.environ["PATH"].split(":")[0] != folder:
        os.environ["PATH"] = folder + ":" + os.environ["PATH"]
    open(notes, "w").close()
    return notes


def lines_of(path):
    with open(path, encoding="utf-8") as file:
        return file.read().splitlines()


def panel():
    return output("xdotool", "search", "--onlyvisible", "--name", PANEL).split()


def middle_of_row(index, items):
    top = (1080 - (items * ROW + 64)) // 2
    return LEFT + WIDTH // 2, top + HEAD + index * ROW + ROW // 2


class KitPanel(unittest.TestCase):
    def setUp(self):
        self.opened = stand_in_for_xdg_open()
        self.guide = os.path.join(os.environ["HOME"], "guía 1.txt")
        with open(self.guide, "w", encoding="utf-8") as file:
            file.write("contenido")
        self.material = kit(("file", "Guía de la clase", self.guide), ("link", "example.org/a", "https://example.org/a"),
                            ("file", "Perdida", "/no/está.pdf"))

    def test_comes_up_with_the_recording_and_a_click_opens_the_item_and_leaves_a_chapter(self):
        corner = (LEFT + WIDTH - 30, middle_of_row(0, 3)[1])  # on the panel, beside the words
        with Stage("plain", "--color", "c8c8c8"), Program(**{"kit.items": self.material}) as program:
            video = program.begin_recording()
            wait_until("the panel", panel)
            focus = output("xdotool", "getwindowfocus")
            time.sleep(1)
            on_screen = pixel_on_screen(*corner)
            click(*middle_of_row(0, 3))
            wait_until("the file to be opened", lambda: lines_of(self.opened))
            time.sleep(1.2)
            click(*middle_of_row(1, 3))
            wait_until("the address to be opened", lambda: len(lines_of(self.opened)) == 2)
            click(*middle_of_row(2, 3))
            time.sleep(1)
            self.assertEqual(output("xdotool", "getwindowfocus"), focus, "the lesson keeps the keyboard")
            self.assertTrue(panel(), "it stays, so that several can be opened")
            entry = program.end_recording(video)
            self.assertEqual(panel(), [])
            folder = class_folder(video)
            record = json.loads(text_of(folder, ".clase.json"))
            frames = judge(video, "--probe", f"{corner[0]},{corner[1]}", "--probe", f"{LEFT + 20},{corner[1]}")["frames"]

        self.assertEqual(lines_of(self.opened), [self.guide, "https://example.org/a"])
        self.assertLess(max(on_screen), 90, "the panel was on the screen")
        for frame in frames:
            for luma, _, _ in frame["probes"]:
                self.assertLess(abs(luma - luma_of(GREY)), LUMA_SLACK, "and is not in the video")
        chapters = record["chapters"]
        self.assertEqual([(chapter["title"], chapter["location"]) for chapter in chapters],
                         [("Guía de la clase", self.guide), ("example.org/a", "https://example.org/a")])
        self.assertEqual([chapter["time"] for chapter in chapters], entry["markers"])
        self.assertGreater(chapters[1]["time"] - chapters[0]["time"], 1)
        index = text_of(folder, "Índice.txt").splitlines()
        self.assertRegex(index[5], r"^00:\d\d Guía de la clase$")
        self.assertEqual(text_of(folder, "Material", "guía 1.txt"), "contenido")

    def test_ctrl_k_and_its_cross_hide_it_and_the_bar_brings_it_back(self):
        screen_reader.switch_on()
        with Stage("motion"), Program(**{"kit.items": self.material}) as program:
            video = program.begin_recording()
            wait_until("the panel", panel)
            time.sleep(1)  # it stands a moment before the keys are held
            press("ctrl+k")
            wait_until("the panel's end", lambda: not panel())
            press("ctrl+k")
            wait_until("the panel again", panel)
            time.sleep(0.5)
            click(LEFT + WIDTH - 25, middle_of_row(0, 3)[1] - ROW)
            wait_until("the panel's end", lambda: not panel())
            screen_reader.press_on("Velmo Studio · controles", "Material de la clase")
            wait_until("the panel from the bar", panel)
            program.end_recording(video)

    def test_without_material_ctrl_k_only_says_so(self):
        with Stage("motion"), Program() as program:
            video = program.begin_recording()
            press("ctrl+k")
            time.sleep(1)
            self.assertEqual(panel(), [])
            program.end_recording(video)


if __name__ == "__main__":
    unittest.main(verbosity=2)
