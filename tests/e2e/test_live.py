"""Live control: what keys, mouse and wheel do while a class is recorded, judged by the finished file."""

import array
import itertools
import os
import statistics
import subprocess
import threading
import time
import unittest

from hands import ALT, Hands
from program import Program, Stage, judge, output, press, tool, wait_until

GROUND = "202020"
LIGHT = "f0f0f0"
PLAIN_BYTES = 256  # less than the first picture of a plain screen has
SETTLED_S = 1.4  # the zoom has less than a thousandth of its way left


class Mark(Stage):
    """A small light square on the dark ground, above every window."""

    def __init__(self, x, y, side=24):
        super().__init__("plain", "--unmanaged", "--color", LIGHT, "--size", f"{side}x{side}",
                         "--at", f"{x - side // 2},{y - side // 2}")


def lit(frames):
    """Which single probe is light, as it changes over the frames; frames that show several or none are on the way."""
    shown = []
    for frame in frames:
        bright = [index for index, (luma, _, _) in enumerate(frame["probes"]) if luma > 128]
        if len(bright) == 1 and (not shown or shown[-1] != bright[0]):
            shown.append(bright[0])
    return shown


def probes(*points):
    return [argument for x, y in points for argument in ("--probe", f"{round(x)},{round(y)}")]


def magnified(mouse, mark, level):
    """Where the mark appears in the picture: the point under the mouse stays where it is."""
    return tuple(m + level * (p - m) for m, p in zip(mouse, mark))


class Zoom(unittest.TestCase):
    MOUSE = (600, 400)
    MARK = (700, 460)

    def record(self, act, *points, **settings):
        with Stage("plain", "--unmanaged", "--color", GROUND), Mark(*self.MARK), Hands() as hands, \
                Program(micID="none", **settings) as program:
            hands.move(*self.MOUSE)
            path = program.begin_recording(PLAIN_BYTES)
            time.sleep(1)
            act(hands)
            time.sleep(SETTLED_S)
            program.end_recording(path)
            return judge(path, *probes(*points))["frames"]

    def test_keys_zoom_to_the_mouse_step_and_give_the_whole_screen_back(self):
        def act(_):
            for keys in (["ctrl+z"], ["ctrl+equal"], ["ctrl+minus"], ["ctrl+z"]):
                press(*keys)
                time.sleep(SETTLED_S)

        frames = self.record(act, self.MARK, magnified(self.MOUSE, self.MARK, 2), magnified(self.MOUSE, self.MARK, 2.5))
        self.assertEqual(lit(frames), [0, 1, 2, 1, 0])

    def test_the_picture_follows_the_mouse(self):
        corner, place = (1800, 900), (1680, 837)  # held at the right edge, and by the dead zone above the lower one

        def act(hands):
            press("ctrl+z")
            time.sleep(SETTLED_S)
            for step in range(1, 31):
                hands.move(*(round(a + (b - a) * step / 30) for a, b in zip(self.MOUSE, corner)))
                time.sleep(0.03)

        with Mark(*corner, side=60):
            # Beside the middle of the mark, where the pointer does not cover it.
            frames = self.record(act, (place[0] - 40, place[1] - 40), magnified(self.MOUSE, self.MARK, 2))
        self.assertEqual(lit(frames), [1, 0])

    def test_the_wheel_zooms_with_alt_and_scrolls_without(self):
        def act(hands):
            for _ in range(12):
                hands.click(4)
            time.sleep(SETTLED_S)
            hands.key(ALT, True)
            for _ in range(12):
                hands.click(4)  # 1.06 each time: 2.01
                time.sleep(0.02)
            time.sleep(SETTLED_S)
            for _ in range(16):
                hands.click(5)  # down to below what counts as zoomed
                time.sleep(0.02)
            hands.key(ALT, False)

        frames = self.record(act, self.MARK, magnified(self.MOUSE, self.MARK, 2))
        self.assertEqual(lit(frames), [0, 1, 0])

    def test_a_click_zooms_where_that_is_wanted_and_a_resting_mouse_lets_go(self):
        def act(hands):
            hands.click()
            time.sleep(3.5 + SETTLED_S)

        frames = self.record(act, self.MARK, magnified(self.MOUSE, self.MARK, 2), zoomAuto=True)
        self.assertEqual(lit(frames), [0, 1, 0])

    def test_a_click_does_not_zoom_where_that_is_not_wanted(self):
        frames = self.record(lambda hands: hands.click(), self.MARK, magnified(self.MOUSE, self.MARK, 2))
        self.assertEqual(lit(frames), [0])


class Region(unittest.TestCase):
    def test_the_region_of_last_time_fills_the_picture_and_goes_again(self):
        mark = (1440, 270)  # the middle of the upper right quarter
        with Stage("plain", "--unmanaged", "--color", GROUND), Mark(*mark), \
                Program(micID="none", recordRegion="{{0.5, 0.5}, {0.5, 0.5}}") as program:
            path = program.begin_recording(PLAIN_BYTES)
            time.sleep(1)
            for _ in range(2):
                press("ctrl+r")
                time.sleep(SETTLED_S)
            program.end_recording(path)
            frames = judge(path, *probes(mark, (960, 540)))["frames"]
        self.assertEqual(lit(frames), [0, 1, 0])


