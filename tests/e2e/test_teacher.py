"""The teacher in the finished file: the bubble as it stands on the screen, and scenes by their keys."""

import random
import subprocess
import time
import unittest

from hands import Hands
from program import Program, Stage, output, press

WALL = (0x30, 0x30, 0x30)
CAMERA = (0xC0, 0x60, 0x30)
WIDTH, HEIGHT = 1920, 1080
ROOM = 22  # of a bubble's window around the bubble

FLAT = ["--camera-source", "lavfi:color=c=0x%02x%02x%02x:size=1280x720:rate=30" % CAMERA]
PLAIN = {"mode": "screenCam", "micID": "none", "ringStyle": "none", "softShadow": False}


def wall():
    return Stage("plain", "--unmanaged", "--color", "%02x%02x%02x" % WALL, "--size", f"{WIDTH}x{HEIGHT}")


def luma(red, green, blue):
    return 16 + 219 * (0.2126 * red + 0.7152 * green + 0.0722 * blue) / 255


def row_on_screen(y):
    raw = subprocess.run(["import", "-window", "root", "-crop", f"{WIDTH}x1+0+{y}", "-depth", "8", "rgb:-"],
                         capture_output=True, check=True).stdout
    return [luma(*raw[3 * x:3 * x + 3]) for x in range(WIDTH)]


class LastFrame:
    """The luma of a file's last picture."""

    def __init__(self, path):
        self.data = subprocess.run(["ffmpeg", "-v", "error", "-sseof", "-0.4", "-i", path, "-pix_fmt", "yuv420p",
                                    "-f", "rawvideo", "-"], capture_output=True, check=True).stdout
        self.begin = len(self.data) - WIDTH * HEIGHT * 3 // 2
        assert self.begin >= 0 and self.begin % (WIDTH * HEIGHT * 3 // 2) == 0

    def at(self, x, y):
        return self.data[self.begin + y * WIDTH + x]

    def row(self, y):
        begin = self.begin + y * WIDTH
        return list(self.data[begin:begin + WIDTH])

    def column(self, x):
        return [self.at(x, y) for y in range(HEIGHT)]


def edges(line):
    """Where a line of pixels passes from wall to camera and back, to a part of a pixel."""
    between = (luma(*WALL) + luma(*CAMERA)) / 2
    places = [x + (between - a) / (b - a) for x, (a, b) in enumerate(zip(line, line[1:])) if (a > between) != (b > between)]
    return places[0], places[-1]


def bubble_window(program):
    """(x, y, width, height) of the camera's window."""
    return next(area for window, area in program.windows().items()
                if "cámara" in output("xdotool", "getwindowname", window) and area[2] == area[3])


class Bubble(unittest.TestCase):
    def assert_same_in_video(self, path, seen, row, middle):
        """`seen`: a row of the screen while it was recorded."""
        frame = LastFrame(path)
        for on_screen, in_file in zip(edges(seen), edges(frame.row(row))):
            self.assertLess(abs(on_screen - in_file), 1, "position across")
        self.assertLess(abs(seen[middle] - frame.at(middle, row)), 2.01, "colour")

    def record(self, during=lambda program: None, settings=None):
        with wall(), Program(arguments=FLAT, **{**PLAIN, **(settings or {})}) as program:
            path = program.begin_recording()
            time.sleep(1)
            during(program)
            time.sleep(1)
            x, y, width, height = bubble_window(program)
            row, middle = y + height // 2, x + width // 2
            subprocess.run(["xdotool", "mousemove", "1500", "200"], check=True)
            time.sleep(1.2)  # the controls under the mouse go
            seen = row_on_screen(row)
            program.end_recording(path)
            self.assert_same_in_video(path, seen, row, middle)
            return x, y, width

    def test_it_stands_in_the_video_where_and_as_big_as_on_the_screen(self):
        self.record()

    def test_a_zoom_does_not_touch_it(self):
        for level in (2, 4):
            with self.subTest(level=level):
                self.record(lambda _: press("ctrl+z"), {"zoomLevel": level})

    def test_it_is_dragged_and_resized_while_it_is_recorded(self):
        def drag_and_resize(program):
            x, y, width, height = bubble_window(program)
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


class Scenes(unittest.TestCase):
    def shown(self, path):
        """The scene that the last picture shows."""
        frame = LastFrame(path)
        camera = lambda x, y: abs(frame.at(x, y) - luma(*CAMERA)) < 8
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
