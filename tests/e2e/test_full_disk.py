"""The disk runs out in the middle of a class: the recording ends by itself and what it has is kept.

Runs in a mount namespace of its own, with a small file system in place of the videos folder."""

import os
import subprocess
import sys
import time
import unittest

from program import Program, Stage, judge, wait_until

INSIDE = "VELMO_TEST_SMALL_DISK"


class FullDisk(unittest.TestCase):
    def test_the_recording_ends_by_itself_and_keeps_what_it_has(self):
        videos = os.path.join(os.environ["HOME"], "Videos")
        subprocess.run(["mount", "-t", "tmpfs", "-o", "size=24m", "tmpfs", videos], check=True)
        with Stage("motion"), Program() as program:
            # The warning about little room stands before the recording begins; it is answered with the keyboard.
            subprocess.run(["xdotool", "key", "ctrl+g"], check=True)
            time.sleep(2)
            if not program.videos():
                subprocess.run(["xdotool", "key", "Tab", "Tab"], check=True)
                self.answer_warning()
            path = wait_until("a video", program.videos)[0]
            entry = program.wait_saved(path)
            self.assertIsNone(program.process.poll())
            seen = judge(path, "--counter", "0,0")
        self.assertEqual(seen["decodeErrors"], 0)
        self.assertGreater(seen["duration"], 1)
        self.assertLess(abs(seen["duration"] - entry["duration"]), 2)

    def answer_warning(self):
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", "Antes de grabar"], capture_output=True, text=True)
        window = found.stdout.split()[0]
        subprocess.run(["xdotool", "windowactivate", "--sync", window, "key", "alt+g"], check=False)


if __name__ == "__main__":
    if INSIDE not in os.environ:
        namespaces = ["-m"] if os.getuid() == 0 else ["-U", "-r", "-m"]
        os.environ[INSIDE] = "1"
        os.execvp("unshare", ["unshare", *namespaces, sys.executable, *sys.argv])
    unittest.main(verbosity=2)
