"""What goes wrong with a camera while a class is prepared and recorded, judged by the screen and the finished file. The
camera is one of Video4Linux: a driver that does as it is told is loaded into the program."""

import subprocess
import time
import unittest

import screen_reader as reader
from fake_camera import ID, Camera, ProgramWithCamera
from picture import FIRST_BUBBLE, HEIGHT, WALL, LastFrame, bubble_areas, screen_pixels, wall, yuv
from program import Program, judge, luma_of, pixel_on_screen, press, press_in_library, wait_until

RED, GREEN, BLUE = (0xC0, 0x40, 0x40), (0x40, 0xA0, 0x50), (0x40, 0x60, 0xC0)
NOTHING = (0x14, 0x14, 0x14)  # a bubble without any picture
MIDDLE = 172, 908  # of the bubble where it comes up at first
COLUMN = 192, 540
SLACK = 6  # code values: a camera's JPEG, its conversion, the screen's and the encoder's
PLAIN = {"mode": "screenCam", "micID": "none", "ringStyle": "none", "softShadow": False}


def is_near(seen, color):
    return all(abs(a - b) < SLACK for a, b in zip(seen, yuv(color)))


def wait_on_screen(color, place=MIDDLE):
    def shows():
        return is_near(yuv(pixel_on_screen(*place)), color)
    wait_until(f"the colour {color} at {place}", shows, 20)


def colors_in(path, place, *known):
    """The known colours that a place in the file goes through, each with its seconds; "?" is another one. Without the
    beginning, which may be seen before the bubble's own picture has arrived."""
    frames = judge(path, "--probe", "%d,%d" % place)["frames"]
    rows = []
    for frame, after in zip(frames, frames[1:] + frames[-1:]):
        name = next((color for color in known if is_near(frame["probes"][0], color)), "?")
        if not rows or rows[-1][0] != name:
            rows.append([name, 0])
        rows[-1][1] += after["t"] - frame["t"]
    begins_bare = len(rows) > 1 and rows[0][0] == "?" and is_near(frames[0]["probes"][0], WALL)
    return rows[begins_bare:]


class Days(unittest.TestCase):
    def assert_goes(self, path, place, *colors):
        rows = colors_in(path, place, *colors)
        self.assertEqual([row[0] for row in rows], list(colors), rows)
        return [row[1] for row in rows]


class Absent(Days):
    def test_without_a_camera_the_screen_is_recorded_alone(self):
        with wall(), Program(**PLAIN) as program:
            path = program.begin_recording()
            time.sleep(1)
            self.assertEqual(bubble_areas(program), {})
            for key in "234c":
                press("ctrl+" + key)
                time.sleep(0.5)
            entry = program.end_recording(path)
        self.assertGreater(entry["duration"], 2)
        for place in (MIDDLE, COLUMN, (960, 300)):
            self.assert_goes(path, place, WALL)

    def test_of_an_unknown_stored_device_the_first_one_is_taken(self):
        camera = Camera(RED)
        with wall(), ProgramWithCamera(camera, cameraID="v4l2:gone", **PLAIN) as program:
            path = program.begin_recording()
            wait_on_screen(RED)
            time.sleep(1)
            program.end_recording(path)
        self.assertEqual(colors_in(path, MIDDLE, RED)[-1][0], RED)

    def test_one_that_another_program_holds_comes_up_when_it_is_free(self):
        camera = Camera(RED)
        camera.order(busy=True)
        with wall(), ProgramWithCamera(camera, **PLAIN) as program:
            path = program.begin_recording()
            wait_on_screen(NOTHING)
            time.sleep(1)
            camera.order(busy=False)
            wait_on_screen(RED)
            time.sleep(1)
            program.end_recording(path)
        self.assert_goes(path, MIDDLE, NOTHING, RED)


