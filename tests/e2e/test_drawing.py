"""Drawing on the screen: real strokes of the mouse, judged by the screen and by the finished file."""

import ctypes
import subprocess
import time
import unittest

import screen_reader
from hands import Hands
from program import Program, click, judge, luma_of, output, pixel_on_screen, press, wait_until

GREY = (0xC8, 0xC8, 0xC8)
RED, YELLOW, BLUE = (0xFF, 0x45, 0x3A), (0xFF, 0xD6, 0x0A), (0x0A, 0x84, 0xFF)
LUMA_SLACK = 6
PLAIN_BYTES = 256  # less than the first picture of a plain screen has
PALETTE = "Velmo Studio · paleta"
OVERLAY = "Velmo Studio · dibujo"


def layout():
    """The middle of each of the palette's controls, by the measures of its row."""
    tool, dot, divider = 34, 28, 13
    groups = [[(name, tool) for name in ("pen", "fountain", "nib", "highlighter", "laser")],
              [(name, tool) for name in ("rect", "ellipse", "arrow", "line")],
              [("eraser", tool)],
              [(name, dot) for name in ("red", "yellow", "green", "sky", "blue", "pink", "white", "night")],
              [(name, dot) for name in ("thin", "medium", "thick")],
              [("undo", tool), ("clear", tool)]]
    places, x = {}, 8
    for group in groups:
        for name, width in group:
            places[name] = x + width / 2
            x += width + 2
        x += divider + 2
    return places


class Palette:
    """The palette's controls, pressed by the mouse. The row stands in the middle of the screen's top."""

    TOP, MIDDLE = 12, 25

    def __init__(self, hands):
        wait_until("the palette", lambda: output("xdotool", "search", "--onlyvisible", "--name", PALETTE).split())
        time.sleep(0.3)
        self.hands = hands
        self.left, self.width = wait_until("the palette to be painted", self.card)

    @staticmethod
    def card():
        """Left edge and width, as seen: the card is dark on the grey ground."""
        line = subprocess.run(["import", "-window", "root", "-crop", "1920x1+0+45", "-depth", "8", "gray:-"],
                              capture_output=True, check=True).stdout
        dark = [x for x, value in enumerate(line) if value < 70]
        return dark and (dark[0], dark[-1] - dark[0] + 1)

    def press(self, name):
        self.press_at(layout()[name])

    def finish(self):
        self.press_at(self.width - 8 - 25)
        wait_until("the palette's end", lambda: not output("xdotool", "search", "--onlyvisible", "--name", PALETTE).split())

    def press_at(self, x):
        self.hands.move(round(self.left + x), self.TOP + self.MIDDLE)
        time.sleep(0.05)
        self.hands.click()
        time.sleep(0.1)


def drag(hands, *points, steps=40):
    """With the left button through the points, as a hand does it; and away, so that the pointer covers nothing."""
    hands.move(*points[0])
    hands.button(1, True)
    for begin, end in zip(points, points[1:]):
        for i in range(1, steps + 1):
            hands.move(*(round(a + (b - a) * i / steps) for a, b in zip(begin, end)))
            time.sleep(0.005)
    hands.button(1, False)
    hands.move(1800, 1000)
    time.sleep(0.3)


def probes(*places):
    return [argument for x, y in places for argument in ("--probe", f"{x},{y}")]


def shown(frames, probe, *states):
    """The states (colours) that a place goes through."""
    lumas = [luma_of(state) for state in states]
    seen = []
    for frame in frames:
        luma = frame["probes"][probe][0]
        nearest = min(range(len(states)), key=lambda i: abs(lumas[i] - luma))
        if abs(lumas[nearest] - luma) < LUMA_SLACK and (not seen or seen[-1] != nearest):
            seen.append(nearest)
    return seen


def near(a, b, slack=4):
    return all(abs(x - y) <= slack for x, y in zip(a, b))


def mixed(top, alpha, under):
    return tuple(alpha * t + (1 - alpha) * u for t, u in zip(top, under))


