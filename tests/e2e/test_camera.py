"""The camera in the finished file: against the voice, and picture for picture. The camera is a synthetic one."""

import statistics
import time
import unittest

from program import Program, Stage, flashes, judge, press, runs, wait_until

FLASH = "--camera-flash", "2"  # at the even seconds of the host clock, when `beep` beeps
WALL = "202020"
CELL = 12  # of the counter: a camera of 1280 pixels fills a window of 960


def record(seconds, *options, **settings):
    """The path of a recording with a synthetic camera that is not mirrored."""
    with Program(arguments=["--synthetic-cameras", *options], mirror=False, **settings) as program:
        path = program.begin_recording()
        time.sleep(seconds)
        program.end_recording(path)
        return path


class Voice(unittest.TestCase):
    def assert_flashes_at_beeps(self, seen, limit):
        lights = [at for at in flashes(seen["frames"], ground=215) if at > 1]
        beeps = [begin for begin, _ in seen["sounds"][0]]
        offsets = [min((light - beep for beep in beeps), key=abs) for light in lights]
        print("camera against voice in ms:", [round(offset * 1000) for offset in offsets])
        self.assertGreaterEqual(len(offsets), 3)
        self.assertLess(abs(statistics.median(offsets)), limit)

    def test_the_camera_alone_keeps_to_the_voice(self):
        with Stage("beep", "--unmanaged", "--color", WALL, "--size", "1920x1080"):
            path = record(9, *FLASH, mode="cam")
        self.assert_flashes_at_beeps(judge(path, "--probe", "300,300"), 0.040)

    def test_the_bubble_keeps_to_the_voice_beside_a_moving_screen(self):
        with Stage("beep", "--unmanaged", "--color", WALL, "--size", "1920x1080"), \
                Stage("tick", "--unmanaged", "--color", WALL, "--size", "640x480", "--at", "900,200"):
            path = record(9, *FLASH, mode="screenCam")
        self.assert_flashes_at_beeps(judge(path, "--probe", "172,850"), 0.040)


class Picture(unittest.TestCase):
    def test_the_cameras_pictures_follow_each_other_in_the_file(self):
        with Stage("plain", "--unmanaged", "--color", WALL, "--size", "1920x1080"):
            path = record(5, mode="cam", micID="none")
        seen = judge(path, "--counter", f"0,0,{CELL}")
        counted = runs(seen["frames"])
        print("camera's pictures in the file:", counted)
        self.assertEqual(counted["frames"], len(seen["frames"]), "each frame shows a picture of the camera")
        self.assertEqual(counted["back"], 0)
        self.assertGreater(counted["frames"], 60)
        video = seen["streams"][0]
        self.assertEqual((video["width"], video["height"]), (960, 540))

    def test_without_any_camera_the_mode_of_the_camera_alone_does_not_record(self):
        with Program(mode="cam") as program:
            before = program.videos()
            press("ctrl+g")
            wait_until("the message", lambda: any(area[2] < 800 and area[3] < 500 for area in program.windows().values()))
            self.assertEqual(program.videos(), before)


if __name__ == "__main__":
    unittest.main(verbosity=2)
