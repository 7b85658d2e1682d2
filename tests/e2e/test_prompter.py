"""The script on the recorded screen: read, moved by keys and mouse, and never in the video."""

import re
import subprocess
import time
import unittest

from program import Program, Stage, click, judge, luma_of, output, pixel_on_screen, press, wait_until

GREY = (0xC8, 0xC8, 0xC8)
LUMA_SLACK = 5
WIDTH, HEIGHT, TOP = 680, 205, 6
LEFT = (1920 - WIDTH) // 2
CONTROLS = TOP + HEIGHT - 23
SCRIPT = "\n".join(f"Renglón {number} de lo que voy a decir en esta clase" for number in range(200))


def strip():
    return output("xdotool", "search", "--onlyvisible", "--name", "Velmo Studio · guion").split()


def text_on_screen():
    """The pixels of the text's lines."""
    return subprocess.run(["import", "-window", "root", "-crop", f"{WIDTH - 80}x{HEIGHT - 60}+{LEFT + 40}+{TOP + 10}",
                           "-depth", "8", "rgb:-"], capture_output=True, check=True).stdout


def places():
    """All over the strip and its shadow."""
    return [(x, y) for x in range(LEFT + 8, LEFT + WIDTH, 83) for y in (TOP + 3, 40, 64, 90, 130, CONTROLS, TOP + HEIGHT + 8)]


class Prompter(unittest.TestCase):
    def test_is_on_the_screen_from_the_start_and_in_no_frame_of_the_video(self):
        with Stage("plain", "--color", "c8c8c8"), Stage("motion", "--unmanaged", "--size", "320x240", "--at", "100,700"), \
                Program(scriptText=SCRIPT) as program:
            video = program.begin_recording()
            wait_until("the script", strip)
            focus = output("xdotool", "getwindowfocus")
            time.sleep(1)
            self.assertLess(max(pixel_on_screen(LEFT + 20, TOP + 30)), 90, "its ground is dark")
            still = text_on_screen()
            self.assertGreater(still.count(bytes((247, 245, 235))), 500, "and letters stand on it")
            time.sleep(0.5)
            self.assertEqual(text_on_screen(), still, "it begins paused")
            press("ctrl+t")
            time.sleep(0.7)
            moved = text_on_screen()
            self.assertNotEqual(moved, still, "the key sets it off")
            press("ctrl+t")
            time.sleep(0.3)
            stopped = text_on_screen()
            time.sleep(0.5)
            self.assertEqual(text_on_screen(), stopped, "and stops it")
            click(LEFT + 45, 80)  # between the probes: the pointer is in the video
            time.sleep(0.7)
            self.assertNotEqual(text_on_screen(), stopped, "a click on the text sets it off too")
            click(LEFT + 45, 80)
            self.assertEqual(output("xdotool", "getwindowfocus"), focus, "the lesson keeps the keyboard")
            program.end_recording(video)
            self.assertEqual(strip(), [], "it goes with the recording")
            frames = judge(video, *[argument for x, y in places() for argument in ("--probe", f"{x},{y}")])["frames"]

        self.assertGreater(len(frames), 30)
        for frame in frames:
            for place, (luma, _, _) in zip(places(), frame["probes"]):
                self.assertLess(abs(luma - luma_of(GREY)), LUMA_SLACK, f"at {place}, {frame['t']} s")

    def test_its_cross_hides_it_and_the_key_brings_it_back_at_its_beginning(self):
        with Stage("plain"), Program(scriptText=SCRIPT) as program:
            video = program.begin_recording()
            wait_until("the script", strip)
            time.sleep(0.5)
            beginning = text_on_screen()
            press("ctrl+t")
            time.sleep(1)
            click(LEFT + WIDTH - 24, CONTROLS)
            wait_until("the script's end", lambda: not strip())
            press("ctrl+t")
            wait_until("the script again", strip)
            time.sleep(0.7)
            self.assertEqual(text_on_screen(), beginning)
            program.end_recording(video)

    def test_is_not_shown_when_it_is_switched_off_or_has_only_blanks(self):
        for settings in ({"scriptText": SCRIPT, "prompterOn": False}, {"scriptText": " \n "}):
            with self.subTest(settings), Stage("motion"), Program(**settings) as program:
                video = program.begin_recording()
                time.sleep(1)
                self.assertEqual(strip(), [])
                press("ctrl+t")
                time.sleep(1)
                self.assertEqual(bool(strip()), settings["scriptText"] == SCRIPT, "the key shows what there is")
                program.end_recording(video)

    def test_a_script_of_a_megabyte_stops_nothing(self):
        script = "Una frase bastante larga de un guion sin fin. " * 23000
        with Stage("motion"), Program(scriptText=script) as program:
            video = program.begin_recording()
            wait_until("the script", strip)
            press("ctrl+t")
            time.sleep(3)
            with open(f"/proc/{program.process.pid}/status") as status:
                resident = int(re.search(r"VmRSS:\s+(\d+)", status.read()).group(1)) // 1024
            program.end_recording(video)
            self.assertEqual(strip(), [])
            seconds = judge(video)["frames"][-1]["t"]
        self.assertGreater(seconds, 2)
        self.assertLess(resident, 350)


if __name__ == "__main__":
    unittest.main(verbosity=2)