class Prepared(Days):
    def test_plugged_in_while_the_setup_panel_is_open_it_comes_up_and_unplugged_it_goes(self):
        camera = Camera(RED)
        camera.unplug()
        reader.switch_on()
        with wall(), ProgramWithCamera(camera, **PLAIN) as program:
            press_in_library("ctrl+n")
            reader.window("Nueva grabación")
            self.assertEqual(bubble_areas(program), {})
            camera.plug()
            wait_on_screen(RED)
            camera.unplug()
            wait_until("the bubble's end", lambda: bubble_areas(program) == {}, 20)
            camera.plug("video2")
            wait_on_screen(RED)


class Lost(Days):
    """The bubble keeps the last picture, never nothing and never half of one."""

    def record(self, camera, during, **settings):
        with wall(), ProgramWithCamera(camera, **{**PLAIN, **settings}) as program:
            path = program.begin_recording()
            wait_on_screen(RED)
            time.sleep(0.5)
            during()
            time.sleep(1)
            program.end_recording(path)
        return path

    def test_unplugged_its_last_picture_stays_and_plugged_back_as_another_node_it_goes_on(self):
        camera = Camera(RED)

        def unplug_and_plug():
            camera.unplug()
            camera.show(GREEN)
            time.sleep(3)
            camera.plug("video2")
            wait_on_screen(GREEN)

        red, _ = self.assert_goes(self.record(camera, unplug_and_plug), MIDDLE, RED, GREEN)
        self.assertGreater(red, 3)

    def test_silent_for_two_seconds_it_is_opened_again_and_its_last_picture_stays(self):
        camera = Camera(RED)

        def fall_silent():
            before = camera.starts()
            camera.order(rate=0)
            silent = time.monotonic()
            camera.wait_started(before + 1)
            self.assertGreater(time.monotonic() - silent, 1.9)
            camera.show(GREEN)
            time.sleep(1)
            camera.order(rate=30)
            wait_on_screen(GREEN)

        red, _ = self.assert_goes(self.record(camera, fall_silent), MIDDLE, RED, GREEN)
        self.assertGreater(red, 3)

    def test_one_that_stays_silent_leaves_its_last_picture_to_the_end(self):
        camera = Camera(RED)

        def fall_silent_for_good():
            before = camera.starts()
            camera.order(rate=0)
            camera.wait_started(before + 2)

        seconds, = self.assert_goes(self.record(camera, fall_silent_for_good), MIDDLE, RED)
        self.assertGreater(seconds, 7)

    def test_damaged_pictures_are_not_seen(self):
        camera = Camera(RED)

        def damage():
            camera.order(pictures=[camera.pictures[0], camera.damaged(BLUE), camera.damaged(GREEN)])
            time.sleep(2)
            camera.order(pictures=[camera.damaged(BLUE)])
            time.sleep(1.5)
            camera.show(GREEN)
            wait_on_screen(GREEN)

        path = self.record(camera, damage)
        for place in (MIDDLE, (172, 990)):
            self.assert_goes(path, place, RED, GREEN)

    def test_another_size_fills_the_bubble_and_the_column_all_the_same(self):
        for key, places in ((None, (MIDDLE, (70, 908), (172, 1005))), ("4", (COLUMN, (10, 20), (370, 1060)))):
            with self.subTest(key=key):
                camera = Camera(RED)

                def change_size():
                    if key:
                        press("ctrl+" + key)
                        time.sleep(2)
                    for color, size in ((GREEN, "640x480"), (BLUE, "320x180"), (RED, "1280x720")):
                        camera.order(pictures=[camera.picture(color, size)])
                        time.sleep(1)

                path = self.record(camera, change_size)
                for place in places:
                    rows = [row[0] for row in colors_in(path, place, RED, GREEN, BLUE)]
                    self.assertEqual(rows[-3:], [GREEN, BLUE, RED], f"at {place}")

    def test_five_pictures_a_second_are_all_shown_and_it_is_left_alone(self):
        camera = Camera(RED)

        def slow_down():
            camera.order(rate=5, pictures=[camera.pictures[0], camera.picture(GREEN)])
            time.sleep(6)

        rows = colors_in(self.record(camera, slow_down), MIDDLE, RED, GREEN)
        self.assertEqual({row[0] for row in rows}, {RED, GREEN})
        self.assertGreater(len(rows), 28)
        self.assertEqual(camera.starts(), 1)


