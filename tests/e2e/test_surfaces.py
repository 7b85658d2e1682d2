"""The live surfaces: what they do on the real screen, and that the video shows the effect and not the surface."""

import math
import subprocess
import time
import unittest

from program import Program, Stage, judge, luma_of, output, pixel_on_screen, press, wait_until

GREY = (0xC8, 0xC8, 0xC8)
DIMMED_ON_SCREEN = 0xC8 * (1 - 0.62)
DIM_IN_VIDEO = 0.22 ** (1 / 2.2)  # a gain in linear light on gamma-coded values
LUMA_SLACK = 5


def move(x, y):
    subprocess.run(["xdotool", "mousemove", str(x), str(y)], check=True)


def drag(begin, end, steps=8):
    """With the left button, as a hand does it."""
    command = ["xdotool", "mousemove", str(begin[0]), str(begin[1]), "sleep", "0.05", "mousedown", "1"]
    for i in range(1, steps + 1):
        point = [round(a + (b - a) * i / steps) for a, b in zip(begin, end)]
        command += ["mousemove", str(point[0]), str(point[1]), "sleep", "0.02"]
    subprocess.run(command + ["mouseup", "1"], check=True)


def quick_circle(x, y, radius=120, seconds=0.5, turns=1.3):
    """Round and back to the middle. xdotool warps the pointer, which no device reports: a resting mouse is noticed within
    0.2 s, so it comes to the circle first, as a hand does."""
    steps = round(40 * turns)
    command = ["xdotool", "mousemove", str(x + radius - 40), str(y), "sleep", "0.25"]
    for i in range(steps + 1):
        angle = 2 * math.pi * i / 40
        command += ["mousemove", str(round(x + radius * math.cos(angle))), str(round(y + radius * math.sin(angle))),
                    "sleep", str(seconds / 40)]
    subprocess.run(command + ["mousemove", str(x), str(y)], check=True)


def dimmed_luma(rgb):
    return 16 + (luma_of(rgb) - 16) * DIM_IN_VIDEO


def probes(*places):
    return [argument for x, y in places for argument in ("--probe", f"{x},{y}")]


def picker():
    """The window of the open region picker."""
    return output("xdotool", "search", "--onlyvisible", "--name", "elegir zona").split()


class Spotlight(unittest.TestCase):
    def test_the_screen_is_dim_but_for_the_disc_and_the_video_is_dimmed_once(self):
        outside, inside = (200, 300), (1060, 540)
        with Stage("plain", "--color", "c8c8c8"), Program() as program:
            move(960, 540)
            path = program.begin_recording()
            time.sleep(1)
            before = pixel_on_screen(*outside)
            press("ctrl+f")
            time.sleep(1.5)
            with_spot = [pixel_on_screen(*place) for place in (outside, inside)]
            move(700, 540)
            time.sleep(1)
            moved = [pixel_on_screen(*place) for place in (inside, (700, 440))]
            press("ctrl+f")
            time.sleep(1.5)
            after = pixel_on_screen(*outside)
            windows = output("xdotool", "search", "--onlyvisible", "--name", "Velmo Studio · foco").split()
            program.end_recording(path)
            frames = judge(path, *probes(outside, inside))["frames"]
        self.assertEqual(before, GREY)
        self.assertLess(abs(with_spot[0][0] - DIMMED_ON_SCREEN), 4, with_spot)
        self.assertEqual(with_spot[1], GREY)
        self.assertLess(abs(moved[0][0] - DIMMED_ON_SCREEN), 4, moved)
        self.assertEqual(moved[1], GREY)
        self.assertEqual(after, GREY)
        self.assertEqual(windows, [], "no window is left of a spotlight that is off")
        darkest = min(frame["probes"][0][0] for frame in frames)
        self.assertLess(abs(darkest - dimmed_luma(GREY)), LUMA_SLACK, "were the overlay in the video, too, it would be darker")
        # Darkened only after the spot had moved away.
        second = [frame["probes"][1][0] for frame in frames]
        self.assertLess(abs(min(second) - dimmed_luma(GREY)), LUMA_SLACK)
        self.assertLess(abs(second[0] - luma_of(GREY)), LUMA_SLACK)
        self.assertLess(abs(frames[-1]["probes"][0][0] - luma_of(GREY)), LUMA_SLACK, "the light is on again at the end")

    def test_a_click_goes_through_to_what_lies_below(self):
        with Stage("plain", "--color", "c8c8c8"), Stage("still", "--size", "400x300", "--at", "100,200"), Program() as program:
            path = program.begin_recording()
            press("ctrl+f")
            time.sleep(1)
            below = output("xdotool", "mousemove", "300", "350", "getmouselocation").split("window:")[1].strip()
            titles = output("xwininfo", "-tree", "-id", below)
            press("ctrl+f")
            program.end_recording(path)
        self.assertNotIn("Velmo Studio · foco", titles.split("Root window")[0])


