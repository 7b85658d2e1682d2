"""Live control: what keys, mouse and wheel do while a class is recorded, judged by the finished file."""

import array
import itertools
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


def clock_of_bar():
    """A place on the control bar where a click does nothing: left, in the middle of its row, with the shadow's room around."""
    window = output("xdotool", "search", "--onlyvisible", "--name", "Velmo Studio · controles").split()[0]
    shell = output("xdotool", "getwindowgeometry", "--shell", window)
    place = {name: int(value) for name, value in (line.split("=") for line in shell.split())}
    return place["X"] + 34 + 30, place["Y"] + place["HEIGHT"] - 44 - 28


def magnified(mouse, mark, level):
    """Where the mark appears in the picture: the point under the mouse stays where it is."""
    return tuple(m + level * (p - m) for m, p in zip(mouse, mark))


class Zoom(unittest.TestCase):
    MOUSE = (600, 400)
    MARK = (700, 460)

    def record(self, act, *points, mark=MARK, side=24, **settings):
        with Stage("plain", "--unmanaged", "--color", GROUND), Mark(*mark, side), Hands() as hands, \
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

        # Beside the middle of the mark, where the pointer does not cover it.
        seen = [(x - 12, y - 12) for x, y in (place, corner)]
        frames = self.record(act, *seen, mark=corner, side=40)
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

    def test_a_click_on_the_bar_is_none_in_the_class(self):
        def act(hands):
            hands.move(*clock_of_bar())
            below = output("xdotool", "getmouselocation", "--shell").split("WINDOW=")[1].split()[0]
            self.assertIn("Velmo Studio · controles", output("xdotool", "getwindowname", below))
            hands.click()
            time.sleep(SETTLED_S)
            hands.move(*self.MOUSE)
            time.sleep(0.3)
            hands.click()
            time.sleep(3.5 + SETTLED_S)

        frames = self.record(act, self.MARK, magnified(self.MOUSE, self.MARK, 2), zoomAuto=True)
        self.assertEqual(lit(frames), [0, 1, 0], "the second click zooms to where it was made")

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
DUCKED = 0.08
HALF_WAY = 0.54  # between ducked and normal: 3 ms into a ramp
LEAD_S = 0.012 + 0.003
TAIL_S = 0.085 + 0.003
PLACED_S = 0.005


class Envelope:
    """How loud the tone of 1 kHz is in a file, twice a millisecond, each over one of its cycles, as parts of the normal."""

    def __init__(self, path):
        decode = ["ffmpeg", "-v", "error", "-i", path, "-map", "0:a:0", "-ac", "1", "-ar", str(RATE), "-f", "f32le", "-"]
        raw = subprocess.run(decode, capture_output=True, check=True).stdout
        samples = array.array("f", raw)
        power = [0.0, *itertools.accumulate(sample * sample for sample in samples)]
        loudness = [max(0.0, power[i + CYCLE] - power[i]) ** 0.5 for i in range(0, len(samples) - CYCLE, STEP)]
        normal = statistics.median(loudness)
        self.values = [value / normal for value in loudness]

    @staticmethod
    def seconds(index):
        return (index * STEP + CYCLE / 2) / RATE

    def stretches(self, level, above):
        """(begin, end) wherever it stays above, or below, the level for at least 30 ms."""
        found = []
        start = None
        for i, (a, b) in enumerate(zip(self.values, self.values[1:])):
            if (a < level) == (b < level):
                continue
            at = self.seconds(i + (level - a) / (b - a))
            if (a < b) == above:
                start = at
            elif start is not None and at - start > 0.03:
                found.append((start, at))
                start = None
        return found

    def length(self):
        return self.seconds(len(self.values))

    def between(self, begin, end):
        return [value for i, value in enumerate(self.values) if begin <= self.seconds(i) <= end]

    def beside(self, stretches):
        """All that lies in none of the stretches."""
        return [value for i, value in enumerate(self.values) if not any(a <= self.seconds(i) <= b for a, b in stretches)]


def beside(at, span):
    """Seconds by which a time is before or after a span; 0 within."""
    return min(at - span[0], 0) + max(at - span[1], 0)