class Lesson:
    """A grey window over the whole screen that counts the clicks which come to it, as an application would."""

    BUTTON_PRESS, BUTTON_PRESS_MASK = 4, 1 << 2

    def __init__(self):
        x11 = self.x11 = ctypes.CDLL("libX11.so.6")
        x11.XOpenDisplay.restype = ctypes.c_void_p
        x11.XDefaultRootWindow.restype = x11.XCreateSimpleWindow.restype = ctypes.c_ulong
        self.display = ctypes.c_void_p(x11.XOpenDisplay(None))
        root = ctypes.c_ulong(x11.XDefaultRootWindow(self.display))
        self.window = ctypes.c_ulong(x11.XCreateSimpleWindow(self.display, root, 0, 0, 1920, 1080, 0, ctypes.c_ulong(0),
                                                             ctypes.c_ulong(0xC8C8C8)))
        attributes = (ctypes.c_long * 14)()  # XSetWindowAttributes, of which override_redirect is the twelfth
        attributes[11] = 1
        x11.XChangeWindowAttributes(self.display, self.window, ctypes.c_ulong(1 << 9), ctypes.byref(attributes))
        x11.XSelectInput(self.display, self.window, ctypes.c_long(self.BUTTON_PRESS_MASK))
        x11.XMapRaised(self.display, self.window)
        x11.XSync(self.display, 0)
        self.count = 0

    def clicks(self):
        event = (ctypes.c_long * 24)()
        self.x11.XSync(self.display, 0)
        while self.x11.XPending(self.display):
            self.x11.XNextEvent(self.display, ctypes.byref(event))
            self.count += ctypes.cast(event, ctypes.POINTER(ctypes.c_int))[0] == self.BUTTON_PRESS
        return self.count

    def is_composited(self):
        """Without a compositing manager the overlay is cut to its ink: the laser has no light then."""
        self.x11.XInternAtom.restype = self.x11.XGetSelectionOwner.restype = ctypes.c_ulong
        manager = ctypes.c_ulong(self.x11.XInternAtom(self.display, b"_NET_WM_CM_S0", 0))
        return self.x11.XGetSelectionOwner(self.display, manager) != 0

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.x11.XCloseDisplay(self.display)


