"""Several displays, that come and go while a class is recorded."""

import re
import subprocess
import time
import unittest

from program import Program, Stage, accept_message, judge, output, press

WIDTH, HEIGHT = 1280, 720
SECOND = "DUMMY1"


def output_id(name):
    """The server's number of a video output."""
    shown = output("xrandr", "--verbose")
    return int(re.search(rf"^{name} .*?Identifier: +(0x[0-9a-f]+)", shown, re.S | re.M).group(1), 16)


def switch_off(name):
    subprocess.run(["xrandr", "--output", name, "--off"], check=True)


def switch_on(name):
    subprocess.run(["xrandr", "--output", name, "--mode", "desk", "--right-of", "DUMMY0"], check=True)


class Displays(unittest.TestCase):
    def tearDown(self):
        switch_on(SECOND)

    def test_the_second_display_is_recorded_when_it_is_chosen(self):
        with Stage("plain"), Program(displayID=output_id(SECOND)) as program:
            path = program.begin_recording()
            subprocess.run(["xdotool", "mousemove", str(WIDTH + 300), "300"], check=True)
            time.sleep(1)
            bar = [area for area in program.windows().values() if area[3] >= 110 and area[1] > HEIGHT / 2]
            self.assertTrue(any(x >= WIDTH for x, *_ in bar), "the bar stands on the recorded display")
            entry = program.end_recording(path)
            self.assertGreater(entry["duration"], 0.5)
            stream = judge(path)["streams"][0]
            self.assertEqual((stream["width"], stream["height"]), (WIDTH, HEIGHT))

    def test_a_display_that_goes_while_zoomed_ends_the_recording_and_what_there_is_of_it_is_kept(self):
        with Stage("motion"), Program(displayID=output_id(SECOND)) as program:
            path = program.begin_recording()
            subprocess.run(["xdotool", "mousemove", str(WIDTH + 300), "300"], check=True)
            press("ctrl+z")
            time.sleep(2)
            switch_off(SECOND)
            entry = program.wait_saved(path)
            accept_message("La grabación se detuvo")
            self.assertGreater(entry["duration"], 1.5)
            self.assertGreater(judge(path)["duration"], 1)
            # The next recording finds the display that is left.
            again = program.begin_recording()
            time.sleep(1)
            self.assertGreater(program.end_recording(again)["duration"], 0.5)

    def test_another_display_that_goes_leaves_the_recording_alone(self):
        with Stage("motion"), Program(displayID=output_id("DUMMY0")) as program:
            path = program.begin_recording()
            time.sleep(1)
            switch_off(SECOND)
            time.sleep(1.5)
            entry = program.end_recording(path)
            self.assertGreater(entry["duration"], 2)


if __name__ == "__main__":
    unittest.main()
