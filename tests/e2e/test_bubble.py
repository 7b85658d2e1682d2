"""The bubble under a teacher's hand: dragged, double-clicked, its controls and its menu, every style of its ring; on the
screen, in the finished file, and after the program has been started again."""

import subprocess
import time
import unittest

from hands import Hands
from picture import FIRST_BUBBLE, HEIGHT, SECOND_BUBBLE, WALL, WIDTH, LastFrame, bubble_areas, screen_pixels, wall
from program import Program, luma_of, output, press, wait_until

CAMERA = (0x60, 0x60, 0x60)
RING = (0xFF, 0x00, 0xFF)
ROOM = 22  # of a bubble's window around the bubble
SOURCE = "lavfi:color=c=0x%02x%02x%02x:size=1280x720:rate=30" % CAMERA
PLAIN = {"mode": "screenCam", "micID": "none", "ringStyle": "none", "softShadow": False, "ringCustomHex": "#FF00FF",
         "cameraID": SOURCE, "secondCameraID": "none", "presenterName": "Ana", "showName": False}
CONTROLS = "Velmo Studio · tamaño de la cámara"
# The menu's entries in their order, separators left out; after them "Sombra suave" and "Espejo".
SIZES, SHAPES, NAME, STYLES, PALETTES, WEIGHTS, CORNERS = range(0, 3), range(3, 6), 6, 7, 8, 9, 10
STYLE_NAMES = "chameleon", "fine", "aurora", "classic", "none"


def distance(one, other):
    return max(abs(a - b) for a, b in zip(one, other))


def different(one, other):
    """How many pixels of two pictures of one size are not the same."""
    return sum(a != b for row, counterpart in zip(one, other) for a, b in zip(row, counterpart))


