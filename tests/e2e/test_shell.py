"""The shell around a recording: signals, a second start, the missing display, the X server gone while paused."""

import os
import re
import signal
import subprocess
import time
import unittest

from program import BUILD, Program, Stage, judge, output, press, wait_until

PROGRAM = os.path.join(BUILD, "velmo-studio")


def library(program):
    """Its managed windows; the floating surfaces are not managed."""
    return [line for line in output("wmctrl", "-l", "-p").splitlines() if line.split()[2] == str(program.process.pid)]


class Shell(unittest.TestCase):
    def test_a_request_to_end_saves_the_recording_first(self):
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            with self.subTest(number), Stage("motion"), Program() as program:
                path = program.begin_recording()
                program.process.send_signal(number)
                self.assertEqual(program.process.wait(30), 0)
                self.assertEqual(judge(path, "--counter", "0,0")["decodeErrors"], 0)
                self.assertIn(os.path.basename(path), program.metadata())

    def test_a_request_to_end_while_paused_saves_too(self):
        with Stage("motion"), Program() as program:
            path = program.begin_recording()
            press("ctrl+p")
            program.process.send_signal(signal.SIGTERM)
            self.assertEqual(program.process.wait(30), 0)
            self.assertIn(os.path.basename(path), program.metadata())

    def test_a_second_start_brings_the_first_one_up(self):
        with Program() as program:
            subprocess.run(["wmctrl", "-i", "-c", program.library_window()], check=True)
            wait_until("the window to close", lambda: not library(program))
            second = subprocess.run([PROGRAM], timeout=30)
            self.assertEqual(second.returncode, 0)
            wait_until("the library window", lambda: library(program))
            self.assertIsNone(program.process.poll(), "closing the last window ends nothing")

    def test_a_second_start_during_a_recording_leaves_the_library_alone(self):
        with Stage("still"), Program() as program:
            path = program.begin_recording()
            subprocess.run([PROGRAM], timeout=30, check=True)
            self.assertEqual(library(program), [])
            program.end_recording(path)

    def test_without_a_display_it_says_so_and_ends(self):
        for display in (None, ":250"):
            with self.subTest(display):
                env = {key: value for key, value in os.environ.items() if key != "DISPLAY"}
                if display:
                    env["DISPLAY"] = display
                ended = subprocess.run([PROGRAM], env=env, capture_output=True, text=True, timeout=30)
                self.assertEqual(ended.returncode, 1)
                self.assertTrue(ended.stderr.startswith("Velmo Studio n"), ended.stderr)

    def test_the_keys_are_held_with_what_the_user_chose(self):
        for modifier, keys in (("controlAlt", "ctrl+alt"), ("super", "super")):
            with self.subTest(modifier), Stage("motion"), Program(shortcutModifier=modifier) as program:
                before = set(program.videos())
                press("ctrl+g")
                time.sleep(1)
                self.assertEqual(set(program.videos()), before, "Control alone belongs to others")
                press(keys + "+g")
                path = wait_until("the video", lambda: set(program.videos()) - before).pop()
                wait_until("the first samples", lambda: os.path.getsize(path) > 200)
                time.sleep(1)
                press(keys + "+m")
                press(keys + "+g")
                self.assertEqual(len(program.wait_saved(path)["markers"]), 1)

    def test_the_recording_keys_are_taken_only_while_recording(self):
        with Stage("still"), Program() as program:
            self.assertTrue(self.is_free("ctrl+p"))
            path = program.begin_recording()
            wait_until("the key of the pause", lambda: not self.is_free("ctrl+p"))
            program.end_recording(path)
            wait_until("the key to be free again", lambda: self.is_free("ctrl+p"))

    @staticmethod
    def is_free(key):
        """Whether another program's window hears the key."""
        listener = subprocess.Popen(["xev", "-event", "keyboard", "-name", "listener"], stdout=subprocess.PIPE, text=True)
        try:
            window = wait_until("the listener", lambda: output("xdotool", "search", "--onlyvisible", "--name", "^listener$").split())[0]
            subprocess.run(["xdotool", "windowfocus", "--sync", window], check=True)
            press(key, "Escape")
            heard = ""
            for line in listener.stdout:
                heard += line
                if "Escape" in line:
                    break
            return re.search(r"keysym 0x[0-9a-f]+, p\)", heard) is not None
        finally:
            listener.terminate()
            listener.wait()
            listener.stdout.close()


if __name__ == "__main__":
    unittest.main(verbosity=2)