class Places(Days):
    def test_a_place_on_a_display_that_is_gone_becomes_the_corner(self):
        for place in ({"bubbleX": 2500, "bubbleY": 300}, {"bubbleX": -400, "bubbleY": 1500}, {"bubbleX": 1e300, "bubbleY": 0}):
            with self.subTest(place=place):
                camera = Camera(RED)
                with wall(), ProgramWithCamera(camera, **PLAIN, **place) as program:
                    path = program.begin_recording()
                    wait_on_screen(RED)
                    time.sleep(1)
                    self.assertEqual(bubble_areas(program), {FIRST_BUBBLE: (40, HEIGHT - 40 - 264, 264, 264)})
                    program.end_recording(path)
                self.assertEqual(colors_in(path, MIDDLE, RED)[-1][0], RED)

    def test_a_bubble_closed_in_the_flight_leaves_the_stage_up_and_the_next_scene_brings_it_back(self):
        reader.switch_on()
        camera = Camera(RED)
        with wall(), ProgramWithCamera(camera, **PLAIN) as program:
            path = program.begin_recording()
            wait_on_screen(RED)
            x, y = reader.middle(reader.control(None, "Mostrar u ocultar la cámara"))
            press("ctrl+2")
            time.sleep(0.25)
            subprocess.run(["xdotool", "mousemove", str(x), str(y), "click", "1"], check=True)
            time.sleep(2)
            self.assertEqual(bubble_areas(program), {})
            self.assertTrue(is_near(yuv(pixel_on_screen(960, 400)), RED), "the stage stands")
            press("ctrl+1")
            wait_on_screen(RED)
            time.sleep(2)
            self.assertEqual(list(bubble_areas(program)), [FIRST_BUBBLE])
            self.assertTrue(is_near(yuv(pixel_on_screen(960, 400)), WALL), "the stage is gone")
            program.end_recording(path)
        self.assertEqual(colors_in(path, MIDDLE, RED)[-1][0], RED)
        stage = [row[0] for row in colors_in(path, (960, 400), WALL, RED)]
        self.assertIn(RED, stage)
        self.assertEqual(stage[-1], WALL)


class Names(Days):
    NAMES = {"300 characters": "Doña Inés de la Fuente y Ortiz " * 10, "emoji": "👩‍🏫🎓 Ana 🧪✨",
             "right to left": "الأستاذة ليلى حداد", "one letter": "Ñ", "line breaks": "Ana\nMaría\tRuiz"}

    def test_a_name_of_any_kind_is_in_the_video_as_on_the_screen_and_within_its_room(self):
        for kind, name in self.NAMES.items():
            with self.subTest(kind=kind):
                self.check(name)

    def check(self, name):
        camera = Camera(RED)
        settings = {"presenterName": name, "presenterRole": "Física y química", "showName": True}
        with wall(), ProgramWithCamera(camera, **PLAIN, **settings) as program:
            path = program.begin_recording()
            wait_on_screen(RED)
            time.sleep(1)
            x, y, width, height = bubble_areas(program)[FIRST_BUBBLE]
            top, left = y + height - 42, x - 30
            strip = screen_pixels(left, top, width + 60, 40)
            press("ctrl+2")
            time.sleep(2)
            press("ctrl+4")
            time.sleep(2.5)
            press("ctrl+1")
            time.sleep(2.5)
            self.assertIsNone(program.process.poll())
            program.end_recording(path)
        line = [yuv(rgb) for rgb in strip[20]]
        pill = [i for i, seen in enumerate(line) if not is_near(seen, WALL) and not is_near(seen, RED)]
        self.assertGreater(len(pill), 30, "there is a name")
        self.assertGreaterEqual(pill[0], 30 + 3, "within the bubble's window")
        self.assertLessEqual(pill[-1], 30 + width - 3)
        frame = LastFrame(path)
        differences = [abs(luma_of(rgb) - frame.at(left + i, top + j))
                       for j, row in enumerate(strip) for i, rgb in enumerate(row)]
        self.assertLess(sum(differences) / len(differences), 2)


if __name__ == "__main__":
    unittest.main(verbosity=2)