class Markers(unittest.TestCase):
    def test_a_marker_stands_where_the_key_was_pressed(self):
        with Stage("plain"), Program(micID="none") as program:
            path = program.begin_recording(PLAIN_BYTES)
            time.sleep(1)
            press("ctrl+m")
            time.sleep(1)
            press("ctrl+m")
            time.sleep(0.5)
            entry = program.end_recording(path)
        first, second = entry["markers"]
        self.assertGreater(second - first, 0.9)
        self.assertLess(second - first, 1.5)
        self.assertLess(second, entry["duration"])


class Tone(Stage):
    """The steady tone, with the host-clock seconds of its marks."""

    def __init__(self):
        self.marks = []
        self.process = subprocess.Popen([tool("velmo-stage"), "tone", "--title", "stage-tone"], stdout=subprocess.PIPE, text=True)
        self.reader = threading.Thread(target=self.read)
        self.reader.start()
        wait_until("the stage", lambda: output("xdotool", "search", "--onlyvisible", "--name", "stage-tone").split())

    def read(self):
        for line in self.process.stdout:
            word, _, seconds = line.partition(" ")
            if word == "mark":
                self.marks.append(float(seconds))

    def after_next_mark(self, seconds):
        """Sleeps until so long after the mark that comes next."""
        count = len(self.marks)
        wait_until("a mark of the tone", lambda: len(self.marks) > count)
        time.sleep(max(0, self.marks[-1] + seconds - time.monotonic()))

    def close(self):
        super().close()
        self.reader.join()


RATE = 48000
STEP = 24  # samples: half a millisecond
CYCLE = RATE // 1000


class Envelope:
    """How loud the tone of 1 kHz is, twice a millisecond, each over one of its cycles."""

    def __init__(self, path):
        raw = subprocess.run(["ffmpeg", "-v", "error", "-i", path, "-map", "0:a:0", "-ac", "1", "-ar", str(RATE), "-f", "f32le", "-"],
                             capture_output=True, check=True).stdout
        samples = array.array("f", raw)
        power = [0.0, *itertools.accumulate(sample * sample for sample in samples)]
        self.values = [(2 * max(0.0, power[i + CYCLE] - power[i]) / CYCLE) ** 0.5 for i in range(0, len(samples) - CYCLE, STEP)]
        self.normal = statistics.median(self.values)

    @staticmethod
    def seconds(index):
        return (index * STEP + CYCLE / 2) / RATE

    def crossings(self, level, begin=0.0, end=1e9):
        """(seconds, rises) wherever the loudness passes `level` times the normal one, placed between the steps."""
        found = []
        for i, (a, b) in enumerate(zip(self.values, self.values[1:])):
            a, b = a / self.normal, b / self.normal
            if (a < level) != (b < level):
                at = self.seconds(i + (level - a) / (b - a))
                if begin <= at <= end:
                    found.append((at, a < b))
        return found

    def between(self, begin, end):
        """Loudness as parts of the normal one."""
        return [value / self.normal for i, value in enumerate(self.values) if begin <= self.seconds(i) <= end]

    def stretches(self, level, above):
        """(begin, end) wherever it stays above, or below, the level for at least 30 ms."""
        found = []
        start = None
        for at, rises in self.crossings(level):
            if rises == above:
                start = at
            elif start is not None and at - start > 0.03:
                found.append((start, at))
                start = None
        return found


class Clicks(unittest.TestCase):
    def test_measure(self):
        moves = []
        with Tone() as tone, Hands() as hands, Program() as program:
            hands.move(600, 400)
            path = program.begin_recording(PLAIN_BYTES)
            tone.after_next_mark(0.5)
            for _ in range(4):
                tone.after_next_mark(0.35)
                moves.append(hands.button(1, True))
                time.sleep(0.25)
                moves.append(hands.button(1, False))
            tone.after_next_mark(0.5)
            program.end_recording(path)
        env = Envelope(path)
        loud = env.stretches(1.5, True)
        quiet = env.stretches(0.54, False)
        print("marks", [round(m % 100, 4) for m in tone.marks])
        print("loud", [(round(a, 4), round(b, 4)) for a, b in loud])
        print("moves", [round(m % 100, 4) for m in moves])
        print("quiet", [(round(a, 4), round(b, 4)) for a, b in quiet])
        for zero in [statistics.median(a - m for a, m in zip([x for x, _ in loud], tone.marks[k:])) for k in range(0, 4)]:
            print(zero)
            print([(round((a - zero - m)*1000, 2), round((b - zero - m)*1000, 2)) for (a, b), m in zip(quiet, moves)])
        for a, b in quiet:
            inside = env.between(a + 0.008, b - 0.008)
            print(min(inside), statistics.median(inside), max(inside))
        print("normal", env.normal)


if __name__ == "__main__":
    unittest.main(verbosity=2)