class Circle(unittest.TestCase):
    def test_a_quick_circle_leaves_the_bubble_on_the_pointer_on_the_screen_and_in_the_video(self):
        radius = 0.034 * 1080
        rim = round(radius * (1 - 0.045))
        center = (960, 540)
        spots = [(center[0] - rim, center[1]), (center[0], center[1] - rim)]
        with Stage("plain", "--color", "c8c8c8"), Program(cursorHighlight=True, chameleonPalette="lime") as program:
            path = program.begin_recording()
            time.sleep(1)
            self.assertEqual([pixel_on_screen(*spot) for spot in spots], [GREY, GREY])
            time.sleep(1)  # the mouse rests long enough for the overlay to stop looking at it
            quick_circle(*center)
            time.sleep(0.8)
            on_screen = [pixel_on_screen(*spot) for spot in spots]
            time.sleep(3.6)
            gone = [pixel_on_screen(*spot) for spot in spots]
            program.end_recording(path)
            frames = judge(path, *probes(*spots))["frames"]
        for red, green, blue in on_screen:
            self.assertGreater(green - blue, 60, f"lime on the screen, not {on_screen}")
        self.assertEqual(gone, [GREY, GREY])
        # Lime has little blue: its blue-difference falls far below 128, where grey is.
        with_bubble = [frame["t"] for frame in frames if all(probe[1] < 110 for probe in frame["probes"])]
        self.assertGreater(len(with_bubble), 30, "the bubble is in the video")
        self.assertLess(with_bubble[-1] - with_bubble[0], 3.6)

    def test_a_slow_circle_leaves_none(self):
        with Stage("plain", "--color", "c8c8c8"), Program(cursorHighlight=True) as program:
            path = program.begin_recording()
            quick_circle(960, 540, seconds=1.6)
            time.sleep(0.8)
            shown = output("xdotool", "search", "--onlyvisible", "--name", "burbuja del puntero").split()
            program.end_recording(path)
        self.assertEqual(shown, [])


class Picker(unittest.TestCase):
    def open(self, key):
        press(key)
        wait_until("the picker", picker)
        time.sleep(0.3)

    def test_a_drag_after_ctrl_a_zooms_to_the_area(self):
        with Stage("plain", "--color", "c8c8c8"), Stage("plain", "--color", "2040a0", "--size", "720x480", "--at", "300,250", "--title", "small"), \
                Program() as program:
            path = program.begin_recording()
            time.sleep(0.5)
            self.open("ctrl+a")
            dim = pixel_on_screen(1500, 900)
            drag((340, 290), (340 + 480, 290 + 270))
            wait_until("the picker's end", lambda: not picker())
            time.sleep(2)
            program.end_recording(path)
            frames = judge(path, *probes((60, 60), (1860, 1020), (1860, 60)))["frames"]
        self.assertLess(abs(dim[0] - 0xC8 * 0.55), 4)
        blue = luma_of((0x20, 0x40, 0xA0))
        for luma, _, _ in frames[-1]["probes"]:
            self.assertLess(abs(luma - blue), LUMA_SLACK, "the area fills the frame")
        # The dim screen and its words are not in the video.
        for frame in frames:
            self.assertTrue(min(abs(frame["probes"][1][0] - luma) for luma in (blue, luma_of(GREY))) < 25, frame)

    def test_ctrl_r_without_a_region_lets_one_be_dragged_out_and_keeps_it(self):
        with Stage("plain", "--color", "c8c8c8"), Stage("plain", "--color", "2040a0", "--size", "900x560", "--at", "800,400", "--title", "small"), \
                Program() as program:
            path = program.begin_recording()
            time.sleep(0.5)
            self.open("ctrl+r")
            drag((1640, 900), (1640 - 768, 900 - 100))  # towards the upper left: 768 x 432 up to 872, 468
            wait_until("the picker's end", lambda: not picker())
            time.sleep(2)
            program.end_recording(path)
            frames = judge(path, *probes((20, 20), (1900, 1060)))["frames"]
            with open(program.config + "/defaults.json") as file:
                kept = file.read()
        blue = luma_of((0x20, 0x40, 0xA0))
        self.assertLess(abs(frames[0]["probes"][0][0] - luma_of(GREY)), LUMA_SLACK)
        for luma, _, _ in frames[-1]["probes"]:
            self.assertLess(abs(luma - blue), LUMA_SLACK, "the region fills the frame")
        self.assertIn("recordRegion", kept)

    def test_escape_leaves_and_the_keyboard_goes_back(self):
        with Stage("plain", "--color", "c8c8c8"), Program() as program:
            path = program.begin_recording()
            time.sleep(0.5)
            before = output("xdotool", "getwindowfocus")
            self.open("ctrl+a")
            press("ctrl+a")  # global keys still work: the first pick ends, another one is open
            time.sleep(0.5)
            self.assertEqual(len(picker()), 1)
            press("Escape")
            wait_until("the picker's end", lambda: not picker())
            after = output("xdotool", "getwindowfocus")
            program.end_recording(path)
            last = judge(path, *probes((200, 300)))["frames"][-1]["probes"][0][0]
        self.assertEqual(before, after)
        self.assertLess(abs(last - luma_of(GREY)), LUMA_SLACK)

    def test_a_recording_that_ends_takes_the_open_picker_along(self):
        with Stage("plain", "--color", "c8c8c8"), Program() as program:
            path = program.begin_recording()
            time.sleep(0.5)
            self.open("ctrl+a")
            program.end_recording(path)
            self.assertEqual(picker(), [])


if __name__ == "__main__":
    unittest.main(verbosity=2)