class Teacher:
    """The program while it records, and the hand that works on its bubble."""

    def __init__(self, arguments=(), **settings):
        self.program = Program(arguments=["--camera-source", SOURCE, *arguments], **{**PLAIN, **settings})
        self.hands = Hands()
        self.begin()

    def begin(self):
        self.path = self.program.begin_recording()
        wait_until("the bubble", lambda: bubble_areas(self.program).get(FIRST_BUBBLE), 20)
        time.sleep(0.8)

    def end(self):
        self.program.end_recording(self.path)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.hands.close()
        self.program.quit()

    def area(self, title=FIRST_BUBBLE):
        return bubble_areas(self.program)[title]

    def go_onto(self, title=FIRST_BUBBLE):
        x, y, width, height = self.area(title)
        self.hands.move(x + width // 2, y + height // 3)
        time.sleep(0.3)

    def go_away(self):
        self.hands.move(WIDTH // 2, 100)
        time.sleep(1.2)  # the controls go

    def double_click(self, title=FIRST_BUBBLE):
        self.go_onto(title)
        self.hands.click()
        self.hands.click()
        time.sleep(0.7)

    def drag_by(self, right, down):
        self.go_onto()
        x, y, width, height = self.area()
        self.hands.button(1, True)
        for step in range(1, 31):
            self.hands.move(x + width // 2 + right * step // 30, y + height // 3 + down * step // 30)
            time.sleep(0.01)
        self.hands.button(1, False)
        time.sleep(0.4)

    def choose(self, *entries, title=FIRST_BUBBLE):
        """Entries of the menu and its submenu by number, over the keys as in any menu."""
        self.go_onto(title)
        self.hands.click(3)
        time.sleep(0.4)
        for level, entry in enumerate(entries):
            for _ in range(entry + (level == 0)):
                press("Down")
            if level < len(entries) - 1:
                press("Right")
                time.sleep(0.3)
        press("Return")
        time.sleep(0.5)

    def controls(self):
        """The area of the row of sizes, while it is up."""
        for window, area in self.program.windows().items():
            if output("xdotool", "getwindowname", window).startswith(CONTROLS) and area[0] > 0:
                return area
        return None

    def press_control(self, number):
        """Of the row: three sizes and the cross."""
        self.go_onto()
        x, y, width, height = wait_until("the controls", self.controls, 5)
        self.hands.move(x + round(width * (0.165 + 0.223 * number)), y + height // 2)
        time.sleep(0.2)
        self.hands.click()
        time.sleep(0.7)

    def pixels(self):
        return screen_pixels(*self.area())


class Hand(unittest.TestCase):
    def test_controls_and_double_click_go_through_the_sizes_around_the_middle(self):
        with wall(), Teacher() as teacher:
            teacher.drag_by(500, -300)
            widths, middles = [], []

            def note():
                x, y, width, height = teacher.area()
                widths.append(width - 2 * ROOM)
                middles.append((x + width // 2, y + height // 2))

            for act in (lambda: teacher.double_click(), lambda: teacher.double_click(), lambda: teacher.double_click(),
                        lambda: teacher.press_control(2), lambda: teacher.press_control(0)):
                act()
                note()
            teacher.go_away()
            self.assertIsNone(teacher.controls(), "the controls go with the mouse")
            teacher.end()
        self.assertEqual(widths, [320, 150, 220, 320, 150])
        for middle in middles:
            self.assertLessEqual(distance(middle, middles[0]), 1)

    def test_the_cross_puts_it_away_and_a_scene_brings_it_back(self):
        with wall(), Teacher() as teacher:
            teacher.press_control(3)
            self.assertEqual(bubble_areas(teacher.program), {})
            press("ctrl+2")
            time.sleep(2)
            press("ctrl+2")
            wait_until("the bubble", lambda: bubble_areas(teacher.program), 10)
            time.sleep(1.5)
            x, y, width, height = teacher.area()
            teacher.end()
        self.assertLess(abs(LastFrame(teacher.path).at(x + width // 2, y + height // 2) - luma_of(CAMERA)), 3)

    def test_where_it_was_left_and_how_it_looks_is_remembered_by_the_next_start(self):
        with wall(), Teacher() as teacher:
            teacher.drag_by(700, -420)
            teacher.choose(SHAPES[1])
            teacher.choose(CORNERS, 0)
            teacher.choose(SIZES[2])
            teacher.choose(STYLES, STYLE_NAMES.index("classic"))
            teacher.go_away()
            left = teacher.area()
            seen = teacher.pixels()
            teacher.end()
            teacher.program.quit()
            teacher.program.start()
            teacher.begin()
            teacher.go_away()
            again = teacher.pixels()
            self.assertEqual(teacher.area(), left)
            teacher.end()
        self.assertEqual(left[2:], (round(320 * 1.33) + 2 * ROOM, 320 + 2 * ROOM))
        self.assertEqual(different(seen, again), 0, "pixels that are not as they were")
        self.assertLess(distance(seen[ROOM + 8][ROOM + 8], CAMERA), 4, "straight corners")

    def test_the_menu_of_the_second_one_is_its_own(self):
        with wall(), Teacher(secondCameraID="synthetic:hands", arguments=["--synthetic-cameras"]) as teacher:
            first = teacher.area()
            teacher.choose(SHAPES[2], title=SECOND_BUBBLE)
            self.assertEqual(teacher.area(SECOND_BUBBLE)[2:], (round(220 * 0.78) + 2 * ROOM, round(220 * 1.3) + 2 * ROOM))
            teacher.double_click(SECOND_BUBBLE)
            self.assertEqual(teacher.area(SECOND_BUBBLE)[3], round(320 * 1.3) + 2 * ROOM)
            self.assertEqual(teacher.area(), first)
            teacher.end()


class Look(unittest.TestCase):
    def test_each_style_is_seen_on_the_screen_and_the_same_in_the_video(self):
        for number, style in enumerate(STYLE_NAMES):
            with self.subTest(style=style):
                start = "fine" if style == "none" else "none"
                with wall(), Teacher(ringStyle=start) as teacher:
                    teacher.choose(STYLES, number)
                    teacher.go_away()
                    area, seen = teacher.area(), teacher.pixels()
                    time.sleep(0.5)
                    later = teacher.pixels()
                    teacher.end()
                self.check(style, seen, later)
                if style in ("fine", "classic", "none"):
                    self.assert_in_video(teacher.path, area, seen)

    def check(self, style, seen, later):
        middle = len(seen[0]) // 2
        down = [row[middle] for row in seen]
        rim = down[:ROOM + 10]
        ringed = [i for i, color in enumerate(rim) if distance(color, RING) < 90]
        self.assertEqual(len(ringed) > 0, style in ("fine", "aurora", "classic"), (style, rim))
        if style in ("fine", "aurora"):
            self.assertLessEqual(len(ringed), 2)
        if style == "classic":
            self.assertGreaterEqual(len(ringed), 3)
        halo = down[ROOM - 6]
        self.assertEqual(halo[0] > halo[1] + 15 and halo[2] > halo[1] + 15, style == "aurora", (style, halo))
        self.assertEqual(seen != later, style in ("chameleon", "aurora"), "moves by itself")
        if style == "chameleon":
            self.assertGreater(max(rim[ROOM]) - min(rim[ROOM]), 100, "a colour of the palette on the rim")
        for x, y in ((0, 0), (-1, 0), (0, -1), (-1, -1)):
            self.assertEqual(seen[y][x], WALL, "nothing in the corners")

    def assert_in_video(self, path, area, seen):
        frame = LastFrame(path)
        x, y, width, height = area
        differences = [abs(luma_of(rgb) - frame.at(x + i, y + j)) for j, row in enumerate(seen) for i, rgb in enumerate(row)]
        self.assertLess(sum(differences) / len(differences), 1)

    def test_the_shadow_is_under_it_and_goes_with_its_switch(self):
        with wall(), Teacher(softShadow=True) as teacher:
            teacher.go_away()
            soft = teacher.pixels()
            teacher.choose(10)  # a circle has no corners
            teacher.go_away()
            hard = teacher.pixels()
            teacher.end()
        middle = len(soft[0]) // 2

        def depth(seen, below):
            return WALL[0] - seen[len(seen) - ROOM + below][middle][0]

        self.assertGreater(depth(soft, 10), depth(hard, 10) + 3, "soft reaches further")
        self.assertGreater(depth(hard, 1), 3)

    def test_the_ring_swells_with_the_voice(self):
        speech = ["ffmpeg", "-v", "error", "-re", "-f", "lavfi", "-i", "sine=frequency=300:duration=30,volume=8", "-f", "s16le",
                  "-ar", "48000", "-ac", "2", "-"]
        with wall(), Teacher(ringStyle="classic", micID="") as teacher:
            teacher.go_away()

            def thickness():
                x, y, width, _ = teacher.area()
                column = screen_pixels(x + width // 2, y, 1, ROOM + 20)
                return sum(1 for row in column if distance(row[0], RING) < 90)

            quiet = thickness()
            with subprocess.Popen(speech, stdout=subprocess.PIPE) as voice, \
                    subprocess.Popen(["pacat", "--device=micfeed", "--format=s16le", "--rate=48000", "--channels=2"],
                                     stdin=voice.stdout) as player:
                loud = wait_until("a thick ring", lambda: max(thickness(), 0) >= quiet + 4 and thickness(), 15)
                player.terminate()
                voice.terminate()
            wait_until("a thin ring again", lambda: thickness() == quiet, 15)
            teacher.end()
        self.assertIn(quiet, (3, 4))
        self.assertGreaterEqual(loud, 7)


if __name__ == "__main__":
    unittest.main(verbosity=2)
