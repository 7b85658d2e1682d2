"""The teacher in the finished file: the bubble as it stands on the screen, and scenes by their keys."""

import random
import subprocess
import time
import unittest

from hands import Hands
from picture import (FIRST_BUBBLE, HEIGHT, SECOND_BUBBLE, WALL, WIDTH, LastFrame, bubble_areas, edges, screen_pixels, wall,
                     yuv)
from program import Program, luma_of, press

CAMERA = (0xC0, 0x60, 0x30)
SECOND = (0x30, 0x70, 0xC0)
ROOM = 22  # of a bubble's window around the bubble


def source(color):
    return "lavfi:color=c=0x%02x%02x%02x:size=1280x720:rate=30" % color


FLAT = ["--camera-source", source(CAMERA)]
BOTH = [*FLAT, "--camera-source", source(SECOND)]
PLAIN = {"mode": "screenCam", "micID": "none", "ringStyle": "none", "softShadow": False}


class Seen:
    """A bubble as the screen shows it, to be held against the finished file: its edges along the two lines through its
    middle, and its colour there."""

    def __init__(self, area, color):
        self.x, self.y, self.width, self.height = area
        self.column, self.line = self.x + self.width // 2, self.y + self.height // 2
        self.color = color
        rows = screen_pixels(*area)
        self.across = [luma_of(rgb) for rgb in rows[self.height // 2]]
        self.down = [luma_of(row[self.width // 2]) for row in rows]
        self.middle = yuv(rows[self.height // 2][self.width // 2])

    def compare(self, test, path):
        frame = LastFrame(path)
        limits = luma_of(WALL), luma_of(self.color)
        for name, on_screen, in_file in (
                ("across", self.across, frame.row(self.line)[self.x:self.x + self.width]),
                ("down", self.down, frame.column(self.column)[self.y:self.y + self.height])):
            for one, other in zip(edges(on_screen, *limits), edges(in_file, *limits)):
                test.assertLess(abs(one - other), 1, "position " + name)
        for one, other in zip(self.middle, frame.yuv(self.column, self.line)):
            test.assertLess(abs(one - other), 2.01, f"colour {self.middle}, {frame.yuv(self.column, self.line)}")


class Bubble(unittest.TestCase):
    def record(self, during=lambda program: None, settings=None):
        with wall(), Program(arguments=FLAT, **{**PLAIN, **(settings or {})}) as program:
            path = program.begin_recording()
            time.sleep(1)
            during(program)
            time.sleep(1)
            subprocess.run(["xdotool", "mousemove", "1500", "200"], check=True)
            time.sleep(1.2)  # the controls under the mouse go
            seen = Seen(bubble_areas(program)[FIRST_BUBBLE], CAMERA)
            program.end_recording(path)
            seen.compare(self, path)
            return seen.x, seen.y, seen.width

    def test_it_stands_in_the_video_where_and_as_big_as_on_the_screen(self):
        self.record()

    def test_a_zoom_does_not_touch_it(self):
        for level in (2, 4):
            with self.subTest(level=level):
                self.record(lambda _: press("ctrl+z"), {"zoomLevel": level})

    def test_it_is_dragged_and_resized_while_it_is_recorded(self):
        def drag_and_resize(program):
            x, y, width, height = bubble_areas(program)[FIRST_BUBBLE]
            from_x, from_y = x + width // 2, y + height // 3
            with Hands() as hands:
                hands.move(from_x, from_y)
                time.sleep(0.1)
                hands.button(1, True)
                for step in range(1, 41):
                    hands.move(from_x + step * 15, from_y - step * 10)
                    time.sleep(0.02)
                hands.button(1, False)
                time.sleep(0.6)
                for _ in range(2):
                    hands.button(1, True)
                    hands.button(1, False)
                    time.sleep(0.05)
            time.sleep(1)

        x, y, width = self.record(drag_and_resize)
        self.assertEqual(width, 320 + 2 * ROOM, "a double click takes the next size")
        self.assertGreater(x, 500)


class SecondBubble(unittest.TestCase):
    """Both cameras at once; the second bubble is a large card, with its own size, shape and place."""

    CARD = {"secondBubbleShape": "rounded", "secondBubbleSize": "l", "cornerFraction": 0.1}

    def record(self, during=lambda: None, **settings):
        settings = {**PLAIN, **self.CARD, "cameraID": source(CAMERA), "secondCameraID": source(SECOND), **settings}
        with wall(), Program(arguments=BOTH, **settings) as program:
            path = program.begin_recording()
            time.sleep(1)
            during()
            subprocess.run(["xdotool", "mousemove", "960", "200"], check=True)
            time.sleep(2)
            first = Seen(bubble_areas(program)[FIRST_BUBBLE], CAMERA)
            second = Seen(bubble_areas(program)[SECOND_BUBBLE], SECOND)
            program.end_recording(path)
        first.compare(self, path)
        second.compare(self, path)
        return second

    def test_both_stand_in_the_video_where_and_as_big_as_on_the_screen(self):
        second = self.record()
        self.assertEqual((second.width, second.height), (round(320 * 1.33) + 2 * ROOM, 320 + 2 * ROOM))
        self.assertEqual((second.x + second.width, second.y + second.height), (WIDTH - 40, HEIGHT - 40))

    def test_a_zoom_touches_neither(self):
        for level in (2, 4):
            with self.subTest(level=level):
                self.record(lambda: press("ctrl+z"), zoomLevel=level)

    def test_the_second_is_dragged_and_grows_while_it_is_recorded(self):
        def drag_and_resize():
            with Hands() as hands:
                hands.move(1700, 900)
                hands.button(1, True)
                for step in range(1, 31):
                    hands.move(1700 - step * 20, 900 - step * 12)
                    time.sleep(0.02)
                hands.button(1, False)
                time.sleep(0.6)
                for _ in range(2):
                    hands.click()
                    time.sleep(0.05)
            time.sleep(0.5)

        second = self.record(drag_and_resize, secondBubbleSize="m")
        self.assertEqual((second.width, second.height), (round(320 * 1.33) + 2 * ROOM, 320 + 2 * ROOM))
        self.assertLess(second.x, 1200)


class Scenes(unittest.TestCase):
    def shown(self, path):
        """The scene that the last picture shows."""
        frame = LastFrame(path)
        camera = lambda x, y: abs(frame.at(x, y) - luma_of(CAMERA)) < 8
        if camera(WIDTH // 2, HEIGHT // 2):
            return "me"
        if camera(192, 300):
            return "column"
        if camera(1440, HEIGHT // 2):
            return "side"
        return "screen" if camera(172, 908) else "nothing"

    def go(self, keys):
        with wall(), Program(arguments=FLAT, **PLAIN) as program:
            path = program.begin_recording()
            time.sleep(1)
            for key, wait in keys:
                press("ctrl+" + key)
                time.sleep(wait)
            time.sleep(3.5)
            entry = program.end_recording(path)
            self.assertGreater(entry["duration"], 4)
            return self.shown(path)

    def test_each_key_brings_its_scene_and_takes_it_back(self):
        self.assertEqual(self.go([("2", 0)]), "me")
        self.assertEqual(self.go([("3", 0)]), "side")
        self.assertEqual(self.go([("4", 0)]), "column")
        self.assertEqual(self.go([("4", 2), ("4", 0)]), "screen")
        self.assertEqual(self.go([("c", 2), ("c", 0)]), "screen")

    def test_keys_in_quick_succession_end_in_the_scene_of_the_last_ones(self):
        names = {"1": "screen", "2": "me", "3": "side", "4": "column"}
        for seed in range(3):
            with self.subTest(seed=seed):
                chance = random.Random(seed)
                keys = [(chance.choice("1234"), chance.choice((0.02, 0.1, 0.3, 0.5, 0.9))) for _ in range(25)]
                scene = "1"
                for key, _ in keys:
                    scene = "1" if key == scene else key
                self.assertEqual(self.go(keys), names[scene])


if __name__ == "__main__":
    unittest.main(verbosity=2)