class Clicks(unittest.TestCase):
    """The tone has marks of which the sound server says when they are heard, and the hands know when they clicked: the
    distance from mark to duck in the file is judged, so that no clock of the program has a say.

    A duck begins at what has not been written when the click is heard of. A microphone whose sound comes at once, as
    this one's does, therefore loses up to all of what lies before the click; its end is always whole."""

    def record(self, act, **settings):
        with Tone() as tone, Hands() as hands, Program(**settings) as program:
            hands.move(600, 400)
            path = program.begin_recording(PLAIN_BYTES)
            began = time.monotonic()
            tone.after_next_mark(0.5)
            moves = act(tone, hands)
            tone.after_next_mark(0.5)
            program.end_recording(path)
        loudness = Envelope(path)
        marks = loudness.stretches(1.5, True)
        # The host second at which the file begins, known from the marks up to whole seconds, and from the start to less.
        # The first mark may be cut.
        fraction = statistics.median((tone.marks[0] - begin + 0.5 - began) % 1 for begin, _ in marks[1:]) - 0.5 + began
        zero = fraction - round(fraction - (began - 0.4))
        return loudness, marks, [(before - zero, after - zero) for before, after in moves]

    def test_the_tone_falls_to_8_percent_round_press_and_release_and_nowhere_else(self):
        def act(tone, hands):
            moves = []
            for button in (1, 3, 2, 1):
                tone.after_next_mark(0.35)
                moves.append(hands.button(button, True))
                time.sleep(0.25)
                moves.append(hands.button(button, False))
            return moves

        loudness, marks, moves = self.record(act)
        quiet = loudness.stretches(HALF_WAY, False)
        self.assertEqual(len(quiet), len(moves), (quiet, moves, marks))
        ends = [1000 * beside(end - TAIL_S, move) for (_, end), move in zip(quiet, moves)]
        begins = [1000 * beside(begin, move) for (begin, _), move in zip(quiet, moves)]
        print("end of the ducks, ms from where it belongs:", [round(end, 2) for end in ends])
        print("begin of the ducks, ms from the click:", [round(begin, 2) for begin in begins])
        self.assertLess(max(map(abs, ends)), PLACED_S * 1000)
        self.assertGreater(min(begins), -(LEAD_S + PLACED_S) * 1000)
        self.assertLess(max(begins), 20)
        for begin, end in quiet:
            inside = loudness.between(begin + 0.006, end - 0.006)
            self.assertGreater(min(inside), DUCKED - 0.01)
            self.assertLess(max(inside), DUCKED + 0.02)
        # What the encoder smears of a step reaches half its block, 11 ms, to either side.
        # The file may begin at the end of a mark, and ends with what fills up the encoder's last block.
        ends = [(0, 0.15), (loudness.length() - 0.05, loudness.length())]
        rest = loudness.beside([(a - 0.02, b + 0.02) for a, b in quiet + marks] + ends)
        self.assertGreater(min(rest), 0.9)
        self.assertLess(max(rest), 1.1)

    def test_a_double_click_is_one_duck_to_the_end_of_its_last_movement(self):
        def act(tone, hands):
            tone.after_next_mark(0.4)
            times = [*hands.click()]
            time.sleep(0.06)
            return times + [*hands.click()]

        loudness, _, moves = self.record(act)
        quiet = loudness.stretches(HALF_WAY, False)
        self.assertEqual(len(quiet), 1)
        self.assertLess(abs(beside(quiet[0][1] - TAIL_S, moves[-1])), PLACED_S)
        self.assertLess(max(loudness.between(quiet[0][0] + 0.006, quiet[0][1] - 0.006)), DUCKED + 0.02)

    def test_wheel_and_keys_are_no_clicks(self):
        def act(tone, hands):
            tone.after_next_mark(0.4)
            for _ in range(3):
                hands.click(4)
                hands.click(5)
            press("ctrl+m")
            return []

        loudness, _, _ = self.record(act)
        self.assertEqual(loudness.stretches(HALF_WAY, False), [])

    def test_with_the_setting_off_clicks_stay(self):
        def act(tone, hands):
            tone.after_next_mark(0.4)
            hands.click()
            return []

        loudness, _, _ = self.record(act, muteClicks=False)
        self.assertEqual(loudness.stretches(HALF_WAY, False), [])


if __name__ == "__main__":
    unittest.main(verbosity=2)
