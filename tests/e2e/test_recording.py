"""A class is recorded by keys and judged by the finished file."""

import os
import subprocess
import time
import unittest

from program import (Program, Stage, flashes, judge, luma_of, output, pixel_on_screen, press, runs, wait_until)

FRAME = 1 / 30


class Recording(unittest.TestCase):
    def test_a_class_with_a_pause_and_two_markers_is_one_continuous_video(self):
        with Stage("motion"), Program(systemAudio=True) as program:
            path = program.begin_recording()
            time.sleep(2)
            press("ctrl+m")
            time.sleep(1)
            press("ctrl+p")
            time.sleep(3)
            press("ctrl+p")
            time.sleep(1)
            press("ctrl+m")
            time.sleep(1)
            entry = program.end_recording(path)
            seen = judge(path, "--counter", "0,0")

        video = [stream for stream in seen["streams"] if stream["type"] == "video"]
        sound = [stream for stream in seen["streams"] if stream["type"] == "audio"]
        self.assertEqual(len(video), 1)
        self.assertEqual(len(sound), 1, "system sound and microphone are mixed into one track")
        self.assertEqual((video[0]["codec"], video[0]["profile"], video[0]["reorder"]), ("h264", "High", 0))
        self.assertEqual((video[0]["width"], video[0]["height"]), (1920, 1080))
        self.assertEqual([video[0][key] for key in ("primaries", "transfer", "matrix", "range")], ["bt709"] * 3 + ["tv"])
        self.assertEqual((sound[0]["codec"], sound[0]["sampleRate"], sound[0]["channels"]), ("aac", 48000, 2))
        self.assertEqual(seen["decodeErrors"], 0)

        # The clock of the session counts the same time as the file, and the three seconds of pause are in neither.
        self.assertEqual(len(entry["markers"]), 2)
        self.assertLess(entry["duration"], 8)
        self.assertLess(abs(entry["duration"] - video[0]["duration"]), 0.25)
        self.assertGreater(entry["markers"][1] - entry["markers"][0], 1.5)
        self.assertLess(entry["markers"][1] - entry["markers"][0], 3)

        frames = seen["frames"]
        times = [frame["t"] for frame in frames]
        self.assertTrue(all(b > a for a, b in zip(times, times[1:])))
        counters = [frame["counter"] for frame in frames if frame["counter"] >= 0]
        jumps = [b - a for a, b in zip(counters, counters[1:]) if b - a > 45]
        self.assertEqual(len(jumps), 1, "one jump of the counter: the pause")
        gap = next(b["t"] - a["t"] for a, b in zip(frames, frames[1:]) if b["counter"] - a["counter"] > 45)
        self.assertLess(gap, 0.2, "and no gap in the times where it was")
        keys = [frame["t"] for frame in frames if frame["key"]]
        self.assertTrue(all(b - a < 2.2 for a, b in zip(keys, keys[1:])))

    def test_full_motion_at_30_frames_loses_and_repeats_nothing(self):
        with Stage("motion"), Program() as program:
            path = program.begin_recording()
            time.sleep(8)
            program.end_recording(path)
            counted = runs(judge(path, "--counter", "0,0")["frames"])
        self.assertGreater(counted["frames"], 200)
        # The machine may be busy with something else for a moment; steady loss is what must not be.
        self.assertLessEqual(counted["skipped"] + counted["repeated"], 6, counted)
        self.assertEqual(counted["back"], 0)

    def test_windows_of_the_program_itself_are_not_in_the_video_and_what_lies_under_them_is(self):
        with Stage("plain", "--color", "c04020"), Program() as program:
            path = program.begin_recording()
            bar = wait_until("the control bar", lambda: next(
                (area for area in program.windows().values() if 40 < area[3] < 250 and area[2] < 1400), None))
            x, y = bar[0] + bar[2] // 2, bar[1] + bar[3] // 2
            spots = [(x + dx, y + dy) for dx in (-100, -40, 0, 40, 100) for dy in (0, 10, 20)]
            time.sleep(1)
            on_screen = [pixel_on_screen(*spot) for spot in spots]
            program.end_recording(path)
            probes = [argument for spot in spots for argument in ("--probe", f"{spot[0]},{spot[1]}")]
            last = judge(path, *probes)["frames"][-1]["probes"]
        stage = luma_of((0xC0, 0x40, 0x20))
        self.assertTrue(any(abs(luma_of(pixel) - stage) > 20 for pixel in on_screen), "the bar stands on the screen")
        for luma, _, _ in last:
            self.assertLess(abs(luma - stage), 4, "the stage shows through where the bar stands")

    def test_sound_and_picture_belong_together_from_start_to_end(self):
        with Stage("flash", "--size", "800x600"), Program() as program:
            path = program.begin_recording()
            time.sleep(13)
            program.end_recording(path)
            seen = judge(path, "--probe", "400,300")
        lights = flashes(seen["frames"])
        beeps = [begin for begin, _ in seen["sounds"][0]]
        self.assertGreaterEqual(len(lights), 5)
        offsets = [min((beep - light for beep in beeps), key=abs) for light in lights]
        print("sound against picture in ms:", [round(offset * 1000) for offset in offsets])
        self.assertLess(max(abs(offset) for offset in offsets), 0.060)
        self.assertLess(abs(sorted(offsets)[len(offsets) // 2]), 0.040)

    def test_a_still_screen_gives_a_video_as_long_as_the_class(self):
        with Stage("still"), Program(micID="none") as program:
            path = program.begin_recording()
            time.sleep(5)
            entry = program.end_recording(path)
            seen = judge(path)
        self.assertLess(len(seen["frames"]), 40)
        self.assertLess(abs(seen["streams"][0]["duration"] - entry["duration"]), 0.25)
        self.assertEqual([stream["type"] for stream in seen["streams"]], ["video"])

    def test_the_video_is_selected_in_the_library_when_it_is_done(self):
        with Stage("plain"), Program() as program:
            wait_until("the library window", program.library_window)
            path = program.begin_recording()
            self.assertIsNone(program.library_window(), "the home window is away while recording")
            time.sleep(1)
            program.end_recording(path)
            wait_until("the library window again", program.library_window)


class BadDays(unittest.TestCase):
    def test_a_second_press_while_it_starts_changes_nothing(self):
        with Stage("plain"), Program() as program:
            press("ctrl+g", "ctrl+g")
            wait_until("a video", program.videos)
            time.sleep(1.5)
            self.assertEqual(len(program.videos()), 1)
            path = program.videos()[0]
            program.end_recording(path)
            self.assertEqual(len(judge(path)["streams"]), 2)

    def test_quitting_while_recording_is_refused_and_the_recording_goes_on(self):
        with Stage("motion"), Program() as program:
            path = program.begin_recording()
            wait_until("the keys of a running recording", lambda: os.path.getsize(path) > 100_000)
            subprocess.run(["xdotool", "search", "--pid", str(program.process.pid), "--name", "Velmo Studio", "windowclose"],
                           stderr=subprocess.DEVNULL)
            time.sleep(1)
            self.assertIsNone(program.process.poll())
            entry = program.end_recording(path)
            self.assertGreater(entry["duration"], 1)

    def test_a_terminated_program_saves_its_recording_first(self):
        with Stage("motion"), Program() as program:
            path = program.begin_recording()
            time.sleep(2)
            program.quit()
            self.assertGreater(judge(path)["duration"], 1.5)

    def test_a_sound_server_that_goes_away_does_not_end_the_recording(self):
        # A program that never finds a sound server records the picture.
        with Stage("motion"):
            server = os.environ.pop("PULSE_SERVER")
            os.environ["PULSE_SERVER"] = "unix:/nonexistent/socket"
            try:
                with Program() as program:
                    path = program.begin_recording()
                    time.sleep(2)
                    entry = program.end_recording(path)
                    seen = judge(path)
            finally:
                os.environ["PULSE_SERVER"] = server
        self.assertGreater(entry["duration"], 1.5)
        self.assertIn("video", [stream["type"] for stream in seen["streams"]])


if __name__ == "__main__":
    unittest.main(verbosity=2)