class Drawing(unittest.TestCase):
    def setUp(self):
        self.lesson = self.enterContext(Lesson())
        self.hands = self.enterContext(Hands())
        self.hands.move(1800, 1000)
        self.program = self.enterContext(Program(micID="none", systemAudio=False, cursorHighlight=False))

    def enterContext(self, context):
        self.addCleanup(context.__exit__, None, None, None)
        return context.__enter__()

    def begin(self):
        path = self.program.begin_recording(PLAIN_BYTES)
        time.sleep(1)
        press("ctrl+d")
        palette = Palette(self.hands)
        time.sleep(0.5)
        return path, palette

    def test_ink_is_in_the_video_where_it_was_drawn_and_the_palette_is_not(self):
        path, palette = self.begin()
        self.assertLessEqual(abs(palette.left + palette.width / 2 - 960), 1, "in the middle")
        drag(self.hands, (300, 400), (700, 400))
        pen = pixel_on_screen(500, 400)
        palette.press("highlighter")
        palette.press("yellow")
        drag(self.hands, (300, 700), (800, 700))
        palette.press("rect")
        palette.press("blue")
        drag(self.hands, (900, 300), (1300, 600))
        at_palette = (round(palette.left) + 4, 37)
        dark = pixel_on_screen(*at_palette)
        self.program.end_recording(path)

        sides = [(1100, 300 + off) for off in range(-32, 33, 2)]
        frames = judge(path, *probes((500, 400), (550, 700), at_palette, (1100, 450), *sides))["frames"]
        self.assertTrue(near(pen, RED), pen)
        self.assertLess(max(dark), 90, "the palette was on the screen")
        self.assertEqual(shown(frames, 0, GREY, RED), [0, 1])
        self.assertEqual(shown(frames, 1, GREY, mixed(YELLOW, 0.38, GREY)), [0, 1])
        for frame in frames:
            self.assertLess(abs(frame["probes"][2][0] - luma_of(GREY)), LUMA_SLACK, "no palette in the video")
        self.assertLess(abs(frames[-1]["probes"][3][0] - luma_of(GREY)), LUMA_SLACK, "a rectangle is empty inside")
        of_side = [luma for luma, _, _ in frames[-1]["probes"][4:]]
        self.assertLess(min(abs(luma - luma_of(BLUE)) for luma in of_side), LUMA_SLACK, "the upper side of the rectangle")
        self.assertGreater(min(of_side[0], of_side[-1]), luma_of(GREY) - LUMA_SLACK, "and nothing beside it")

    def test_the_laser_fades_and_leaves_nothing(self):
        path, palette = self.begin()
        palette.press("laser")
        palette.press("thick")
        drag(self.hands, (300, 400), (700, 400))
        drawn = pixel_on_screen(500, 400)
        time.sleep(1.6)
        after = pixel_on_screen(500, 400)
        self.program.end_recording(path)
        frames = judge(path, *probes((500, 400), (500, 404), (500, 410)))["frames"]
        # The pointer's black cross passes over these places: what is asked for is to be seen at some time.
        core, stroke, glow = ([frame["probes"][i][0] for frame in frames] for i in range(3))
        ground = luma_of(GREY)
        self.assertFalse(near(drawn, GREY), drawn)
        self.assertEqual(after, GREY)
        self.assertGreater(max(core), ground + 15, "a hot core")
        red = [i for i, luma in enumerate(stroke) if abs(luma - luma_of(RED)) < LUMA_SLACK]
        self.assertTrue(red, "in a red line")
        if self.lesson.is_composited():
            self.assertTrue(any(ground - 30 < luma < ground - LUMA_SLACK for luma in glow), "with a light round it")
        for place in (core, stroke, glow):
            self.assertLess(abs(place[-1] - ground), LUMA_SLACK)
        fading = stroke[red[-1]:]
        self.assertGreater(len(set(fading)), 12, "by and by")

    def test_after_listo_the_ink_stays_and_clicks_reach_the_application(self):
        path, palette = self.begin()
        drag(self.hands, (300, 400), (700, 400))
        self.assertEqual(self.lesson.clicks(), 0)
        palette.finish()
        self.hands.move(500, 400)
        self.hands.click()
        self.hands.click()
        self.hands.move(1800, 1000)
        wait_until("the clicks", lambda: self.lesson.clicks() == 2)
        self.assertTrue(near(pixel_on_screen(500, 400), RED))
        press("ctrl+d")
        palette = Palette(self.hands)
        drag(self.hands, (300, 500), (700, 500))
        self.assertEqual(self.lesson.clicks(), 2)
        palette.press("clear")
        palette.finish()
        self.assertEqual(output("xdotool", "search", "--onlyvisible", "--name", OVERLAY).split(), [], "without ink it goes")
        self.hands.click()
        wait_until("the click", lambda: self.lesson.clicks() == 3)
        self.program.end_recording(path)
        frames = judge(path, *probes((500, 400), (400, 500)))["frames"]
        self.assertEqual(shown(frames, 0, GREY, RED), [0, 1, 0])
        self.assertEqual(shown(frames, 1, GREY, RED), [0, 1, 0])

    def test_undo_clear_and_the_eraser_are_in_the_video_as_they_happen(self):
        path, palette = self.begin()
        for y in (300, 400, 500):
            drag(self.hands, (300, y), (700, y))
        for name in ("undo", "clear", "undo"):
            palette.press(name)
            time.sleep(0.4)
        palette.press("eraser")
        drag(self.hands, (500, 250), (500, 450))
        palette.press("undo")
        time.sleep(0.4)
        self.program.end_recording(path)
        frames = judge(path, *probes((400, 300), (400, 400), (400, 500)))["frames"]
        self.assertEqual(shown(frames, 0, GREY, RED), [0, 1, 0, 1, 0, 1])
        self.assertEqual(shown(frames, 1, GREY, RED), [0, 1, 0, 1, 0, 1])
        self.assertEqual(shown(frames, 2, GREY, RED), [0, 1, 0])

    def test_the_next_recording_begins_without_ink(self):
        path, palette = self.begin()
        drag(self.hands, (300, 400), (700, 400))
        palette.finish()
        self.program.end_recording(path)
        self.assertEqual(output("xdotool", "search", "--onlyvisible", "--name", OVERLAY).split(), [])
        path = self.program.begin_recording(PLAIN_BYTES)
        time.sleep(1)
        self.program.end_recording(path)
        frames = judge(path, *probes((500, 400)))["frames"]
        self.assertEqual(shown(frames, 0, GREY, RED), [0])

    def test_a_menu_of_the_bar_leaves_the_mouse_to_the_canvas(self):
        screen_reader.switch_on()
        self.program.quit()
        self.program.start()
        path, _ = self.begin()
        region = screen_reader.middle(screen_reader.bring("Velmo Studio · controles", "Grabar solo una zona"))
        for y in (400, 500):
            before = set(self.program.windows())
            click(*region, button=3)
            menu = wait_until("the menu", lambda: set(self.program.windows()) - before)
            press("Escape")
            wait_until("the menu's end", lambda: not menu & set(self.program.windows()))
            drag(self.hands, (300, y), (700, y))
            self.assertTrue(near(pixel_on_screen(500, y), RED), pixel_on_screen(500, y))
        self.assertEqual(self.lesson.clicks(), 0)
        self.program.end_recording(path)


if __name__ == "__main__":
    unittest.main(verbosity=2)
